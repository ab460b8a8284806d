#include "ui/page_operations.h"

namespace brenvo::ui {
namespace {

// The painter's own unit: fine enough that a font of it measures as it is set on paper.
constexpr double kUnitsPerMm = 1200 / kMmPerInch;
constexpr double kPointsPerInch = 72;
constexpr double kPenMm = 0.2;

QFont FontInUnits(const QString& family, double points, bool bold) {
  QFont font(family);
  font.setPixelSize(qRound(points / kPointsPerInch * kMmPerInch * kUnitsPerMm));
  font.setBold(bold);
  // Widths must not depend on how a screen fits letters to its dots.
  font.setHintingPreference(QFont::PreferNoHinting);
  return font;
}

}  // namespace

QDataStream& operator<<(QDataStream& stream, const PageOperation& operation) {
  stream << static_cast<quint8>(operation.kind) << operation.from << operation.to << operation.text
         << operation.points << operation.bold;
  if (operation.kind == PageOperation::Kind::kPicture) stream << operation.picture;
  return stream;
}

QDataStream& operator>>(QDataStream& stream, PageOperation& operation) {
  quint8 kind = 0;
  stream >> kind >> operation.from >> operation.to >> operation.text >> operation.points >>
      operation.bold;
  operation.kind = static_cast<PageOperation::Kind>(kind);
  if (operation.kind == PageOperation::Kind::kPicture) stream >> operation.picture;
  return stream;
}

PageFont::PageFont(const QString& family, double points, bool bold)
    : font_(FontInUnits(family, points, bold)), metrics_(font_) {}

double PageFont::Width(const QString& text) const {
  return metrics_.horizontalAdvance(text) / kUnitsPerMm;
}

double PageFont::Ascent() const { return metrics_.ascent() / kUnitsPerMm; }

PagePainter::PagePainter(QPainter& painter, double dotsPerMm)
    : painter_(painter), font_(QString(), 10, false) {
  painter_.scale(dotsPerMm / kUnitsPerMm, dotsPerMm / kUnitsPerMm);
  painter_.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing |
                          QPainter::SmoothPixmapTransform);
}

void PagePainter::Draw(const PageOperation& operation) {
  const QPointF from = operation.from * kUnitsPerMm;
  const QRectF area(from, operation.to * kUnitsPerMm);
  painter_.setPen(QPen(Qt::black, kPenMm * kUnitsPerMm));
  painter_.setBrush(Qt::NoBrush);
  switch (operation.kind) {
    case PageOperation::Kind::kFont:
      font_ = PageFont(operation.text, operation.points, operation.bold);
      painter_.setFont(font_.Font());
      break;
    case PageOperation::Kind::kText:
      painter_.drawText(from + QPointF(0, font_.Ascent() * kUnitsPerMm), operation.text);
      break;
    case PageOperation::Kind::kTextRight:
      painter_.drawText(from + QPointF(-font_.Width(operation.text), font_.Ascent()) * kUnitsPerMm,
                        operation.text);
      break;
    case PageOperation::Kind::kLine:
      painter_.drawLine(from, operation.to * kUnitsPerMm);
      break;
    case PageOperation::Kind::kFilledBox:
      painter_.setBrush(Qt::black);
      [[fallthrough]];
    case PageOperation::Kind::kBox:
      painter_.drawRect(area);
      break;
    case PageOperation::Kind::kPicture:
      painter_.drawImage(area, operation.picture);
      break;
  }
}

}  // namespace brenvo::ui
