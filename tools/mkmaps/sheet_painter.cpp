#include "mkmaps/sheet_painter.h"

#include <cmath>
#include <iterator>
#include <QFont>
#include <QFontMetricsF>
#include <QImage>
#include <QPainterPath>
#include <stdexcept>

namespace brenvo::mkmaps {
namespace {

QPainterPath PathOf(const GeoLine& line, const Projection& projection) {
  QPainterPath path;
  path.moveTo(projection.at(line.front()));
  for (std::size_t i = 1; i < line.size(); ++i) path.lineTo(projection.at(line[i]));
  return path;
}

// For wide strokes: vertices closer together than that make no difference that one sees.
QPainterPath CoarsePathOf(const GeoLine& line, const Projection& projection, double step) {
  QPointF before = projection.at(line.front());
  QPainterPath path(before);
  for (std::size_t i = 1; i < line.size(); ++i) {
    const QPointF here = projection.at(line[i]);
    const QPointF gone = here - before;
    if (i + 1 < line.size() && gone.manhattanLength() < step) continue;
    path.lineTo(here);
    before = here;
  }
  return path;
}

QColor Mixed(const QColor& from, const QColor& to, double share) {
  const auto channel = [&](int a, int b) { return a + static_cast<int>((b - a) * share); };
  return QColor(channel(from.red(), to.red()), channel(from.green(), to.green()),
                channel(from.blue(), to.blue()));
}

QFont FontOf(const SheetPainter::Words& words) {
  QFont font(QStringLiteral("DejaVu Sans"));
  font.setStyleHint(QFont::SansSerif);
  font.setPixelSize(static_cast<int>(std::lround(words.size)));
  font.setBold(words.bold);
  return font;
}

}  // namespace

SheetPainter::SheetPainter(const SheetSize& size) : size_(size) {
  painter_.begin(&picture_);
  painter_.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
}

void SheetPainter::BeginArea(const QRectF& area) {
  Clip(area);
  painter_.fillRect(area, map_colours::kSea);
}

void SheetPainter::Clip(const QRectF& area) {
  painter_.save();
  painter_.setClipRect(area);
}

void SheetPainter::EndArea() { painter_.restore(); }

void SheetPainter::Shallows(const std::vector<GeoLine>& coasts, const Projection& projection,
                            double width) {
  // Opaque steps towards the shore: strokes that overlap do not add up.
  constexpr double kSteps[] = {1.0, 0.6, 0.28};
  painter_.setBrush(Qt::NoBrush);
  double towardsShore = 0;
  for (const double share : kSteps) {
    towardsShore += 1.0 / std::size(kSteps);
    painter_.setPen(QPen(Mixed(map_colours::kSea, map_colours::kShallows, towardsShore),
                         width * share, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    for (const GeoLine& coast : coasts) {
      if (projection.shows(coast)) {
        painter_.drawPath(CoarsePathOf(coast, projection, width * share / 5));
      }
    }
  }
}

void SheetPainter::Fill(const std::vector<Outline>& outlines, const Projection& projection,
                        const QColor& colour) {
  // A thin stroke of the same colour closes the seams between neighbours.
  painter_.setPen(QPen(colour, 0.8, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  painter_.setBrush(colour);
  for (std::size_t i = 0; i < outlines.size();) {
    QPainterPath area;
    area.setFillRule(Qt::OddEvenFill);
    const std::string& name = outlines[i].name;
    for (; i < outlines.size() && outlines[i].name == name; ++i) {
      const Outline& outline = outlines[i];
      if (outline.kind == OutlineKind::kRing && projection.shows(outline.points)) {
        area.addPath(PathOf(outline.points, projection));
      }
    }
    painter_.drawPath(area);
  }
}

void SheetPainter::Lines(const std::vector<GeoLine>& lines, const Projection& projection,
                         const QPen& pen) {
  painter_.setPen(pen);
  painter_.setBrush(Qt::NoBrush);
  for (const GeoLine& line : lines) {
    if (projection.shows(line)) painter_.drawPath(PathOf(line, projection));
  }
}

void SheetPainter::Graticule(const Projection& projection, const QRectF& degrees, double stepX,
                             double stepY, const QPen& pen) {
  constexpr int kPieces = 120;
  std::vector<GeoLine> lines;
  const auto add = [&](const GeoPoint& from, const GeoPoint& to) {
    // Short runs: a projection that shows only a part of the earth drops the others.
    for (int i = 0; i < kPieces; ++i) {
      const auto point = [&](int piece) {
        const double share = static_cast<double>(piece) / kPieces;
        return GeoPoint{from.longitude + (to.longitude - from.longitude) * share,
                        from.latitude + (to.latitude - from.latitude) * share};
      };
      lines.push_back({point(i), point(i + 1)});
    }
  };
  for (double x = degrees.left(); x <= degrees.right(); x += stepX) {
    add({x, degrees.top()}, {x, degrees.bottom()});
  }
  for (double y = degrees.top(); y <= degrees.bottom(); y += stepY) {
    add({degrees.left(), y}, {degrees.right(), y});
  }
  QPen flat = pen;
  flat.setCapStyle(Qt::FlatCap);
  Lines(lines, projection, flat);
}

QRectF SheetPainter::Extent(const QPointF& centre, const QString& text, const Words& words) {
  const QFontMetricsF metrics(FontOf(words));
  const QSizeF size(metrics.horizontalAdvance(text), metrics.capHeight());
  return {centre.x() - size.width() / 2, centre.y() - size.height() / 2, size.width(),
          size.height()};
}

void SheetPainter::Write(const QPointF& centre, const QString& text, const Words& words) {
  const QRectF extent = Extent(centre, text, words);
  QPainterPath letters;
  letters.addText(extent.bottomLeft(), FontOf(words), text);
  if (words.halo.alpha() > 0) {
    painter_.setPen(QPen(words.halo, 3, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter_.setBrush(Qt::NoBrush);
    painter_.drawPath(letters);
  }
  painter_.fillPath(letters, words.colour);
}

void SheetPainter::Title(const QRectF& area, const QString& text) {
  const Words words{17, true, map_colours::kWords};
  const QRectF extent = Extent({0, 0}, text, words);
  const QRectF plate(area.left() + 12, area.top() + 12, extent.width() + 28, 34);
  painter_.setPen(QPen(map_colours::kFrame, 1));
  painter_.setBrush(QColor(250, 248, 242, 230));
  painter_.drawRoundedRect(plate, 5, 5);
  Write(plate.center(), text, words);
}

void SheetPainter::Frame(const QRectF& area) {
  painter_.setPen(QPen(map_colours::kFrame, 1.4, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin));
  painter_.setBrush(Qt::NoBrush);
  painter_.drawRect(area);
}

void SheetPainter::SaveTwice(const std::filesystem::path& file) {
  SaveAt(1, file);
  SaveAt(2, file.parent_path() / (file.stem().string() + "@2x" + file.extension().string()));
}

void SheetPainter::SaveAt(int density, const std::filesystem::path& file) {
  if (painter_.isActive()) painter_.end();
  QImage image(size_.width * density, size_.height * density, QImage::Format_RGB32);
  image.fill(map_colours::kPaper);
  QPainter painter(&image);
  painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
  painter.scale(density, density);
  painter.drawPicture(0, 0, picture_);
  painter.end();
  constexpr int kQuality = 90;
  if (!image.save(QString::fromStdString(file.string()), "JPG", kQuality)) {
    throw std::runtime_error(file.string() + ": cannot be written");
  }
}

}  // namespace brenvo::mkmaps
