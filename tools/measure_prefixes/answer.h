// What a callsign tells about a station.
#pragma once

#include <string>

namespace brenvo::measure_prefixes {

struct Answer {
  std::string Country;  // our code, as in table Country
  int ZoneCq = 0;
  int ZoneItu = 0;
  std::string Continent;

  auto operator<=>(const Answer&) const = default;
  bool SameZones(const Answer& other) const {
    return ZoneCq == other.ZoneCq && ZoneItu == other.ZoneItu;
  }
};

}  // namespace brenvo::measure_prefixes
