// The rules that a contact is measured by alone.
#include <fmt/format.h>

#include <algorithm>

#include "adif/adif_names.h"
#include "base/number.h"
#include "base/text.h"
#include "checks/log_check.h"
#include "places_of_call.h"

namespace brenvo::checks {
namespace {

// Calls that do not tell which of these countries it is: stations keep them when they move, the
// country was larger once, or the letters are given for an event.
struct SharedCalls {
  std::string_view calls;  // what they begin with; empty for any
  std::string_view countries;
};
constexpr SharedCalls kSharedCalls[] = {
    {"", " K KL KH0 KH1 KH2 KH3 KH4 KH5 KH6 KH7K KH8 KH8/S KH9 KG4 KP1 KP2 KP4 KP5 "},
    {"", " UA UA2 UA9 "},
    {"", " I IS0 "},
    {"U", " UA UA2 UA9 UR EU ER EK 4J 4L EX EY EZ UK UN LY YL ES "},
    {"R", " UA UA2 UA9 UR EU ER EK 4J 4L EX EY EZ UK UN LY YL ES "},
    {"YU", " YU S5 9A E7 Z3 4O Z6 "},
    {"YT", " YU S5 9A E7 Z3 4O Z6 "},
    {"YZ", " YU S5 9A E7 Z3 4O Z6 "},
    {"4N", " YU S5 9A E7 Z3 4O Z6 "},
    {"GB", " G GD GI GJ GM GU GW "}};
// Stations there have calls of their homes.
constexpr std::string_view kWithoutCalls[] = {"CE9"};

bool MayBe(const std::string& call, const std::string& usual, const std::string& country) {
  return usual == country || std::ranges::any_of(kSharedCalls, [&](const SharedCalls& shared) {
           return call.starts_with(shared.calls) &&
                  shared.countries.find(' ' + usual + ' ') != std::string_view::npos &&
                  shared.countries.find(' ' + country + ' ') != std::string_view::npos;
         });
}

std::string Mhz(double mhz) { return base::PlainNumber(mhz) + " MHz"; }

std::string OfLocator(const CheckedContact& contact, const CheckFacts& facts) {
  const std::string locator = CheckFacts::Name(contact.Locator);
  if (locator.empty()) return {};
  if (!IsLocator(locator))
    return fmt::format("\"{}\" non è un locator", base::Trim(contact.Locator));
  if (HasSlash(contact.Call)) return {};
  if (facts.extents.MayHold(contact.Country, locator)) return {};
  return fmt::format("{} è fuori da {}", locator, facts.TitleOf(contact.Country));
}

std::string OfBand(const CheckedContact& contact, const CheckFacts& facts) {
  if (contact.Frequenza <= 0) return {};
  const auto band = facts.bands.find(CheckFacts::Name(contact.Banda));
  if (band == facts.bands.end() || band->second.empty()) return {};
  const bool within = std::ranges::any_of(band->second, [&](const CheckFacts::Edges& edges) {
    return contact.Frequenza >= edges.lower && contact.Frequenza <= edges.upper;
  });
  if (within) return {};
  std::string reason =
      fmt::format("{} non è nei {}", Mhz(contact.Frequenza), base::Trim(contact.Banda));
  if (const adif::AdifBand* is = adif::AdifBandAt(base::Mhz(contact.Frequenza))) {
    reason += fmt::format(", ma nei {}", is->name);
  }
  return reason;
}

std::string OfDate(const CheckedContact& contact, const CheckFacts& facts) {
  if (contact.DataQso <= facts.now) return {};
  return fmt::format("{} deve ancora venire", base::DateTimeText(contact.DataQso));
}

std::string OfProvince(const CheckedContact& contact, const CheckFacts& facts) {
  const std::string province = CheckFacts::Name(contact.Provincia);
  const std::string country = CheckFacts::Name(contact.Country);
  if (province.empty() || !facts.withProvinces.contains(country)) return {};
  if (facts.provinces.contains(country + '|' + province)) return {};
  return fmt::format("{} non è una provincia di {}", province, facts.TitleOf(country));
}

std::string OfCountry(const CheckedContact& contact, const CheckFacts& facts) {
  const std::string country = CheckFacts::Name(contact.Country);
  if (country.empty() || HasSlash(contact.Call) || facts.deleted.contains(country)) return {};
  if (std::ranges::find(kWithoutCalls, country) != std::end(kWithoutCalls)) return {};
  const std::string call = CheckFacts::Name(contact.Call);
  const std::vector<std::string> usual = facts.CountriesOf(call);
  if (usual.empty()) return {};
  for (const std::string& each : usual) {
    if (MayBe(call, each, country)) return {};
  }
  return fmt::format("{} è un nominativo di {}, non di {}", call, facts.TitleOf(usual.front()),
                     facts.TitleOf(country));
}

constexpr Rule kRules[] = {
    {rule::kRepeated},
    {rule::kSimilar},
    {rule::kMoved},
    {rule::kLocator, OfLocator},
    {rule::kBand, OfBand},
    {rule::kDate, OfDate},
    {rule::kProvince, OfProvince},
    {rule::kCountry, OfCountry},
};

}  // namespace

std::span<const Rule> Rules() { return kRules; }

}  // namespace brenvo::checks
