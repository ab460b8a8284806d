#include "recorder/fake_clock.h"

#include <gmock/gmock.h>

#include <string>
#include <vector>

namespace brenvo::recorder {
namespace {

using testing::ElementsAre;

std::unique_ptr<platform::Timer> Running(FakeClock& clock, int interval,
                                         std::function<void()> tick) {
  auto timer = clock.MakeTimer();
  timer->OnTick = std::move(tick);
  timer->SetInterval(interval);
  timer->SetEnabled(true);
  return timer;
}

TEST(FakeClock, StandsStillUnlessTold) {
  FakeClock clock;
  EXPECT_EQ(base::DateTimeText(clock.Now()), "03/02/2001 04:05:06");
  clock.Advance(999);
  EXPECT_EQ(base::TimeText(clock.Now()), "04:05:06");
  clock.Advance(1);
  EXPECT_EQ(base::TimeText(clock.Now()), "04:05:07");
}

TEST(FakeClock, ShowsTheTimeThatItIsSetTo) {
  FakeClock clock;
  clock.Advance(700);
  clock.SetNow(base::DateTime::Of(2026, 8, 1, 23, 59, 59));
  clock.Advance(999);
  EXPECT_EQ(base::DateTimeText(clock.Now()), "01/08/2026 23:59:59");
  clock.Advance(1);
  EXPECT_EQ(base::DateTimeText(clock.Now()), "02/08/2026");
}

TEST(FakeClock, TimersFireInTheOrderInWhichTheyComeDue) {
  FakeClock clock;
  std::vector<std::string> fired;
  const auto slow = Running(clock, 250, [&] { fired.push_back("slow"); });
  const auto fast = Running(clock, 100, [&] { fired.push_back("fast"); });
  clock.Advance(500);
  EXPECT_THAT(fired, ElementsAre("fast", "fast", "slow", "fast", "fast", "slow", "fast"));
}

TEST(FakeClock, ATimerSeesTheTimeAtWhichItFires) {
  FakeClock clock;
  std::vector<std::string> times;
  const auto timer = Running(clock, 2000, [&] { times.push_back(base::TimeText(clock.Now())); });
  clock.Advance(4500);
  EXPECT_THAT(times, ElementsAre("04:05:08", "04:05:10"));
}

TEST(FakeClock, ATimerWithoutIntervalNeverFires) {
  FakeClock clock;
  int fired = 0;
  const auto timer = Running(clock, 0, [&] { ++fired; });
  clock.Advance(10000);
  EXPECT_EQ(fired, 0);
}

TEST(FakeClock, AStoppedTimerStartsItsIntervalAnew) {
  FakeClock clock;
  int fired = 0;
  const auto timer = Running(clock, 100, [&] { ++fired; });
  clock.Advance(90);
  timer->SetEnabled(false);
  clock.Advance(90);
  timer->SetEnabled(true);
  clock.Advance(99);
  EXPECT_EQ(fired, 0);
  clock.Advance(1);
  EXPECT_EQ(fired, 1);
}

TEST(FakeClock, SettingTheClockDoesNotHurryATimer) {
  FakeClock clock;
  int fired = 0;
  const auto timer = Running(clock, 100, [&] { ++fired; });
  clock.SetNow(base::DateTime::Of(2030, 1, 1));
  clock.Advance(99);
  EXPECT_EQ(fired, 0);
}

TEST(FakeClock, ATickMayEndItsTimer) {
  FakeClock clock;
  std::unique_ptr<platform::Timer> timer;
  int fired = 0;
  timer = Running(clock, 100, [&] {
    ++fired;
    timer.reset();
  });
  clock.Advance(1000);
  EXPECT_EQ(fired, 1);
}

TEST(FakeClock, EachTickPassesTheGuard) {
  FakeClock clock;
  int guarded = 0, fired = 0;
  clock.SetGuard([&](const std::function<void()>& event) {
    ++guarded;
    event();
  });
  const auto timer = Running(clock, 100, [&] { ++fired; });
  clock.Advance(300);
  EXPECT_EQ(guarded, 3);
  EXPECT_EQ(fired, 3);
}

TEST(FakeClock, ItsUtcIsAnHourOrTwoBehindItself) {
  FakeClock clock;
  EXPECT_EQ(base::DateTimeText(clock.UtcNow()), "03/02/2001 03:05:06");
  clock.SetNow(base::DateTime::Of(2026, 7, 1, 0, 30));
  EXPECT_EQ(base::DateTimeText(clock.UtcNow()), "30/06/2026 22:30:00");
}

TEST(FakeClock, ItsClocksChangeOnTheLastSundaysOfMarchAndOctober) {
  FakeClock clock;
  struct Change {
    int year, month, day, before, after;
  };
  for (const Change& each : {Change{2001, 3, 25, 60, 120}, Change{2001, 10, 28, 120, 60},
                             Change{2024, 3, 31, 60, 120}, Change{2024, 10, 27, 120, 60},
                             Change{2026, 3, 29, 60, 120}, Change{2026, 10, 25, 120, 60}}) {
    const base::DateTime at = base::DateTime::Of(each.year, each.month, each.day, 1);
    const base::DateTime justBefore = base::DateTime::FromSeconds(at.Seconds() - 1);
    EXPECT_EQ(clock.OffsetOfUtc(justBefore, ""), each.before) << each.year << '/' << each.month;
    EXPECT_EQ(clock.OffsetOfUtc(at, "Europe/Rome"), each.after) << each.year << '/' << each.month;
    EXPECT_EQ(clock.OffsetOfUtc(at, "UTC"), 0);
  }
}

TEST(FakeClock, AnHourIsLeftOutInMarchAndOneComesTwiceInOctober) {
  FakeClock clock;
  const auto offsets = [&](int month, int day, int hour, int minute, int second = 0) {
    return clock.OffsetsOfLocal(base::DateTime::Of(2026, month, day, hour, minute, second), "");
  };
  EXPECT_THAT(offsets(3, 29, 1, 59, 59), ElementsAre(60));
  EXPECT_THAT(offsets(3, 29, 2, 0), testing::IsEmpty());
  EXPECT_THAT(offsets(3, 29, 2, 59, 59), testing::IsEmpty());
  EXPECT_THAT(offsets(3, 29, 3, 0), ElementsAre(120));
  EXPECT_THAT(offsets(10, 25, 1, 59, 59), ElementsAre(120));
  EXPECT_THAT(offsets(10, 25, 2, 0), ElementsAre(120, 60));
  EXPECT_THAT(offsets(10, 25, 2, 59, 59), ElementsAre(120, 60));
  EXPECT_THAT(offsets(10, 25, 3, 0), ElementsAre(60));
}

TEST(FakeClock, KnowsTwoZonesByName) {
  FakeClock clock;
  EXPECT_TRUE(clock.KnowsZone(""));
  EXPECT_TRUE(clock.KnowsZone("Europe/Rome"));
  EXPECT_TRUE(clock.KnowsZone("UTC"));
  EXPECT_FALSE(clock.KnowsZone("Europa/Roma"));
}

}  // namespace
}  // namespace brenvo::recorder
