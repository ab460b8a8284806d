// The computer's clock and what it sets off.
#pragma once

#include <functional>
#include <string_view>
#include <vector>

#include "base/date.h"

namespace brenvo::platform {

class Clock {
 public:
  virtual ~Clock() = default;
  // What the operator's clock shows.
  virtual base::DateTime Now() = 0;
  // The same moment in UTC.
  virtual base::DateTime UtcNow() = 0;

  // Time zones by name ("Europe/Rome"); the empty one is the computer's own.
  virtual bool KnowsZone(std::string_view zone) = 0;
  // By how many minutes the zone's local time is ahead of UTC. Of a local time: none in an hour
  // that a change of the clocks leaves out; two, the earlier moment's first, in one that it
  // repeats. A zone that is not known counts as the computer's own.
  virtual int OffsetOfUtc(base::DateTime utc, std::string_view zone) = 0;
  virtual std::vector<int> OffsetsOfLocal(base::DateTime local, std::string_view zone) = 0;
};

// Runs OnTick again and again, an interval after it was enabled or last ran. An interval of 0
// never fires.
class Timer {
 public:
  virtual ~Timer() = default;
  virtual void SetInterval(int milliseconds) = 0;
  virtual void SetEnabled(bool enabled) = 0;
  virtual bool Enabled() const = 0;

  std::function<void()> OnTick;
};

}  // namespace brenvo::platform
