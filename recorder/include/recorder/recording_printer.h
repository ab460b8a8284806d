// A printer that lists its operations.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

#include "platform/printer.h"
#include "platform/report_printer.h"
#include "recorder/line_sink.h"
#include "recorder/quote.h"

namespace brenvo::forms {
class Window;
}

namespace brenvo::recorder {

// The page is 210 by 297 millimetres; every document begins in Arial, 10 points, plain.
// `print text X Y left "Times New Roman" 10 bold "text"` (`right`, `plain`),
// `print line X1 Y1 X2 Y2`, `print box X1 Y1 X2 Y2 empty` (`filled`), `print picture "file" X Y`,
// `print newpage`, `print end`; and `report "layout"`. Millimetres, at most two decimals.
class RecordingPrinter : public platform::Printer, public platform::ReportPrinter {
 public:
  RecordingPrinter(LineSink sink, const FileNames& names) : sink_(std::move(sink)), names_(names) {}

  void SetFont(std::string_view name, double points, bool bold) override;
  void SetBold(bool bold) override { now_.bold = bold; }
  void SetFontSize(double points) override { now_.points = points; }
  void Text(base::Mm x, base::Mm y, std::string_view text) override;
  void TextRight(base::Mm x, base::Mm y, std::string_view text) override;
  void Line(base::Mm x1, base::Mm y1, base::Mm x2, base::Mm y2) override;
  void Box(base::Mm x1, base::Mm y1, base::Mm x2, base::Mm y2, bool filled) override;
  void Picture(const std::filesystem::path& file, base::Mm x, base::Mm y) override;
  // A picture by the window's name.
  void WindowImage(const forms::Window& window, base::Mm x, base::Mm y);
  // Every character is a third as wide as the font is high.
  base::Mm TextWidth(std::string_view text) override;
  void SetLandscape(bool landscape) override { now_.landscape = landscape; }
  base::Mm PageHeight() override { return base::Mm(now_.landscape ? 210 : 297); }
  base::Mm PageWidth() override { return base::Mm(now_.landscape ? 297 : 210); }
  void NewPage() override;
  void EndDocument() override;

  // The layout file must be there.
  void Print(const std::filesystem::path& layout) override;

  // The next thing to print, page or report, throws DeviceError.
  void FailNext() { failNext_ = true; }
  // A failure that was asked for and not met yet: for what ignores it.
  bool TakeFailure();

 private:
  void Operation(const std::string& line);
  void PlacedText(base::Mm x, base::Mm y, std::string_view side, std::string_view text);

  LineSink sink_;
  const FileNames& names_;
  // What a document begins with.
  struct Setting {
    std::string font = "Arial";
    double points = 10;
    bool bold = false;
    bool landscape = false;
  };
  Setting now_;
  bool failNext_ = false;
};

}  // namespace brenvo::recorder
