// Where annotations go on a map: plain arithmetic from award keys and image pixels to the viewport.
//
// Map images are fixed files, and the numbers here are their constants.
#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string_view>

namespace brenvo::maps {

// How the picture stands in its frame: zoom in per cent, scroll in image pixels at that zoom.
struct MapView {
  double zoom = 100;
  int scrollX = 0, scrollY = 0;
};

struct MapPoint {
  int x = 0, y = 0;
  friend bool operator==(MapPoint, MapPoint) = default;
};

struct MapBox {
  int x = 0, y = 0, width = 0, height = 0;
  friend bool operator==(MapBox, MapBox) = default;
};

// The corner of the pointer, or of a zone's bitmap, that shows the image pixel (x, y).
MapPoint StampCorner(double x, double y, const MapView& view);

// The inner size of the frame, pixels.
struct FrameSize {
  int width = 0, height = 0;
};
// False also where the pixel lies exactly on an edge.
bool PointerInView(double x, double y, const MapView& view, const FrameSize& frame);
// The scroll position that brings the pixel to the middle; below 0 near the picture's edges.
MapPoint ScrollToCentre(double x, double y, const MapView& view, const FrameSize& frame);

// A field, two letters, on the map of fields. Throws std::out_of_range for a shorter text.
MapBox FieldBox(std::string_view field, const MapView& view);

// An Italian province: a square of the same size at every zoom.
MapBox ProvinceBox(double x, double y, const MapView& view);

// A row of table Field is a line of the graticule, and a label at the line's beginning.
struct GraticuleLine {
  bool column = false;  // a column's left edge, else a row's upper edge
  std::string_view letter;
  MapBox line;
};

// The world map of squares, calibrated by the rows of table Field: "J?" tells where column J
// begins, "?N" where row N does, from the left and from the top.
class SquareCalibration {
 public:
  // The row's line. Throws std::out_of_range when `key` has less than two characters.
  static GraticuleLine LineOf(std::string_view key, double x, double y, const MapView& view);
  // Takes the row in. Throws std::out_of_range when its letter is beyond all calibration.
  void Add(std::string_view key, double x, double y);

  // A square, four characters; nothing while an edge of its field is not calibrated. The field HM
  // lies at both ends of the map and has constants of its own. In the other fields of column H,
  // whose right neighbour is at the left end, width comes out below 0. Throws std::out_of_range
  // when a letter is beyond all calibration.
  std::optional<MapBox> BoxOf(std::string_view square, const MapView& view) const;

 private:
  static constexpr int kLetters = 66;
  // 0 where nothing is known. Columns count from A, rows down from Z.
  std::array<double, kLetters> xField_{}, yField_{};
};

}  // namespace brenvo::maps
