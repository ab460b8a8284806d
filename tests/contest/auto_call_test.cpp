#include <gtest/gtest.h>

#include "tests/contest/contest_station.h"

namespace brenvo::contest {
namespace {

class AutoCallTest : public ContestLogStation {
 protected:
  AutoCallTest() { SetProfile("cq.wav", 8); }
  void SetProfile(std::string_view file, int seconds) {
    session.Db.Execute(
        fmt::format("UPDATE [User] SET CallFile='{}',CallInterval={}", file, seconds));
  }
  void Complete(int code) {
    Event([&] { machine.Waves().Complete(code); });
  }
};

TEST_F(AutoCallTest, TheFirstPressPlaysAtOnceAndThePauseFollowsEachPlay) {
  ContestQso& log = OpenLog();
  EXPECT_EQ(log.cmAutoCall.Caption(), "&Start call");
  Press(log, "cmAutoCall");
  EXPECT_EQ(log.cmAutoCall.Caption(), "Stop call");
  EXPECT_EQ(Lines(), Texts{"wave-start \"cq.wav\""});
  machine.Advance(60'000);
  EXPECT_EQ(Lines(), Texts{});
  Complete(1);
  EXPECT_EQ(Lines(), Texts{"wave-close"});
  machine.Advance(7'999);
  EXPECT_EQ(Lines(), Texts{});
  machine.Advance(1);
  EXPECT_EQ(Lines(), Texts{"wave-start \"cq.wav\""});
  machine.Advance(60'000);
  EXPECT_EQ(Lines(), Texts{});
}

TEST_F(AutoCallTest, PressingAgainStopsAPlayInProgress) {
  ContestQso& log = OpenLog();
  Press(log, "cmAutoCall");
  Press(log, "cmAutoCall");
  EXPECT_EQ(log.cmAutoCall.Caption(), "Start call");
  EXPECT_EQ(Lines(), (Texts{"wave-start \"cq.wav\"", "wave-close"}));
  EXPECT_FALSE(machine.Waves().Playing());
  Press(log, "cmAutoCall");
  EXPECT_EQ(log.cmAutoCall.Caption(), "Stop call");
}

TEST_F(AutoCallTest, PressingDuringThePauseStopsTheCalling) {
  ContestQso& log = OpenLog();
  Press(log, "cmAutoCall");
  Complete(1);
  Press(log, "cmAutoCall");
  Lines();
  machine.Advance(60'000);
  EXPECT_EQ(Lines(), Texts{});
}

TEST_F(AutoCallTest, AnotherCodeEndsTheCallingAndTheCaptionStays) {
  ContestQso& log = OpenLog();
  Press(log, "cmAutoCall");
  Complete(4);
  Lines();
  machine.Advance(60'000);
  EXPECT_EQ(Lines(), Texts{});
  EXPECT_EQ(log.cmAutoCall.Caption(), "Stop call");
}

TEST_F(AutoCallTest, WithoutAnIntervalTheRecordingPlaysOnce) {
  SetProfile("cq.wav", 0);
  ContestQso& log = OpenLog();
  Press(log, "cmAutoCall");
  Complete(1);
  Lines();
  machine.Advance(3'600'000);
  EXPECT_EQ(Lines(), Texts{});
}

TEST_F(AutoCallTest, AnIntervalBeyondADayIsADay) {
  SetProfile("cq.wav", 1'000'000);
  ContestQso& log = OpenLog();
  Press(log, "cmAutoCall");
  Complete(1);
  Lines();
  constexpr int kDay = 24 * 60 * 60 * 1000;
  machine.Advance(kDay - 1);
  EXPECT_EQ(Lines(), Texts{});
  machine.Advance(1);
  EXPECT_EQ(Lines(), Texts{"wave-start \"cq.wav\""});
}

TEST_F(AutoCallTest, AChangeOfTheProfileAppliesFromTheNextOpening) {
  ContestQso& log = OpenLog();
  SetProfile("altro.wav", 1);
  Press(log, "cmAutoCall");
  EXPECT_EQ(Lines(), Texts{"wave-start \"cq.wav\""});
  Event([&] { log.Close(); });
  Lines();
  Press(OpenLog(), "cmAutoCall");
  EXPECT_EQ(Lines(), Texts{"wave-start \"altro.wav\""});
}

TEST_F(AutoCallTest, AProfileWithoutARecordingNamesNoFile) {
  SetProfile("", 1);
  Press(OpenLog(), "cmAutoCall");
  EXPECT_EQ(Lines(), Texts{"wave-start \"\""});
}

TEST_F(AutoCallTest, ClosingTheLogEndsTheCalling) {
  ContestQso& log = OpenLog();
  Press(log, "cmAutoCall");
  Event([&] { log.Close(); });
  EXPECT_FALSE(machine.Waves().Playing());
  Lines();
  machine.Advance(60'000);
  EXPECT_EQ(Lines(), Texts{});
}

}  // namespace
}  // namespace brenvo::contest
