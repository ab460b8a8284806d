#include "overlay_geometry.h"

#include <cmath>
#include <stdexcept>
#include <string>

#include "base/number.h"
#include "base/text.h"
#include "geo/locator.h"

namespace brenvo::maps {
namespace {

// The tip of the pointer inside its bitmap.
constexpr double kTipX = 27, kTipY = 29;

// The map of fields: pixels a field of 20 by 10 degrees, and the left upper corner of the field
// that begins at longitude -180 and latitude 0.
constexpr double kFieldWidth = 64, kFieldHeight = 32;
constexpr double kFieldLeft = 62, kFieldTop = 283;
// What is painted leaves a piece of the grid open.
constexpr double kPaintedWidth = 0.60, kPaintedHeight = 0.28;

// The world map of squares: where its graticule begins and how long its lines are, at zoom 1.
constexpr double kGraticuleStart = 0.70, kColumnLength = 24.86, kRowLength = 38.83;
// The map is cut through field HM: its squares 5 to 9 from here on at the left end...
constexpr double kLeftHm = -55, kLeftHmEnd = 149;
// ...and this wide at the right one.
constexpr double kRightHmWidth = 224;

constexpr double kProvinceSide = 10;

int Whole(double pixels) { return static_cast<int>(base::RoundHalfEven(pixels)); }

int CodeAt(std::string_view key, std::size_t place) {
  const std::u32string characters = base::Characters(key);
  if (place > characters.size()) {
    throw std::out_of_range("Il codice \"" + std::string(key) + "\" è troppo corto per la mappa");
  }
  return static_cast<int>(characters[place - 1]);
}

int ColumnOf(int code) { return code - 64; }
int RowOf(int code) { return 91 - code; }

template <class Edges>
auto& EdgeAt(Edges& edges, int index) {
  if (index < 0 || index >= static_cast<int>(edges.size())) {
    throw std::out_of_range("Un campo della mappa ha una lettera che non c'è");
  }
  return edges[static_cast<std::size_t>(index)];
}

}  // namespace

MapPoint StampCorner(double x, double y, const MapView& view) {
  return {Whole(view.zoom * (x - kTipX) / 100 - view.scrollX),
          Whole(view.zoom * (y - kTipY) / 100 - view.scrollY)};
}

bool PointerInView(double x, double y, const MapView& view, const FrameSize& frame) {
  const double atX = view.zoom * x / 100;
  const double atY = view.zoom * y / 100;
  return atX > view.scrollX && atX < frame.width + view.scrollX && atY > view.scrollY &&
         atY < frame.height + view.scrollY;
}

MapPoint ScrollToCentre(double x, double y, const MapView& view, const FrameSize& frame) {
  return {Whole(view.zoom * (x - frame.width / 2.0) / 100),
          Whole(view.zoom * (y - frame.height / 2.0) / 100)};
}

MapBox FieldBox(std::string_view field, const MapView& view) {
  CodeAt(field, 2);
  const geo::Position centre = geo::LocatorToRadians(std::string(field) + "00AA");
  const auto degrees = [](double radians) {
    return static_cast<double>(base::RoundHalfEven(radians * (180.0 / geo::kPiValue)));
  };
  const double longitude = degrees(centre.longitude);
  const double latitude = degrees(centre.latitude);
  return {Whole(view.zoom * ((kFieldWidth * ((longitude + 180) / 20) + kFieldLeft) / 100) -
                view.scrollX),
          Whole(view.zoom * ((kFieldTop - kFieldHeight * (latitude / 10)) / 100) - view.scrollY),
          Whole(view.zoom * kPaintedWidth), Whole(view.zoom * kPaintedHeight)};
}

MapBox ProvinceBox(double x, double y, const MapView& view) {
  constexpr double kHalf = kProvinceSide / 2;
  return {Whole(view.zoom * (x - kHalf) / 100 - view.scrollX),
          Whole(view.zoom * (y - kHalf) / 100 - view.scrollY), static_cast<int>(kProvinceSide),
          static_cast<int>(kProvinceSide)};
}

GraticuleLine SquareCalibration::LineOf(std::string_view key, double x, double y,
                                        const MapView& view) {
  const bool column = CodeAt(key, 2) == '?';
  const int startX = Whole(view.zoom * kGraticuleStart - view.scrollX);
  const int startY = Whole(view.zoom * kGraticuleStart - view.scrollY);
  // Letters are ASCII wherever Add accepts them.
  if (column) {
    return {
        true,
        key.substr(0, 1),
        {Whole(view.zoom * x / 100 - view.scrollX), startY, 1, Whole(view.zoom * kColumnLength)}};
  }
  return {false,
          key.substr(1, 1),
          {startX, Whole(view.zoom * y / 100 - view.scrollY), Whole(view.zoom * kRowLength), 1}};
}

void SquareCalibration::Add(std::string_view key, double x, double y) {
  const int second = CodeAt(key, 2);
  if (second == '?') {
    EdgeAt(xField_, ColumnOf(CodeAt(key, 1))) = x;
  } else {
    EdgeAt(yField_, RowOf(second)) = y;
  }
}

std::optional<MapBox> SquareCalibration::BoxOf(std::string_view square, const MapView& view) const {
  const int column = ColumnOf(CodeAt(square, 1));
  const int row = RowOf(CodeAt(square, 2));
  const double third = base::Val(base::Mid(square, 3, 1));
  const double fourth = base::Val(base::Mid(square, 4, 1));

  double left, right;
  if (base::Left(square, 2) != "HM") {
    left = EdgeAt(xField_, column);
    right = EdgeAt(xField_, column + 1);
  } else if (third >= 5) {
    left = kLeftHm;
    right = kLeftHmEnd;
  } else {
    left = EdgeAt(xField_, column);
    right = left + kRightHmWidth;
  }
  const double top = EdgeAt(yField_, row);
  const double bottom = EdgeAt(yField_, row + 1);
  if (left == 0 || right == 0 || top == 0 || bottom == 0) return std::nullopt;

  const double dx = (right - left) / 10;
  const double dy = (bottom - top) / 10;
  return MapBox{Whole(view.zoom * ((left + dx * third) / 100) - view.scrollX),
                Whole(view.zoom * ((bottom - dy * (fourth + 1)) / 100) - view.scrollY),
                Whole(view.zoom * (dx / 100)), Whole(view.zoom * (dy / 100))};
}

}  // namespace brenvo::maps
