#include "recorder/fake_clock.h"

#include <algorithm>
#include <tuple>

namespace brenvo::recorder {
namespace {

constexpr int kWinter = 60, kSummer = 120;  // minutes
constexpr int kEastOfTheLine = -600, kWestOfIt = 840;
constexpr std::int64_t kDay = 24 * 60 * 60;

// 01:00 of the month's last Sunday; of a month with 31 days.
base::DateTime LastSunday(int year, int month) {
  const std::int64_t last = base::DateTime::Of(year, month, 31).Seconds() / kDay;
  // Day zero was a Saturday.
  const std::int64_t sunday = last - (last + 6) % 7;
  return base::DateTime::FromSeconds(sunday * kDay + 60 * 60);
}

base::DateTime Earlier(base::DateTime time, int minutes) {
  return base::DateTime::FromSeconds(time.Seconds() - minutes * 60);
}

}  // namespace

class FakeClock::FakeTimer : public platform::Timer {
 public:
  explicit FakeTimer(FakeClock& clock) : clock_(clock) { clock_.timers_.push_back(this); }
  ~FakeTimer() override { std::erase(clock_.timers_, this); }

  void SetInterval(int milliseconds) override {
    interval_ = milliseconds;
    Arm();
  }
  void SetEnabled(bool enabled) override {
    if (enabled_ == enabled) return;
    enabled_ = enabled;
    Arm();
  }
  bool Enabled() const override { return enabled_; }

  bool Running() const { return enabled_ && interval_ > 0; }
  std::int64_t Due() const { return due_; }
  std::uint64_t Order() const { return order_; }
  void Arm() {
    due_ = clock_.passed_ + interval_;
    order_ = ++clock_.armed_;
  }

 private:
  FakeClock& clock_;
  int interval_ = 0;
  bool enabled_ = false;
  std::int64_t due_ = 0;
  std::uint64_t order_ = 0;
};

FakeClock::FakeClock() : set_(base::DateTime::Of(2001, 2, 3, 4, 5, 6)) {}

FakeClock::~FakeClock() = default;

base::DateTime FakeClock::Now() {
  return base::DateTime::FromSeconds(set_.Seconds() + (passed_ - setAt_) / 1000);
}

base::DateTime FakeClock::UtcNow() {
  const base::DateTime now = Now();
  const std::vector<int> offsets = OffsetsOfLocal(now, {});
  return Earlier(now, offsets.empty() ? kWinter : offsets.front());
}

bool FakeClock::KnowsZone(std::string_view zone) {
  return zone.empty() || zone == "Europe/Rome" || zone == "UTC" || zone == "Pacific/Apia";
}

int FakeClock::OffsetOfUtc(base::DateTime utc, std::string_view zone) {
  if (zone == "UTC") return 0;
  if (zone == "Pacific/Apia") {
    return utc < base::DateTime::Of(2011, 12, 30, 10) ? kEastOfTheLine : kWestOfIt;
  }
  const int year = utc.Year();
  return utc >= LastSunday(year, 3) && utc < LastSunday(year, 10) ? kSummer : kWinter;
}

std::vector<int> FakeClock::OffsetsOfLocal(base::DateTime local, std::string_view zone) {
  std::vector<int> offsets;
  for (const int offset : {kWestOfIt, kSummer, kWinter, 0, kEastOfTheLine}) {
    if (OffsetOfUtc(Earlier(local, offset), zone) == offset) offsets.push_back(offset);
  }
  return offsets;
}

void FakeClock::SetNow(base::DateTime now) {
  set_ = now;
  setAt_ = passed_;
}

void FakeClock::Advance(std::int64_t milliseconds) {
  const std::int64_t until = passed_ + milliseconds;
  while (FakeTimer* timer = NextDue(until)) {
    passed_ = std::max(passed_, timer->Due());
    timer->Arm();
    // A copy: the tick may be the end of its timer.
    const std::function<void()> tick = timer->OnTick;
    if (!tick) continue;
    if (guard_) {
      guard_(tick);
    } else {
      tick();
    }
  }
  passed_ = std::max(passed_, until);
}

FakeClock::FakeTimer* FakeClock::NextDue(std::int64_t until) const {
  FakeTimer* next = nullptr;
  for (FakeTimer* timer : timers_) {
    if (!timer->Running() || timer->Due() > until) continue;
    if (next == nullptr ||
        std::tuple(timer->Due(), timer->Order()) < std::tuple(next->Due(), next->Order())) {
      next = timer;
    }
  }
  return next;
}

std::unique_ptr<platform::Timer> FakeClock::MakeTimer() {
  return std::make_unique<FakeTimer>(*this);
}

}  // namespace brenvo::recorder
