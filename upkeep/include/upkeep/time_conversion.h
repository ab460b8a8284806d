// A log in local time becomes one in UTC.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "base/date.h"
#include "core/session.h"

namespace brenvo::upkeep {

// A contact whose local time does not say by itself which moment it was.
struct DoubtfulTime {
  enum class Kind {
    kTwice,    // in an hour that a change of the clocks repeats: the earlier moment, unless a log
               // file has told the later one
    kMissing,  // in one that it leaves out
    kMoved,    // in such a one, where its moment is another contact's: some seconds later
  };
  Kind kind = Kind::kMissing;
  std::int64_t qsoNr = 0;
  std::string call, banda;
  base::DateTime local;
  base::DateTime utc;                   // what it becomes; of a repeated hour any of the two
  std::optional<base::DateTime> other;  // of a repeated hour the other one
};

struct TimeConversion {
  std::int64_t contacts = 0;  // that have a date; others stay as they are
  std::optional<base::DateTime> first, last;
  std::vector<DoubtfulTime> doubtful;  // in the order of their times
  // Whether some times become earlier, and whether some become later.
  bool earlier = false, later = false;
};

// `done` contacts have been gone through; false stops.
using ConversionProgress = std::function<bool(std::int64_t done)>;

// What would become of each contact of the log, in the operator's time zone. Writes nothing.
// Nothing when it was stopped.
std::optional<TimeConversion> PlanConversion(core::Session& session,
                                             const ConversionProgress& progress);

// Does it, and the log is then one in UTC: one work of the history, in one transaction. False when
// it was stopped: then nothing has changed. Contests have times of their own, which stay.
bool ConvertLog(core::Session& session, const TimeConversion& plan,
                const ConversionProgress& progress);

}  // namespace brenvo::upkeep
