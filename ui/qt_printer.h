// Pages on the system's printer.
#pragma once

#include <QFont>
#include <QPainter>
#include <QPixmap>
#include <QPrinter>
#include <functional>
#include <memory>

#include "platform/printer.h"

namespace brenvo {

class QtPrinter : public Printer {
 public:
  // Asks the operator for a printer and sets it up; false when he cancels.
  using Chooser = std::function<bool(QPrinter&)>;
  // The inside of a window as the screen shows it.
  using Grabber = std::function<QPixmap(const Window&)>;
  QtPrinter(Chooser choose, Grabber grab);
  ~QtPrinter() override;

  void SetFont(std::string_view name, double points, bool bold) override;
  void SetBold(bool bold) override;
  void SetFontSize(double points) override;
  void Text(Mm x, Mm y, std::string_view text) override;
  void TextRight(Mm x, Mm y, std::string_view text) override;
  void Line(Mm x1, Mm y1, Mm x2, Mm y2) override;
  void Box(Mm x1, Mm y1, Mm x2, Mm y2, bool filled) override;
  void Picture(const std::filesystem::path& file, Mm x, Mm y) override;
  void WindowImage(const Window& window, Mm x, Mm y) override;
  Mm TextWidth(std::string_view text) override;
  void SetLandscape(bool landscape) override { landscape_ = landscape; }
  Mm PageHeight() override;
  Mm PageWidth() override;
  void NewPage() override;
  void EndDocument() override;
  // Drops a document that a failure has left half drawn.
  void Abandon();

 private:
  struct Document;
  Document& Begun();
  double Pixels(Mm length);
  void DrawPicture(const QImage& image, Mm x, Mm y, double scale);
  void DrawText(Mm x, Mm y, std::string_view text, bool right);

  Chooser choose_;
  Grabber grab_;
  std::unique_ptr<Document> document_;
  QFont font_;
  bool landscape_ = false;
};

// The system's print dialog over the active window.
bool ChoosePrinter(QPrinter& printer);

}  // namespace brenvo
