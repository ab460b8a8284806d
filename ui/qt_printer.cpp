#include "ui/qt_printer.h"

#include <QApplication>
#include <QFontMetricsF>
#include <QImage>
#include <QPrintDialog>
#include <algorithm>

#include "platform/serial_port.h"
#include "ui/text.h"

namespace brenvo {
namespace {

constexpr double kMmPerInch = 25.4;
constexpr double kPenMm = 0.2;
// Pictures that do not tell their density are laid out as on a screen of this one.
constexpr double kPictureDotsPerInch = 96;

}  // namespace

struct QtPrinter::Document {
  QPrinter printer{QPrinter::HighResolution};
  QPainter painter;
};

QtPrinter::QtPrinter(Chooser choose, Grabber grab)
    : choose_(std::move(choose)), grab_(std::move(grab)), font_(QStringLiteral("Times New Roman"), 10) {}

QtPrinter::~QtPrinter() = default;

QtPrinter::Document& QtPrinter::Begun() {
  if (document_) return *document_;
  auto document = std::make_unique<Document>();
  document->printer.setDocName(QApplication::applicationDisplayName());
  document->printer.setPageOrientation(landscape_ ? QPageLayout::Landscape
                                                  : QPageLayout::Portrait);
  if (!choose_(document->printer)) throw DeviceError("Stampa annullata");
  if (!document->painter.begin(&document->printer)) throw DeviceError("Stampante non disponibile");
  document_ = std::move(document);
  return *document_;
}

double QtPrinter::Pixels(Mm length) {
  return length.Value() * Begun().printer.logicalDpiX() / kMmPerInch;
}

void QtPrinter::SetFont(std::string_view name, double points, bool bold) {
  Begun();
  if (!name.empty()) font_.setFamily(ToQt(name));
  font_.setPointSizeF(points);
  font_.setBold(bold);
}

void QtPrinter::SetBold(bool bold) {
  Begun();
  font_.setBold(bold);
}

void QtPrinter::SetFontSize(double points) {
  Begun();
  font_.setPointSizeF(points);
}

void QtPrinter::DrawText(Mm x, Mm y, std::string_view text, bool right) {
  Document& document = Begun();
  document.painter.setFont(font_);
  const QFontMetricsF metrics(font_, &document.printer);
  const QString words = ToQt(text);
  const double left = Pixels(x) - (right ? metrics.horizontalAdvance(words) : 0);
  document.painter.setPen(Qt::black);
  document.painter.drawText(QPointF(left, Pixels(y) + metrics.ascent()), words);
}

void QtPrinter::Text(Mm x, Mm y, std::string_view text) { DrawText(x, y, text, false); }
void QtPrinter::TextRight(Mm x, Mm y, std::string_view text) { DrawText(x, y, text, true); }

void QtPrinter::Line(Mm x1, Mm y1, Mm x2, Mm y2) {
  Document& document = Begun();
  document.painter.setPen(QPen(Qt::black, Pixels(Mm(kPenMm))));
  document.painter.drawLine(QPointF(Pixels(x1), Pixels(y1)), QPointF(Pixels(x2), Pixels(y2)));
}

void QtPrinter::Box(Mm x1, Mm y1, Mm x2, Mm y2, bool filled) {
  Document& document = Begun();
  document.painter.setPen(QPen(Qt::black, Pixels(Mm(kPenMm))));
  document.painter.setBrush(filled ? QBrush(Qt::black) : QBrush(Qt::NoBrush));
  document.painter.drawRect(QRectF(QPointF(Pixels(x1), Pixels(y1)),
                                   QPointF(Pixels(x2), Pixels(y2))));
}

void QtPrinter::Picture(const std::filesystem::path& file, Mm x, Mm y) {
  Begun();
  const QImage image(PathToQt(file));
  if (image.isNull()) return;
  const double dotsPerInch = image.dotsPerMeterX() * kMmPerInch / 1000;
  DrawPicture(image, x, y, dotsPerInch > 0 ? kPictureDotsPerInch / dotsPerInch : 1);
}

void QtPrinter::WindowImage(const Window& window, Mm x, Mm y) {
  Begun();
  const QPixmap shown = grab_(window);
  if (shown.isNull()) return;
  const double width = shown.width() / shown.devicePixelRatio() * kMmPerInch / kPictureDotsPerInch;
  const double room = (PageWidth() - x).Value();
  DrawPicture(shown.toImage(), x, y, std::min(1.0, room / width) / shown.devicePixelRatio());
}

void QtPrinter::DrawPicture(const QImage& image, Mm x, Mm y, double scale) {
  Document& document = Begun();
  scale *= document.printer.logicalDpiX() / kPictureDotsPerInch;
  document.painter.drawImage(
      QRectF(Pixels(x), Pixels(y), image.width() * scale, image.height() * scale), image);
}

Mm QtPrinter::TextWidth(std::string_view text) {
  Document& document = Begun();
  const QFontMetricsF metrics(font_, &document.printer);
  return Mm(metrics.horizontalAdvance(ToQt(text)) * kMmPerInch / document.printer.logicalDpiX());
}

Mm QtPrinter::PageHeight() {
  return Mm(Begun().printer.pageRect(QPrinter::Millimeter).height());
}

Mm QtPrinter::PageWidth() { return Mm(Begun().printer.pageRect(QPrinter::Millimeter).width()); }

void QtPrinter::NewPage() {
  if (!Begun().printer.newPage()) throw DeviceError("La stampante non prende un'altra pagina");
}

void QtPrinter::EndDocument() {
  if (!document_) return;
  document_->painter.end();
  document_.reset();
}

void QtPrinter::Abandon() {
  if (!document_) return;
  document_->printer.abort();
  EndDocument();
}

bool ChoosePrinter(QPrinter& printer) {
  QPrintDialog dialog(&printer, QApplication::activeWindow());
  dialog.setWindowTitle(QStringLiteral("Stampa"));
  return dialog.exec() == QDialog::Accepted;
}

}  // namespace brenvo
