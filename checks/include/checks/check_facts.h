// What the station's tables and files say, held in memory for the length of a check.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "base/date.h"
#include "base/units.h"
#include "checks/country_extents.h"
#include "worked/rules.h"

namespace brenvo::core {
class Session;
}

namespace brenvo::checks {

struct CheckFacts {
  // MHz, both ends included.
  struct Edges {
    double lower = 0, upper = 0;
  };

  base::DateTime now;  // in the log's time; where that is not sure, the latest that it may be
  std::shared_ptr<const worked::Rules> rules = std::make_shared<const worked::Rules>();
  CountryExtents extents;
  // Whether there are any extents: without them no locator is compared with its country.
  bool hasExtents = false;
  // Names are in capitals, without the blanks around them.
  std::unordered_map<std::string, std::vector<Edges>> bands;
  std::unordered_map<std::string, std::string> countries;              // code to description
  std::unordered_set<std::string> deleted;                             // that are no more
  std::unordered_set<std::string> provinces;                           // "I|PD"
  std::unordered_set<std::string> withProvinces;                       // countries that have any
  std::unordered_map<std::string, std::vector<std::string>> prefixes;  // to countries
  // Whether something beside the card confirms a contact.
  std::function<bool(std::int64_t qsoNr)> confirmedBeside = [](std::int64_t) { return false; };

  static std::string Name(std::string_view text);
  // The countries of a call's prefix, the usual one first; empty when nothing is resolved.
  std::vector<std::string> CountriesOf(std::string_view call) const;
  std::string TitleOf(std::string_view country) const;  // "I Italia"
};

// The time of CheckFacts::now.
base::DateTime LatestNow(core::Session& session);
// Valid as long as the session's database is open.
CheckFacts FactsOf(core::Session& session);

}  // namespace brenvo::checks
