// Pages on the system's printer.
#pragma once

#include <functional>
#include <memory>
#include <QPixmap>

#include "platform/printer.h"
#include "ui/page_target.h"

namespace brenvo::forms {
class Window;
}

namespace brenvo::ui {

class QtPrinter : public platform::Printer {
 public:
  // Asks the operator where a document goes; null when he cancels.
  using Chooser = std::function<std::unique_ptr<PageTarget>(bool landscape)>;
  // The inside of a window as the screen shows it.
  using Grabber = std::function<QPixmap(const forms::Window&)>;
  QtPrinter(Chooser choose, Grabber grab);
  ~QtPrinter() override;

  void SetFont(std::string_view name, double points, bool bold) override;
  void SetBold(bool bold) override;
  void SetFontSize(double points) override;
  void Text(base::Mm x, base::Mm y, std::string_view text) override;
  void TextRight(base::Mm x, base::Mm y, std::string_view text) override;
  void Line(base::Mm x1, base::Mm y1, base::Mm x2, base::Mm y2) override;
  void Box(base::Mm x1, base::Mm y1, base::Mm x2, base::Mm y2, bool filled) override;
  void Picture(const std::filesystem::path& file, base::Mm x, base::Mm y) override;
  void WindowImage(const forms::Window& window, base::Mm x, base::Mm y);
  base::Mm TextWidth(std::string_view text) override;
  void SetLandscape(bool landscape) override { landscape_ = landscape; }
  base::Mm PageHeight() override;
  base::Mm PageWidth() override;
  void NewPage() override;
  void EndDocument() override;
  // A document of one page, filled with the picture as far as its sides allow.
  void PrintImage(const QImage& image);
  // From the next document on.
  void SendTo(Chooser choose) { choose_ = std::move(choose); }
  // Drops a document that a failure has left half drawn.
  void Abandon();

 private:
  PageTarget& Begun();
  void UseFont();
  void DrawPicture(const QImage& image, base::Mm x, base::Mm y, double dotsPerInch);

  // The target, and the font and side of the next document, as they are before it begins.
  std::unique_ptr<PageTarget> TakeDocument();

  Chooser choose_;
  Grabber grab_;
  std::unique_ptr<PageTarget> document_;
  PageOperation font_;
  PageFont measure_;
  bool landscape_ = false;
};

}  // namespace brenvo::ui
