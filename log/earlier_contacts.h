// What the log knows of one station, whatever form of its call stands there.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/date.h"
#include "engine/reader.h"
#include "worked/rules.h"

namespace brenvo::log {

struct EarlierContact {
  std::int64_t qsoNr = 0;
  std::optional<base::DateTime> when;  // nothing where another tool has made it unreadable
  std::string call, banda, modo, qrkDato, qrkRicevuto, qra, qth, locator, country;
  bool confirmed = false;  // by any service that counts for a call
};

// A square of the matrix: what was done on a band in a group of modes.
enum class Worked { kNo, kWorked, kConfirmed };

struct BandRow {
  std::string banda;            // without blanks around it
  std::vector<Worked> byGroup;  // by the places of Rules::Groups(), the first one for all others
};

// At most so many contacts are looked at, the newest.
inline constexpr std::size_t kMostEarlier = 2000;

// Newest first; those without a date last. One walk through the log's calls: meant for a thread of
// its own, a million contacts take some tenths of a second. `call` is a base call (call_forms.h).
std::vector<EarlierContact> ReadEarlierContacts(engine::Reader& reader, std::string_view call,
                                                const worked::Rules& rules);

// From the longest wave to the shortest, names that are none behind them.
std::vector<BandRow> BandsOf(const std::vector<EarlierContact>& contacts,
                             const worked::Rules& rules);

// The texts of one column, each once, newest first: "HANS, HANS-PETER".
std::string TextsOf(const std::vector<EarlierContact>& contacts, std::string EarlierContact::*of);
// With the days on which each was first and last given: "JO31AA (05/03/2019 - 12/06/2024), JN48AB
// (01/02/2001)".
std::string LocatorsOf(const std::vector<EarlierContact>& contacts);

}  // namespace brenvo::log
