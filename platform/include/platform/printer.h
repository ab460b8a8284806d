// A page that is drawn by position.
#pragma once

#include <filesystem>
#include <string_view>

#include "base/units.h"
#include "platform/device_error.h"

namespace brenvo::platform {

// Positions are millimetres from the top left corner of the printable page. The first operation
// begins a document, in the printer's own font; every operation throws DeviceError when there is no
// printer or the operator cancels the print dialog.
class Printer {
 public:
  virtual ~Printer() = default;
  // The font of the following texts; an empty name keeps the one in use.
  virtual void SetFont(std::string_view name, double points, bool bold) = 0;
  virtual void SetBold(bool bold) = 0;
  virtual void SetFontSize(double points) = 0;
  // The text's top left corner, or its top right one.
  virtual void Text(base::Mm x, base::Mm y, std::string_view text) = 0;
  virtual void TextRight(base::Mm x, base::Mm y, std::string_view text) = 0;
  virtual void Line(base::Mm x1, base::Mm y1, base::Mm x2, base::Mm y2) = 0;
  virtual void Box(base::Mm x1, base::Mm y1, base::Mm x2, base::Mm y2, bool filled) = 0;
  // At the size that the file tells, else at 96 dots an inch; nothing when it is no picture.
  virtual void Picture(const std::filesystem::path& file, base::Mm x, base::Mm y) = 0;
  // How wide the text is in the font in use.
  virtual base::Mm TextWidth(std::string_view text) = 0;
  // The pages of the next document lie on their side, or stand; those of any other stand.
  virtual void SetLandscape(bool landscape) = 0;
  virtual base::Mm PageHeight() = 0;
  virtual base::Mm PageWidth() = 0;
  virtual void NewPage() = 0;
  virtual void EndDocument() = 0;
};

}  // namespace brenvo::platform
