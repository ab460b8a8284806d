// A clock that is moved by hand, and the timers that run on it.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <vector>

#include "platform/clock.h"

namespace brenvo::recorder {

// Shows 03/02/2001 04:05:06 until it is set to another time. Outlives its timers. It stands in
// Italy, whose clocks change on the last Sundays of March and October at 01:00 UTC, in every year.
// Besides Europe/Rome it knows the zones UTC and Pacific/Apia, which went over the date line at the
// end of 2011 and so has left out 30 December.
class FakeClock : public platform::Clock {
 public:
  // Runs one event; what it throws is the guard's concern.
  using EventGuard = std::function<void(const std::function<void()>&)>;

  FakeClock();
  ~FakeClock() override;
  base::DateTime Now() override;
  base::DateTime UtcNow() override;
  bool KnowsZone(std::string_view zone) override;
  int OffsetOfUtc(base::DateTime utc, std::string_view zone) override;
  std::vector<int> OffsetsOfLocal(base::DateTime local, std::string_view zone) override;
  // Only what the clock shows: running timers have as long to go as before.
  void SetNow(base::DateTime now);
  // Time passes; timers fire as they come due, the one that was set first before its equals.
  void Advance(std::int64_t milliseconds);
  std::unique_ptr<platform::Timer> MakeTimer();
  // Each tick is an event of its own.
  void SetGuard(EventGuard guard) { guard_ = std::move(guard); }

 private:
  class FakeTimer;
  FakeTimer* NextDue(std::int64_t until) const;

  std::int64_t passed_ = 0;  // milliseconds since the start
  std::int64_t setAt_ = 0;   // when the clock was set, in the same terms
  base::DateTime set_;
  std::uint64_t armed_ = 0;
  std::vector<FakeTimer*> timers_;
  EventGuard guard_;
};

}  // namespace brenvo::recorder
