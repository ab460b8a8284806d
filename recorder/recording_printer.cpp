#include "recorder/recording_printer.h"

#include <initializer_list>
#include <stdexcept>
#include <utility>

#include "base/text.h"
#include "forms/window.h"
#include "platform/device_error.h"

namespace brenvo::recorder {
namespace {

std::string Places(std::initializer_list<base::Mm> places) {
  std::string text;
  for (const base::Mm place : places) text += ' ' + ShortNumber(place.Value());
  return text;
}

}  // namespace

void RecordingPrinter::SetFont(std::string_view name, double points, bool bold) {
  if (!name.empty()) now_.font = name;
  now_.points = points;
  now_.bold = bold;
}

void RecordingPrinter::Text(base::Mm x, base::Mm y, std::string_view text) {
  PlacedText(x, y, "left", text);
}

void RecordingPrinter::TextRight(base::Mm x, base::Mm y, std::string_view text) {
  PlacedText(x, y, "right", text);
}

void RecordingPrinter::PlacedText(base::Mm x, base::Mm y, std::string_view side,
                                  std::string_view text) {
  Operation("text" + Places({x, y}) + ' ' + std::string(side) + ' ' + Quoted(now_.font) + ' ' +
            ShortNumber(now_.points) + (now_.bold ? " bold " : " plain ") + Quoted(text));
}

void RecordingPrinter::Line(base::Mm x1, base::Mm y1, base::Mm x2, base::Mm y2) {
  Operation("line" + Places({x1, y1, x2, y2}));
}

void RecordingPrinter::Box(base::Mm x1, base::Mm y1, base::Mm x2, base::Mm y2, bool filled) {
  Operation("box" + Places({x1, y1, x2, y2}) + (filled ? " filled" : " empty"));
}

void RecordingPrinter::Picture(const std::filesystem::path& file, base::Mm x, base::Mm y) {
  Operation("picture " + Quoted(names_.Of(file)) + Places({x, y}));
}

void RecordingPrinter::WindowImage(const forms::Window& window, base::Mm x, base::Mm y) {
  Operation("picture " + Quoted(window.Name()) + Places({x, y}));
}

base::Mm RecordingPrinter::TextWidth(std::string_view text) {
  constexpr double kMmPerPoint = 25.4 / 72;
  return base::Mm(static_cast<double>(base::Len(text)) * now_.points * kMmPerPoint / 3);
}

void RecordingPrinter::NewPage() { Operation("newpage"); }

void RecordingPrinter::EndDocument() {
  Operation("end");
  now_ = Setting();
}

void RecordingPrinter::Print(const std::filesystem::path& layout) {
  if (TakeFailure()) throw platform::DeviceError("La stampante non risponde");
  if (!std::filesystem::is_regular_file(layout)) {
    throw std::runtime_error("Manca il file \"" + names_.Of(layout) + '"');
  }
  sink_("report " + Quoted(names_.Of(layout)));
}

bool RecordingPrinter::TakeFailure() { return std::exchange(failNext_, false); }

void RecordingPrinter::Operation(const std::string& line) {
  if (TakeFailure()) throw platform::DeviceError("La stampante non risponde");
  sink_("print " + line);
}

}  // namespace brenvo::recorder
