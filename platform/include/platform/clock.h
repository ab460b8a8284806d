// The computer's clock and what it sets off.
#pragma once

#include <functional>

#include "base/date.h"

namespace brenvo::platform {

class Clock {
 public:
  virtual ~Clock() = default;
  // What the operator's clock shows.
  virtual base::DateTime Now() = 0;
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
