// The images, one routine each.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "mkmaps/outlines.h"
#include "mkmaps/sheets.h"

namespace brenvo::mkmaps {

// A country's code at its place.
struct CountryMark {
  std::string code;
  GeoPoint position;
};

// Read once, drawn many times.
struct MapSources {
  std::vector<Outline> world, lakes, zones, italy;
  Edges worldEdges, lakeEdges, zoneEdges;
  std::vector<CountryMark> countries;  // today's
};
// Throws std::runtime_error when a table of the directory is missing or no such table.
MapSources ReadMapSources(const std::filesystem::path& facts);

// Each writes its image, by the name of its sheet, into the directory `out`. Throws
// std::runtime_error when it cannot.
void DrawFieldMap(const MapSources& sources, const std::filesystem::path& out);
void DrawSquareMap(const MapSources& sources, const std::filesystem::path& out);
void DrawZoneMap(const MapSources& sources, const std::filesystem::path& out);
void DrawItaly(const MapSources& sources, const std::filesystem::path& out);
void DrawEurope(const MapSources& sources, const std::filesystem::path& out);
void DrawRegion(const MapSources& sources, const Region& region, const std::filesystem::path& out);

}  // namespace brenvo::mkmaps
