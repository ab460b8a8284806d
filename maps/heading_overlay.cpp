#include "heading_overlay.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <numbers>
#include <optional>
#include <string>

#include "core/texts.h"
#include "map_view.h"
#include "overlay_geometry.h"

namespace brenvo::maps {
namespace {

constexpr double kStepKm = 200, kEarthRadiusKm = 6371;
constexpr int kSteps = 99;  // 19,800 km
constexpr int kDot = 5;     // pixels

double Degrees(double radians) { return radians * 180 / std::numbers::pi; }

// The square of a place, and how far into it from the left and from the top the place lies, 0 to 1.
struct InSquare {
  std::string square;
  double right = 0, down = 0;
};

InSquare SquareOf(const geo::Position& place) {
  const auto count = [](double value, double most) {
    return std::clamp(value, 0.0, std::nextafter(most, 0.0));
  };
  const double east = count((Degrees(place.longitude) + 180) / 2, 180);
  const double north = count(Degrees(place.latitude) + 90, 180);
  const auto x = static_cast<int>(east), y = static_cast<int>(north);
  InSquare in;
  in.square = {static_cast<char>('A' + x / 10), static_cast<char>('A' + y / 10),
               static_cast<char>('0' + x % 10), static_cast<char>('0' + y % 10)};
  in.right = east - x;
  in.down = 1 - (north - y);
  return in;
}

}  // namespace

std::vector<geo::Position> BeamPath(const geo::Position& from, double direction) {
  std::vector<geo::Position> path;
  const double bearing = direction * std::numbers::pi / 180;
  for (int step = 0; step <= kSteps; ++step) {
    const double arc = step * kStepKm / kEarthRadiusKm;
    const double latitude = std::asin(std::sin(from.latitude) * std::cos(arc) +
                                      std::cos(from.latitude) * std::sin(arc) * std::cos(bearing));
    const double longitude =
        from.longitude + std::atan2(std::sin(bearing) * std::sin(arc) * std::cos(from.latitude),
                                    std::cos(arc) - std::sin(from.latitude) * std::sin(latitude));
    path.push_back({std::remainder(longitude, 2 * std::numbers::pi), latitude});
  }
  return path;
}

std::vector<std::string> SquaresOf(const std::vector<geo::Position>& path) {
  std::vector<std::string> squares;
  for (const geo::Position& place : path) {
    std::string square = SquareOf(place).square;
    if (squares.empty() || squares.back() != square) squares.push_back(std::move(square));
  }
  return squares;
}

void DisplayHeading(core::Session& session) {
  const auto heading = session.Map.Heading;
  if (!heading || !geo::IsValidLocator(session.Station.MyLocator)) return;
  platform::PictureViewer& map = session.Machine.Map();
  SquareCalibration calibration;
  const auto fields = session.Db.OpenSnapshot("Select * from Field order by Field");
  for (; !fields->EOF_(); fields->MoveNext()) {
    calibration.Add(core::FieldText(*fields, "Field"), fields->Field("X").Number(),
                    fields->Field("Y").Number());
  }
  map.ShowLegend({{kBeamColour, {}, fmt::format("Antenna verso {:.0f}°", *heading)}});
  const geo::Position from = geo::LocatorToRadians(session.Station.MyLocator);
  const auto pixelOf = [&](const geo::Position& place,
                           const MapView& view) -> std::optional<MapPoint> {
    const InSquare in = SquareOf(place);
    const auto box = calibration.BoxOf(in.square, view);
    if (!box || box->width <= 0 || box->height <= 0) return std::nullopt;
    return MapPoint{box->x + static_cast<int>(in.right * box->width),
                    box->y + static_cast<int>(in.down * box->height)};
  };
  // Where it begins stands in the middle.
  if (const auto own = pixelOf(from, {})) {
    const MapPoint scroll = ScrollToCentre(own->x, own->y, ViewOf(map), FrameOf(map));
    map.SetScroll(scroll.x, scroll.y);
  }
  for (const geo::Position& place : BeamPath(from, *heading)) {
    const auto at = pixelOf(place, ViewOf(map));
    if (at) map.DrawRectangle(at->x - kDot / 2, at->y - kDot / 2, kDot, kDot, kBeamColour);
  }
  map.EndAnnotation();
  map.Refresh();
}

}  // namespace brenvo::maps
