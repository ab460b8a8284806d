#include "mkmaps/maps.h"

#include "base/csv.h"

namespace brenvo::mkmaps {

MapSources ReadMapSources(const std::filesystem::path& facts) {
  MapSources sources;
  const std::filesystem::path outlines = facts / "outlines";
  sources.world = ReadOutlines(outlines / "world.csv");
  sources.lakes = ReadOutlines(outlines / "lakes.csv");
  sources.zones = ReadOutlines(outlines / "zones.csv");
  sources.italy = ReadOutlines(outlines / "italy.csv");
  sources.worldEdges = EdgesOf(sources.world);
  sources.lakeEdges = EdgesOf(sources.lakes);
  sources.zoneEdges = EdgesOf(sources.zones);
  const base::CsvTable countries = base::ReadCsv(facts / "Country.csv");
  const std::size_t code = countries.Column("Country"), locator = countries.Column("Locator"),
                    deleted = countries.Column("Deleted");
  for (const base::CsvTable::Row& row : countries.Rows) {
    if (!row.Cells[deleted].empty()) continue;
    sources.countries.push_back({row.Cells[code], PositionOf(row.Cells[locator])});
  }
  return sources;
}

}  // namespace brenvo::mkmaps
