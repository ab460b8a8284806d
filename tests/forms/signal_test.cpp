#include "forms/signal.h"

#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

namespace brenvo::forms {
namespace {

TEST(SignalTest, RunsAllSubscribersInTheirOrder) {
  Signal<int> signal;
  std::string heard;
  const Subscription first = signal.Subscribe([&](int n) { heard += "a" + std::to_string(n); });
  const Subscription second = signal.Subscribe([&](int n) { heard += "b" + std::to_string(n); });
  signal(1);
  signal(2);
  EXPECT_EQ(heard, "a1b1a2b2");
}

TEST(SignalTest, AHandleThatGoesEndsItsSubscriptionOnly) {
  Signal<> signal;
  std::string heard;
  const Subscription stays = signal.Subscribe([&] { heard += "s"; });
  {
    const Subscription goes = signal.Subscribe([&] { heard += "g"; });
    signal();
  }
  signal();
  EXPECT_EQ(heard, "sgs");
}

TEST(SignalTest, IsHeardAsLongAsAHandleIsKept) {
  Signal<> signal;
  EXPECT_FALSE(signal.IsHeard());
  Subscription only = signal.Subscribe([] {});
  EXPECT_TRUE(signal.IsHeard());
  only.Unsubscribe();
  EXPECT_FALSE(signal.IsHeard());
}

TEST(SignalTest, AHandleOutlivesItsSignal) {
  auto signal = std::make_unique<Signal<>>();
  Subscription handle = signal->Subscribe([] {});
  signal.reset();
  handle.Unsubscribe();
}

TEST(SignalTest, AMovedHandleKeepsTheSubscriptionAndAnAssignedOneDropsItsOwn) {
  Signal<> signal;
  std::string heard;
  Subscription handle = signal.Subscribe([&] { heard += "a"; });
  Subscription moved(std::move(handle));
  signal();
  moved = signal.Subscribe([&] { heard += "b"; });
  signal();
  EXPECT_EQ(heard, "ab");
}

TEST(SignalTest, OneThatLeavesInTheMidstOfItsWorkFinishesIt) {
  Signal<> signal;
  std::string heard;
  Subscription own;
  own = signal.Subscribe([&, text = std::string("a text that is not in the object itself")] {
    own.Unsubscribe();
    heard += text.substr(0, 6);
  });
  signal();
  signal();
  EXPECT_EQ(heard, "a text");
}

TEST(SignalTest, OneThatAnotherHasTakenAwayIsNotCalledAnyMore) {
  Signal<> signal;
  std::string heard;
  Subscription second;
  const Subscription first = signal.Subscribe([&] {
    heard += "1";
    second.Unsubscribe();
  });
  second = signal.Subscribe([&] { heard += "2"; });
  signal();
  EXPECT_EQ(heard, "1");
}

TEST(SignalTest, OneThatComesWhileItRunsIsCalledFromTheNextTimeOn) {
  Signal<> signal;
  std::string heard;
  std::vector<Subscription> later;
  const Subscription first = signal.Subscribe([&] {
    heard += "1";
    if (later.empty()) later.push_back(signal.Subscribe([&] { heard += "2"; }));
  });
  signal();
  EXPECT_EQ(heard, "1");
  signal();
  EXPECT_EQ(heard, "112");
}

TEST(SignalTest, MayGoWhileItRuns) {
  auto signal = std::make_unique<Signal<>>();
  std::string heard;
  const Subscription first = signal->Subscribe([&] { signal.reset(); });
  const Subscription second = signal->Subscribe([&] { heard += "2"; });
  (*signal)();
  EXPECT_EQ(heard, "2");
}

TEST(SignalTest, ASubscriberThatFailsEndsTheCallAndNoSubscription) {
  Signal<> signal;
  int calls = 0;
  const Subscription failing = signal.Subscribe([&] {
    if (++calls == 1) throw std::runtime_error("once");
  });
  EXPECT_THROW(signal(), std::runtime_error);
  signal();
  EXPECT_EQ(calls, 2);
}

}  // namespace
}  // namespace brenvo::forms
