#include <gtest/gtest.h>

#include "tests/links/spot_terminals.h"

namespace brenvo::links {
namespace {

TEST_F(Radio, StartsWithTheMonitorOnTutto) {
  EXPECT_TRUE(terminal.cmMTutto.Down());
  EXPECT_FALSE(terminal.cmMDX.Down());
  EXPECT_FALSE(terminal.cmMAnnounce.Down());
}

TEST_F(Radio, TheMarkDxLetsSpotsThroughAndNothingElse) {
  WatchDx();
  terminal.Receive("hello\r\nTo ALL de I2YDX: news\r\n" + std::string(kSpot20));
  EXPECT_EQ(terminal.Received.Text(), kShown20);
  EXPECT_EQ(terminal.Engine.RxLine(), "");
}

TEST_F(Radio, TheMarkAnnounceLetsAnnouncementsThroughAndNothingElse) {
  terminal.cmMAnnounce.Press();
  terminal.Receive("hello\r\nTo ALL de I2YDX: news\r\nto all de I2YDX\r\n" + std::string(kSpot20));
  EXPECT_EQ(terminal.Received.Text(), "TO ALL DE I2YDX: NEWS\n");
}

TEST_F(Radio, TheMarksDxAndAnnounceGoTogether) {
  WatchDx();
  terminal.cmMAnnounce.Press();
  terminal.Receive("hello\nTo ALL de I2YDX: news\n" + std::string(kSpot20));
  EXPECT_EQ(terminal.Received.Text(), "TO ALL DE I2YDX: NEWS\n" + std::string(kShown20));
}

TEST_F(Radio, WithNoMonitorMarkNothingCounts) {
  terminal.cmMTutto.Press();
  terminal.Receive("hello\n" + std::string(kSpot20));
  EXPECT_EQ(terminal.Received.Text(), "");
  EXPECT_TRUE(terminal.Heard.empty());
}

TEST_F(Radio, InDxModeATalkLineThatQuotesASpotIsShownAndGoesNoFurther) {
  WatchDx();
  terminal.Receive("IK4GRO de I2ABC see DX de I4LCK: 14195.0 VP8ORK cq\r\n");
  EXPECT_EQ(terminal.Received.Text(), "IK4GRO DE I2ABC SEE DX DE I4LCK: 14195.0 VP8ORK CQ\n");
  EXPECT_TRUE(terminal.Asked.empty());
  EXPECT_TRUE(terminal.Heard.empty());
}

TEST_F(Radio, DxDeInUpperCaseDoesNotPassTheMarkDx) {
  WatchDx();
  terminal.Receive("DX DE I4LCK: 14195.0 VP8ORK cq\r\n");
  EXPECT_EQ(terminal.Received.Text(), "");
}

TEST_F(Telnet, EveryLinePassesWithoutAMonitor) {
  terminal.Receive("Hello\r\nDX DE I4LCK: 14195.0 VP8ORK cq\r\n");
  EXPECT_EQ(terminal.Received.Text(), "Hello\nDX DE I4LCK: 14195.0 VP8ORK cq\n");
}

TEST_F(Radio, ASpotSentTwiceComesUpOnceWithOneAnnouncement) {
  WatchDx();
  terminal.Receive(kSpot20);
  terminal.Receive(kSpot2);
  terminal.Receive(kSpot20);
  EXPECT_EQ(terminal.Received.Text(), std::string(kShown20) + std::string(kShown2));
  EXPECT_EQ(terminal.Heard, (Texts{"\\20m.wav", "\\2m.wav"}));
}

TEST_F(Telnet, ASpotSentTwiceIsProcessedTwice) {
  terminal.cmAutoCheck.Press();
  terminal.Receive(kSpot20);
  terminal.Receive(kSpot20);
  EXPECT_EQ(terminal.Received.Text(), Arrived(kSpot20) + Arrived(kSpot20));
  EXPECT_EQ(terminal.Checked, (Texts{"VP8ORK", "VP8ORK"}));
}

TEST_F(Radio, UnderTuttoARepeatIsShownAndAnnouncedAgain) {
  terminal.Receive(kSpot20);
  terminal.Receive(kSpot20);
  EXPECT_EQ(terminal.Received.Text(), Arrived(kSpot20) + Arrived(kSpot20));
  EXPECT_EQ(terminal.Heard, (Texts{"\\20m.wav", "\\20m.wav"}));
}

TEST_F(Radio, ARepeatIsFoundWhateverItsCase) {
  terminal.Receive(kSpot20);
  WatchDx();
  terminal.Receive("DX de i4lck:     14195.0  vp8ork   TNX 1423z\r\n");
  EXPECT_EQ(terminal.Received.Text(), Arrived(kSpot20));
  EXPECT_EQ(terminal.Heard.size(), 1u);
}

TEST_F(Radio, ASpotThatWasTakenBackIsNoRepeat) {
  WatchDx();
  OnlyBand("  2 m");
  terminal.Receive(kSpot20);
  OnlyBand(" 20 m");
  terminal.Receive(kSpot20);
  EXPECT_EQ(terminal.Received.Text(), kShown20);
}

TEST_F(Radio, TickingTutteUnticksEveryBand) {
  OnlyBand(" 20 m");
  OnlyBand("  2 m");
  EXPECT_TRUE(Ticked(" 20 m"));
  EXPECT_TRUE(Ticked("  2 m"));
  OnlyBand("Tutte");
  EXPECT_TRUE(Ticked("Tutte"));
  EXPECT_FALSE(Ticked(" 20 m"));
  EXPECT_FALSE(Ticked("  2 m"));
}

TEST_F(Radio, AClickOnATickedBandUnticksIt) {
  OnlyBand(" 20 m");
  OnlyBand(" 20 m");
  EXPECT_FALSE(Ticked(" 20 m"));
  EXPECT_FALSE(Ticked("Tutte"));
}

TEST_F(Radio, TutteCanBeUntickedAndThenEverySpotVanishes) {
  WatchDx();
  OnlyBand("Tutte");
  EXPECT_FALSE(Ticked("Tutte"));
  terminal.Receive(kSpot20);
  EXPECT_EQ(terminal.Received.Text(), "");
}

TEST_F(Radio, TheMarkDxOrAnnounceUnticksTutto) {
  terminal.cmMDX.Press();
  EXPECT_FALSE(terminal.cmMTutto.Down());
  terminal.cmMTutto.Press();
  terminal.cmMAnnounce.Press();
  EXPECT_FALSE(terminal.cmMTutto.Down());
  EXPECT_FALSE(terminal.cmMDX.Down());
}

TEST_F(Radio, TheMarkTuttoUnticksDxAndAnnounce) {
  terminal.cmMDX.Press();
  terminal.cmMAnnounce.Press();
  terminal.cmMTutto.Press();
  EXPECT_FALSE(terminal.cmMDX.Down());
  EXPECT_FALSE(terminal.cmMAnnounce.Down());
}

TEST_F(Radio, UntickingAMonitorMarkTouchesNoOther) {
  terminal.cmMDX.Press();
  terminal.cmMDX.Press();
  EXPECT_FALSE(terminal.cmMDX.Down());
  EXPECT_FALSE(terminal.cmMTutto.Down());
}

}  // namespace
}  // namespace brenvo::links
