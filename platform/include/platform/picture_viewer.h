// The map behind the main frame: a picture with zoom, scroll and annotations.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "base/units.h"

namespace brenvo::platform {

// What an area is filled with. Stripes tell what has only been worked from what is confirmed, also
// to an eye that does not part red from green.
struct MapFill {
  // NOLINTNEXTLINE(google-explicit-constructor): a colour alone is a fill.
  MapFill(base::Colour of, bool withStripes = false) : colour(of), striped(withStripes) {}
  base::Colour colour;
  bool striped = false;
};

// A line of the legend: a sample, a fill or a picture of the annotations, and what it means.
struct MapSign {
  MapFill fill = base::kWhite;
  std::filesystem::path stamp;  // instead of the fill, unless it is empty
  std::string words;
};

// Positions of annotations are viewport pixels, scroll positions image pixels at the zoom in
// force. Annotations stay on the picture until another image comes.
class PictureViewer {
 public:
  virtual ~PictureViewer() = default;
  // Throws std::runtime_error when the file is no picture.
  virtual void SetImage(const std::filesystem::path& file) = 0;
  virtual int ImageWidth() = 0;  // pixels at zoom 100; 0 without an image
  virtual int ImageHeight() = 0;
  virtual double Zoom() = 0;  // per cent
  virtual void SetZoom(double percent) = 0;
  virtual int ScrollX() = 0;
  virtual int ScrollY() = 0;
  // Held within what the picture allows: a request below 0 is 0.
  virtual void SetScroll(int x, int y) = 0;
  // The inner size of the frame.
  virtual int ViewWidth() = 0;
  virtual int ViewHeight() = 0;

  // Nothing where the width or the height is not above 0.
  virtual void DrawRectangle(int x, int y, int width, int height, MapFill fill) = 0;
  // Transparent where the image is; nothing when the file is missing or no picture.
  virtual void DrawStamp(const std::filesystem::path& image, int x, int y) = 0;
  // A black bar, at least a pixel wide and high; nothing where both are 0.
  virtual void DrawLine(int x, int y, int width, int height) = 0;
  // Bold, 18 points.
  virtual void DrawText(int x, int y, std::string_view text) = 0;
  // Stands in a corner of the view, and of a printed picture, until another image comes; in place
  // of one that stands there.
  virtual void ShowLegend(const std::vector<MapSign>& signs) = 0;
  // Closes the annotation in work.
  virtual void EndAnnotation() = 0;
  virtual void Refresh() = 0;
  // Viewport pixels: as large as the view takes it whole, its left upper corner in the view's.
  // Nothing where the width or the height is not above 0.
  virtual void ZoomToRectangle(int x, int y, int width, int height) = 0;
  // All failures are ignored.
  virtual void Print() = 0;
};

}  // namespace brenvo::platform
