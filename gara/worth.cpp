#include "worth.h"

#include <algorithm>
#include <cmath>

#include "base/text.h"
#include "core/call_forms.h"
#include "core/wpx_prefix.h"

namespace brenvo::gara {
namespace {

constexpr double kTiny = 1e-9;  // of a product such as 1.1 times 10

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

}  // namespace

std::string_view ModeFamily(std::string_view mode) {
  const std::string wanted = base::UpperAscii(base::Trim(mode));
  for (const ModeWord& each : kFamilies) {
    if (each.mode == wanted) return each.family;
  }
  return wanted.empty() ? "SSB" : "DIGI";
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
      value = core::WpxPrefix(contact.call);
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
