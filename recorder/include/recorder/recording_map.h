// The map behind the main frame, as a list of what is done to it.
#pragma once

#include <filesystem>
#include <functional>
#include <string_view>

#include "base/image_size.h"
#include "platform/picture_viewer.h"
#include "recorder/line_sink.h"
#include "recorder/quote.h"

namespace brenvo::recorder {

// `map image "file"`, `map zoom 100`, `map scroll X Y` (as held), `map rectangle X Y W H R G B`,
// `map stamp "file" X Y`, `map line X Y W H`, `map text X Y "A"`, `map close`, `map refresh`,
// `map print`. Zooming to a rectangle is a zoom and a scroll.
class RecordingMap : public platform::PictureViewer {
 public:
  RecordingMap(LineSink sink, const FileNames& names) : sink_(std::move(sink)), names_(names) {}

  void SetImage(const std::filesystem::path& file) override;
  int ImageWidth() override { return image_.width; }
  int ImageHeight() override { return image_.height; }
  double Zoom() override { return zoom_; }
  void SetZoom(double percent) override;
  int ScrollX() override { return scrollX_; }
  int ScrollY() override { return scrollY_; }
  void SetScroll(int x, int y) override;
  int ViewWidth() override { return View().width; }
  int ViewHeight() override { return View().height; }

  void DrawRectangle(int x, int y, int width, int height, platform::MapFill fill) override;
  void DrawStamp(const std::filesystem::path& image, int x, int y) override;
  void DrawLine(int x, int y, int width, int height) override;
  void DrawText(int x, int y, std::string_view text) override;
  void ShowLegend(const std::vector<platform::MapSign>& signs) override { legend_ = signs; }
  void EndAnnotation() override { sink_("map close"); }
  void Refresh() override { sink_("map refresh"); }
  void ZoomToRectangle(int x, int y, int width, int height) override;
  void Print() override;

  // What the legend of the image says.
  const std::vector<platform::MapSign>& Legend() const { return legend_; }

  // The inner size of the frame that carries the map; 640 by 480 pixels while this is empty.
  std::function<base::ImageSize()> FrameSize;
  // Whether the next printing fails, asked once a printing; what fails leaves no line.
  std::function<bool()> TakePrinterFailure;

 private:
  base::ImageSize View() const { return FrameSize ? FrameSize() : base::ImageSize{640, 480}; }
  void HoldScroll(int x, int y);

  LineSink sink_;
  const FileNames& names_;
  base::ImageSize image_;
  std::vector<platform::MapSign> legend_;
  double zoom_ = 100;
  int scrollX_ = 0, scrollY_ = 0;
};

}  // namespace brenvo::recorder
