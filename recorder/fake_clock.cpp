#include "recorder/fake_clock.h"

#include <algorithm>
#include <tuple>

namespace brenvo::recorder {

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
