#include "worth.h"

#include <algorithm>
#include <cmath>

#include "base/text.h"
#include "core/call_forms.h"

namespace brenvo::gara {
namespace {

constexpr double kTiny = 1e-9;  // of a product such as 1.1 times 10

bool IsDigit(char c) { return c >= '0' && c <= '9'; }
bool IsLetter(char c) { return c >= 'A' && c <= 'Z'; }

struct ModeWord {
  std::string_view mode, family;
};
constexpr ModeWord kFamilies[] = {
    {"CW", "CW"},     {"CWR", "CW"},    {"SSB", "SSB"}, {"USB", "SSB"}, {"LSB", "SSB"},
    {"PHONE", "SSB"}, {"PH", "SSB"},    {"FM", "FM"},   {"NFM", "FM"},  {"WFM", "FM"},
    {"AM", "AM"},     {"RTTY", "RTTY"}, {"RY", "RTTY"}};

double FactorOf(const std::map<std::string, double>& factors, std::string_view name) {
  const auto at = factors.find(base::UpperAscii(base::Trim(name)));
  return at == factors.end() ? 1 : at->second;
}

bool Fits(const TableRow& row, const OwnEntry& own, const Contact& contact) {
  const Place& there = contact.place;
  switch (row.when) {
    case Nearness::kAny:
      return true;
    case Nearness::kOwnCountry:
      return !there.country.empty() && there.country == own.place.country;
    case Nearness::kOwnContinent:
      return !there.continent.empty() && there.continent == own.place.continent;
    case Nearness::kOtherContinent:
      return !there.continent.empty() && !own.place.continent.empty() &&
             there.continent != own.place.continent;
    case Nearness::kCountries:
      return std::ranges::find(row.countries, there.country) != row.countries.end();
  }
  return false;
}

double BasePoints(const Points& points, const OwnEntry& own, const Contact& contact) {
  switch (points.kind) {
    case PointKind::kKm: {
      const auto km = DistanceKm(own.locator, base::Trim(contact.locator), points.kmPerDegree);
      if (!km) return 0;
      return (points.truncates ? std::floor(*km) : std::round(*km)) + points.added;
    }
    case PointKind::kRings: {
      const std::string locator = base::Trim(contact.locator);
      if (!IsLocator(locator, 6)) return 0;
      const auto ring = SquareRing(own.locator, locator);
      return ring ? points.ownSquare + *ring : 0;
    }
    case PointKind::kTable:
      for (const TableRow& row : points.table) {
        if (Fits(row, own, contact)) return row.points;
      }
      return 0;
    case PointKind::kFixed:
      return points.fixed;
  }
  return 0;
}

// The part of a call that tells its prefix, and a district that moves it.
struct CallParts {
  std::string main;
  char district = 0;
};

CallParts PartsOf(const std::string& call) {
  std::vector<std::string> parts;
  std::size_t from = 0;
  while (from <= call.size()) {
    const std::size_t end = std::min(call.find('/', from), call.size());
    if (end > from) parts.push_back(call.substr(from, end - from));
    from = end + 1;
  }
  if (parts.empty()) return {};
  if (parts.size() == 1) return {parts[0], 0};
  CallParts found;
  std::size_t station = 0;
  for (std::size_t i = 1; i < parts.size(); ++i) {
    if (parts[i].size() > parts[station].size()) station = i;
  }
  found.main = parts[station];
  for (std::size_t i = 0; i < parts.size(); ++i) {
    if (i == station) continue;
    const std::string& part = parts[i];
    if (part.size() == 1 && IsDigit(part[0])) {
      found.district = part[0];
    } else if (part != "P" && part != "M" && part != "MM" && part != "AM" && part != "QRP" &&
               part != "A" && part != "LH" && part.size() >= 2) {
      // The country that he works from.
      return {part, 0};
    } else if (part.size() == 1 && i < station) {
      return {part, 0};
    }
  }
  return found;
}

}  // namespace

std::string_view ModeFamily(std::string_view mode) {
  const std::string wanted = base::UpperAscii(base::Trim(mode));
  for (const ModeWord& each : kFamilies) {
    if (each.mode == wanted) return each.family;
  }
  return wanted.empty() ? "SSB" : "DIGI";
}

std::string WpxPrefix(std::string_view call) {
  const std::string whole = base::UpperAscii(base::Trim(call));
  for (const char c : whole) {
    if (!IsDigit(c) && !IsLetter(c) && c != '/') return {};
  }
  CallParts parts = PartsOf(whole);
  if (parts.main.empty() || !std::ranges::any_of(parts.main, IsLetter)) return {};
  // Up to the last digit of the first part that has letters behind it, or of all of it.
  std::size_t end = parts.main.find_last_of("0123456789");
  if (end == std::string::npos || (end == 0 && parts.main.size() > 1)) {
    // Without a digit: two letters and a 0; a digit at the head alone ("4X") belongs to them.
    return parts.main.substr(0, 2) + (parts.district != 0 ? parts.district : '0');
  }
  std::string prefix = parts.main.substr(0, end + 1);
  if (parts.district != 0) prefix.back() = parts.district;
  return prefix;
}

std::int64_t PointsOf(const Rule& rule, const OwnEntry& own, const Contact& contact) {
  const Points& points = rule.points;
  double value = BasePoints(points, own, contact);
  if (!points.modeFactor.empty()) {
    value *= FactorOf(points.modeFactor, ModeFamily(contact.mode));
  }
  if (!points.zoneFactor.empty()) {
    value *= std::max(FactorOf(points.zoneFactor, own.exchange),
                      FactorOf(points.zoneFactor, contact.exchange));
  }
  return static_cast<std::int64_t>(std::floor(value + kTiny));
}

std::string MultiplierOf(const Multiplier& multiplier, const Contact& contact) {
  std::string value;
  switch (multiplier.kind) {
    case MultiplierKind::kSquare: {
      const std::string locator = base::UpperAscii(base::Trim(contact.locator));
      if (IsLocator(locator, 6) || IsLocator(locator, 4)) value = locator.substr(0, 4);
      break;
    }
    case MultiplierKind::kPrefix:
      value = WpxPrefix(contact.call);
      break;
    case MultiplierKind::kProvince:
    case MultiplierKind::kExchange:
      value = base::UpperAscii(base::Trim(contact.exchange));
      break;
    case MultiplierKind::kCountry:
      value = contact.place.country;
      break;
  }
  if (std::ranges::find(multiplier.without, value) != multiplier.without.end()) return {};
  return value;
}

}  // namespace brenvo::gara
