// derive_extents DATA: writes DATA/rules/Estensioni.csv, where each country roughly lies, from the
// middles in DATA/Country.csv and the outlines in DATA/outlines.
#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <fstream>
#include <iostream>
#include <map>
#include <set>

#include "base/csv.h"
#include "geo/locator.h"
#include "mkmaps/outlines.h"

namespace brenvo::derive_extents {
namespace {

using mkmaps::GeoPoint;

// Whole degrees.
struct Box {
  int south = 0, north = 0, west = 0, east = 0;
  friend auto operator<=>(const Box&, const Box&) = default;
  bool Holds(const Box& other) const {
    return south <= other.south && north >= other.north && west <= other.west && east >= other.east;
  }
};

struct Country {
  std::string code;
  GeoPoint middle;
  std::set<std::string> areas;  // the names of the outlines that it lies in
  std::set<Box> boxes;
  double largest = 0;  // square degrees of the largest outline that it was found by
};

// A station at a border or on an island before the coast may be told by the square beside it.
Box Widened(double south, double north, double west, double east) {
  return {static_cast<int>(std::floor(south)) - 1, static_cast<int>(std::ceil(north)) + 1,
          static_cast<int>(std::floor(west / 2)) * 2 - 2,
          static_cast<int>(std::ceil(east / 2)) * 2 + 2};
}

Box BoxOf(const mkmaps::GeoLine& ring) {
  double south = 90, north = -90, west = 180, east = -180;
  for (const GeoPoint& point : ring) {
    south = std::min(south, point.latitude);
    north = std::max(north, point.latitude);
    west = std::min(west, point.longitude);
    east = std::max(east, point.longitude);
  }
  return Widened(south, north, west, east);
}

// Square degrees around a ring.
double SizeOf(const mkmaps::GeoLine& ring) {
  const auto [west, east] = std::ranges::minmax(ring, {}, &GeoPoint::longitude);
  const auto [south, north] = std::ranges::minmax(ring, {}, &GeoPoint::latitude);
  return (east.longitude - west.longitude) * (north.latitude - south.latitude);
}

double Km(const GeoPoint& a, const GeoPoint& b) {
  const double radian = geo::kPiValue / 180;
  const double c = std::sin(a.latitude * radian) * std::sin(b.latitude * radian) +
                   std::cos(a.latitude * radian) * std::cos(b.latitude * radian) *
                       std::cos((a.longitude - b.longitude) * radian);
  return std::acos(std::clamp(c, -1.0, 1.0)) * geo::kEarthCircumferenceKm / geo::kTwoPiValue;
}

double Km(const mkmaps::GeoLine& ring, const GeoPoint& point) {
  double nearest = 1e9;
  for (const GeoPoint& each : ring) nearest = std::min(nearest, Km(each, point));
  return nearest;
}

std::vector<Country> ReadCountries(const std::filesystem::path& file) {
  const base::CsvTable table = base::ReadCsv(file);
  const std::size_t code = table.Column("Country"), locator = table.Column("Locator");
  std::vector<Country> countries;
  for (const auto& row : table.Rows) {
    if (!geo::IsValidLocator(row.Cells[locator])) continue;
    const geo::Position at = geo::LocatorToRadians(row.Cells[locator]);
    countries.push_back({row.Cells[code],
                         {at.longitude * 180 / geo::kPiValue, at.latitude * 180 / geo::kPiValue},
                         {},
                         {},
                         0});
  }
  return countries;
}

void FindExtents(std::vector<Country>& countries, const std::vector<mkmaps::Outline>& outlines) {
  // Islands as small as this lie in groups, and the outlines leave many of them out.
  constexpr double kSmallest = 2;  // square degrees
  constexpr double kNear = 150;    // km from a middle in the sea to its coast
  constexpr double kOwn = 1500;    // km from a country to an island of the same name
  std::vector<bool> taken(outlines.size());
  for (Country& country : countries) {
    const GeoPoint& m = country.middle;
    for (std::size_t i = 0; i < outlines.size(); ++i) {
      if (!mkmaps::Encloses(outlines[i].points, m)) continue;
      taken[i] = true;
      country.largest = std::max(country.largest, SizeOf(outlines[i].points));
      country.areas.insert(outlines[i].name);
      country.boxes.insert(BoxOf(outlines[i].points));
    }
    if (country.boxes.empty()) {
      std::size_t nearest = 0;
      double km = kNear;
      for (std::size_t i = 0; i < outlines.size(); ++i) {
        const double each = Km(outlines[i].points, m);
        if (each < km) {
          km = each;
          nearest = i;
        }
      }
      if (km == kNear) continue;  // islands far out: nothing is known of how far they reach
      country.largest = SizeOf(outlines[nearest].points);
      country.areas.insert(outlines[nearest].name);
      country.boxes.insert(BoxOf(outlines[nearest].points));
    }
    country.boxes.insert(Widened(m.latitude, m.latitude, m.longitude, m.longitude));
  }
  // What is left over are islands: of all countries of the name that are near enough.
  for (std::size_t i = 0; i < outlines.size(); ++i) {
    if (taken[i]) continue;
    for (Country& country : countries) {
      if (!country.areas.contains(outlines[i].name)) continue;
      if (Km(outlines[i].points, country.middle) > kOwn && outlines[i].points.size() < 40) {
        continue;
      }
      country.boxes.insert(BoxOf(outlines[i].points));
    }
  }
  std::erase_if(countries, [](const Country& each) { return each.largest < kSmallest; });
}

void Write(std::ostream& out, std::vector<Country>& countries) {
  out << "Country,Sud,Nord,Ovest,Est\n";
  std::ranges::sort(countries, {}, &Country::code);
  for (const Country& country : countries) {
    for (const Box& box : country.boxes) {
      const bool within = std::ranges::any_of(
          country.boxes, [&](const Box& other) { return other != box && other.Holds(box); });
      if (within) continue;
      out << fmt::format("{},{},{},{},{}\n", country.code, box.south, box.north, box.west,
                         box.east);
    }
  }
}

}  // namespace
}  // namespace brenvo::derive_extents

int main(int count, char** arguments) {
  using namespace brenvo::derive_extents;
  if (count != 2) {
    std::cerr << "derive_extents DATA\n";
    return 2;
  }
  try {
    const std::filesystem::path data = arguments[1];
    std::vector<Country> countries = ReadCountries(data / "Country.csv");
    FindExtents(countries, brenvo::mkmaps::ReadOutlines(data / "outlines" / "world.csv"));
    std::ofstream out(data / "rules" / "Estensioni.csv", std::ios::binary);
    Write(out, countries);
    out.close();
    if (!out) throw std::runtime_error("Estensioni.csv cannot be written");
  } catch (const std::exception& failure) {
    std::cerr << failure.what() << '\n';
    return 1;
  }
}
