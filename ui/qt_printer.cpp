#include "ui/qt_printer.h"

#include <algorithm>
#include <utility>

#include "platform/device_error.h"
#include "ui/text.h"

namespace brenvo::ui {
namespace {

// Pictures that do not state their density are laid out as on a screen of this one.
constexpr double kPictureDotsPerInch = 96;

PageOperation DefaultFont() {
  return {PageOperation::Kind::kFont, {}, {}, QStringLiteral("Times New Roman"), 10, false, {}};
}

QPointF At(base::Mm x, base::Mm y) { return {x.Value(), y.Value()}; }

}  // namespace

QtPrinter::QtPrinter(Chooser choose, Grabber grab)
    : choose_(std::move(choose)),
      grab_(std::move(grab)),
      font_(DefaultFont()),
      measure_(font_.text, font_.points, font_.bold) {}

QtPrinter::~QtPrinter() = default;

PageTarget& QtPrinter::Begun() {
  if (document_) return *document_;
  document_ = choose_(landscape_);
  if (!document_) throw platform::DeviceError("Stampa annullata");
  document_->Draw(font_);
  return *document_;
}

void QtPrinter::UseFont() {
  measure_ = PageFont(font_.text, font_.points, font_.bold);
  Begun().Draw(font_);
}

void QtPrinter::SetFont(std::string_view name, double points, bool bold) {
  Begun();
  if (!name.empty()) font_.text = ToQt(name);
  font_.points = points;
  font_.bold = bold;
  UseFont();
}

void QtPrinter::SetBold(bool bold) {
  Begun();
  font_.bold = bold;
  UseFont();
}

void QtPrinter::SetFontSize(double points) {
  Begun();
  font_.points = points;
  UseFont();
}

void QtPrinter::Text(base::Mm x, base::Mm y, std::string_view text) {
  Begun().Draw({PageOperation::Kind::kText, At(x, y), {}, ToQt(text), 0, false, {}});
}

void QtPrinter::TextRight(base::Mm x, base::Mm y, std::string_view text) {
  Begun().Draw({PageOperation::Kind::kTextRight, At(x, y), {}, ToQt(text), 0, false, {}});
}

void QtPrinter::Line(base::Mm x1, base::Mm y1, base::Mm x2, base::Mm y2) {
  Begun().Draw({PageOperation::Kind::kLine, At(x1, y1), At(x2, y2), {}, 0, false, {}});
}

void QtPrinter::Box(base::Mm x1, base::Mm y1, base::Mm x2, base::Mm y2, bool filled) {
  const auto kind = filled ? PageOperation::Kind::kFilledBox : PageOperation::Kind::kBox;
  Begun().Draw({kind, At(x1, y1), At(x2, y2), {}, 0, false, {}});
}

void QtPrinter::Picture(const std::filesystem::path& file, base::Mm x, base::Mm y) {
  Begun();
  const QImage image(PathToQt(file));
  if (image.isNull()) return;
  const double dotsPerInch = image.dotsPerMeterX() * kMmPerInch / 1000;
  DrawPicture(image, x, y, dotsPerInch > 0 ? dotsPerInch : kPictureDotsPerInch);
}

void QtPrinter::WindowImage(const forms::Window& window, base::Mm x, base::Mm y) {
  Begun();
  const QPixmap shown = grab_(window);
  if (shown.isNull()) return;
  const double dotsPerInch = kPictureDotsPerInch * shown.devicePixelRatio();
  const double room = (PageWidth() - x).Value();
  DrawPicture(shown.toImage(), x, y, std::max(dotsPerInch, shown.width() * kMmPerInch / room));
}

void QtPrinter::DrawPicture(const QImage& image, base::Mm x, base::Mm y, double dotsPerInch) {
  const QSizeF size = QSizeF(image.size()) * kMmPerInch / dotsPerInch;
  const QPointF from = At(x, y);
  Begun().Draw({PageOperation::Kind::kPicture,
                from,
                from + QPointF(size.width(), size.height()),
                {},
                0,
                false,
                image});
}

void QtPrinter::PrintImage(const QImage& image) {
  SetLandscape(image.width() > image.height());
  const QSizeF page = Begun().PageSize();
  const QSizeF size = QSizeF(image.size()).scaled(page, Qt::KeepAspectRatio);
  DrawPicture(image, base::Mm(0), base::Mm(0), image.width() * kMmPerInch / size.width());
  EndDocument();
}

base::Mm QtPrinter::TextWidth(std::string_view text) {
  return base::Mm(measure_.Width(ToQt(text)));
}

base::Mm QtPrinter::PageHeight() { return base::Mm(Begun().PageSize().height()); }

base::Mm QtPrinter::PageWidth() { return base::Mm(Begun().PageSize().width()); }

void QtPrinter::NewPage() {
  Begun().NewPage();
  // Each page states its own font, so that it can be drawn by itself.
  document_->Draw(font_);
}

std::unique_ptr<PageTarget> QtPrinter::TakeDocument() {
  font_ = DefaultFont();
  measure_ = PageFont(font_.text, font_.points, font_.bold);
  landscape_ = false;
  return std::move(document_);
}

void QtPrinter::EndDocument() {
  if (!document_) return;
  // It stays until it has ended: a failure then has a document to drop.
  document_->End();
  TakeDocument();
}

void QtPrinter::Abandon() {
  if (const auto document = TakeDocument()) document->Abandon();
}

}  // namespace brenvo::ui
