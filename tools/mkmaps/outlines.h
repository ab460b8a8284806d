// Outlines of land, borders and zones, as data/outlines holds them.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace brenvo::mkmaps {

// Degrees, east and north positive.
struct GeoPoint {
  double longitude = 0, latitude = 0;
  friend bool operator==(const GeoPoint&, const GeoPoint&) = default;
};
using GeoLine = std::vector<GeoPoint>;

enum class OutlineKind { kRing, kLine, kPoint };

// Rings are closed, their first vertex being the last one too. All rings of one name are one area:
// a ring within another one is a hole. Nothing crosses the date line; what reaches it is cut there.
struct Outline {
  OutlineKind kind = OutlineKind::kRing;
  std::string name, group;
  GeoLine points;
};

// Throws std::runtime_error when the file is missing or no such table.
std::vector<Outline> ReadOutlines(const std::filesystem::path& file);

// Whether a position lies within a ring.
bool Encloses(const GeoLine& ring, const GeoPoint& position);
// Whether a position lies in the area of that name; an empty name means any area.
bool Contains(const std::vector<Outline>& outlines, const GeoPoint& position,
              const std::string& name = {});

// The edges of all rings, once each: those of one ring alone, and those between two. Cuts at the
// date line and at the pole are left out.
struct Edges {
  std::vector<GeoLine> coasts, borders;
};
Edges EdgesOf(const std::vector<Outline>& outlines);

// Whether both ends lie on the date line, of either side.
bool OnDateLine(const GeoPoint& a, const GeoPoint& b);

}  // namespace brenvo::mkmaps
