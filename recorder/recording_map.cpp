#include "recorder/recording_map.h"

#include <algorithm>
#include <cmath>
#include <initializer_list>
#include <stdexcept>

namespace brenvo::recorder {
namespace {

std::string Numbers(std::initializer_list<int> numbers) {
  std::string text;
  for (const int number : numbers) text += ' ' + std::to_string(number);
  return text;
}

// How far a picture reaches beyond its view.
int Beyond(int pixels, double zoom, int view) {
  return std::max(0, static_cast<int>(std::lround(pixels * zoom / 100)) - view);
}

}  // namespace

void RecordingMap::SetImage(const std::filesystem::path& file) {
  const auto size = base::ReadImageSize(file);
  if (!size) throw std::runtime_error("Il file \"" + names_.Of(file) + "\" non è un'immagine");
  image_ = *size;
  scrollX_ = scrollY_ = 0;
  legend_.clear();
  sink_("map image " + Quoted(names_.Of(file)));
}

void RecordingMap::SetZoom(double percent) {
  zoom_ = percent;
  HoldScroll(scrollX_, scrollY_);
  sink_("map zoom " + ShortNumber(zoom_));
}

void RecordingMap::SetScroll(int x, int y) {
  HoldScroll(x, y);
  sink_("map scroll" + Numbers({scrollX_, scrollY_}));
}

void RecordingMap::HoldScroll(int x, int y) {
  const base::ImageSize view = View();
  scrollX_ = std::clamp(x, 0, Beyond(image_.width, zoom_, view.width));
  scrollY_ = std::clamp(y, 0, Beyond(image_.height, zoom_, view.height));
}

void RecordingMap::DrawRectangle(int x, int y, int width, int height, platform::MapFill fill) {
  const base::Colour colour = fill.colour;
  sink_("map rectangle" + Numbers({x, y, width, height, colour.red, colour.green, colour.blue}));
}

void RecordingMap::DrawStamp(const std::filesystem::path& image, int x, int y) {
  sink_("map stamp " + Quoted(names_.Of(image)) + Numbers({x, y}));
}

void RecordingMap::DrawLine(int x, int y, int width, int height) {
  sink_("map line" + Numbers({x, y, width, height}));
}

void RecordingMap::DrawText(int x, int y, std::string_view text) {
  sink_("map text" + Numbers({x, y}) + ' ' + Quoted(text));
}

void RecordingMap::ZoomToRectangle(int x, int y, int width, int height) {
  if (width <= 0 || height <= 0) return;
  const base::ImageSize view = View();
  const double factor =
      std::min(static_cast<double>(view.width) / width, static_cast<double>(view.height) / height);
  const double left = (scrollX_ + x) * factor;
  const double top = (scrollY_ + y) * factor;
  SetZoom(zoom_ * factor);
  SetScroll(static_cast<int>(std::lround(left)), static_cast<int>(std::lround(top)));
}

void RecordingMap::Print() {
  if (TakePrinterFailure && TakePrinterFailure()) return;
  sink_("map print");
}

}  // namespace brenvo::recorder
