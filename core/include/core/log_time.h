// Which time the log is kept in, and the way between it and UTC.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "base/date.h"
#include "core/session.h"

namespace brenvo::core {

enum class LogTime { kUtc, kLocal };

// The value of the log's under which it stands, as "UTC" or "Locale".
inline constexpr std::string_view kLogTimeValue = "Ora";
inline constexpr std::string_view kUtcWord = "UTC", kLocalWord = "Locale";

// Nothing while nobody was asked.
std::optional<LogTime> LogTimeOf(Session& session);
void StoreLogTime(Session& session, LogTime time);
// Asks the operator where nobody was asked, by the dialog "OraDelLog". Nothing when he does not
// answer: then what needs the time does not begin.
std::optional<LogTime> AskLogTime(Session& session);

// The zone of the operator's local time, on both ways.
class LocalTime {
 public:
  explicit LocalTime(Session& session);

  base::DateTime OfUtc(base::DateTime utc) const;
  // Where a change of the clocks makes it two moments, the earlier one; where it makes it none, the
  // moment by the time before the change.
  base::DateTime ToUtc(base::DateTime local) const;
  // All moments that it may be, the earlier one first.
  std::vector<base::DateTime> AllUtc(base::DateTime local) const;

 private:
  platform::Clock& clock_;
  std::string zone_;
};

// For whoever brings contacts that tell UTC, or takes them away as such. A log that nobody was
// asked about counts as one in UTC. What it is asked about is looked up once, as it is made.
class LogTimes {
 public:
  explicit LogTimes(Session& session)
      : local_(session), isLocal_(LogTimeOf(session) == LogTime::kLocal) {}
  base::DateTime FromUtc(base::DateTime utc) const { return isLocal_ ? local_.OfUtc(utc) : utc; }
  base::DateTime ToUtc(base::DateTime inLog) const {
    return isLocal_ ? local_.ToUtc(inLog) : inLog;
  }

 private:
  LocalTime local_;
  bool isLocal_;
};

// The time that is proposed for a new contact: the computer's, which in a log in UTC may be chosen
// to be UTC (choice::kUtcInLog).
base::DateTime ProposedTime(Session& session);

// Both times of now, as the main frame shows them.
std::string ClocksText(Session& session, bool withSeconds);

}  // namespace brenvo::core
