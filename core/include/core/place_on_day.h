// Where a call is from on a day.
#pragma once

#include <string>
#include <string_view>

#include "base/date.h"
#include "entities/resolver.h"

namespace brenvo::core {

class Session;

// What is told of a call's place. Empty texts and zones 0 are not known.
struct CallPlace {
  std::string Prefisso, Country, Continente;
  double ZonaCQ = 0, ZonaITU = 0;
  friend bool operator==(const CallPlace&, const CallPlace&) = default;
};

// What counts for whatever comes in by a program: the rule of the day; where no rule knows the
// call, the table of prefixes. A call that counts for no country that day has no place. The prefix
// is the table's.
CallPlace PlaceOnDay(const CallPlace& byTable, const entities::Answer& day);

// What the day says of the call, for the operator, where that is another country than `country`, a
// code; empty where it is the same, and where no rule knows the call.
std::string OtherOnDay(Session& session, std::string_view call, base::DateTime utc,
                       std::string_view country);

}  // namespace brenvo::core
