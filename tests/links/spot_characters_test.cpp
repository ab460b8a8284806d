#include <gtest/gtest.h>

#include "tests/links/spot_terminals.h"

namespace brenvo::links {
namespace {

TEST_F(Radio, AnExclamationMarkWithZeroOrOneTakesTwoMoreCharactersAway) {
  terminal.Receive("ab!0xycd!1zwef\n");
  EXPECT_EQ(terminal.Received.Text(), "abcdef\n");
}

TEST_F(Radio, AnExclamationMarkTakesOneOtherCharacterAway) {
  terminal.Receive("ab!2xy!!z\n");
  EXPECT_EQ(terminal.Received.Text(), "abxyz\n");
}

TEST_F(Radio, AnExclamationMarkThatNothingFollowsGoesAlone) {
  terminal.Receive("ab!");
  terminal.Receive("0xycd\n");
  EXPECT_EQ(terminal.Received.Text(), "ab0xycd\n");
}

TEST_F(Radio, AnEscapeCutShortTakesWhatThereIs) {
  terminal.Receive("ab!0x");
  terminal.Receive("cd\n");
  EXPECT_EQ(terminal.Received.Text(), "abcd\n");
}

TEST_F(Radio, AnEscapeSwallowsALineFeedToo) {
  terminal.Receive("ab!\ncd\n");
  EXPECT_EQ(terminal.Received.Text(), "abcd\n");
}

TEST_F(Telnet, AnExclamationMarkIsAnOrdinaryCharacter) {
  terminal.Receive("ab!0xy!\n");
  EXPECT_EQ(terminal.Received.Text(), "ab!0xy!\n");
}

TEST_F(Radio, ABellBeepsAndIsNotShown) {
  terminal.Receive(
      "a\x07\x07"
      "b\n");
  EXPECT_EQ(terminal.Beeps, 2);
  EXPECT_EQ(terminal.Received.Text(), "ab\n");
}

TEST_F(Telnet, ABellIsSilent) {
  terminal.Receive("a\x07\n");
  EXPECT_EQ(terminal.Beeps, 0);
  EXPECT_EQ(terminal.Received.Text(), "a\n");
}

TEST_F(Radio, CarriageReturnAndLineFeedEndALineAsLineFeedAloneDoes) {
  terminal.Receive("one\r\ntwo\nthr\ree\n");
  EXPECT_EQ(terminal.Received.Text(), "one\ntwo\nthree\n");
}

TEST_F(Telnet, CarriageReturnAndLineFeedEndALineAsLineFeedAloneDoes) {
  terminal.Receive("one\r\ntwo\nthr\ree\n");
  EXPECT_EQ(terminal.Received.Text(), "one\ntwo\nthree\n");
}

TEST_F(Radio, ACarriageReturnAloneNeverEndsALine) {
  terminal.Receive("DX de I4LCK: 14195.0 VP8ORK cq\rDX de I4LCK: 14196.0 ZL9HR cq\r");
  EXPECT_EQ(terminal.Engine.RxLine(),
            "DX de I4LCK: 14195.0 VP8ORK cqDX de I4LCK: 14196.0 ZL9HR cq");
  EXPECT_TRUE(terminal.Asked.empty());
}

TEST_F(Radio, UnderTuttoTextComesUpCharacterByCharacterInItsOwnCase) {
  terminal.Receive("Hello Ma");
  EXPECT_EQ(terminal.Received.Text(), "Hello Ma");
  terminal.Receive("rio\n");
  EXPECT_EQ(terminal.Received.Text(), "Hello Mario\n");
}

TEST_F(Radio, WithoutTuttoNothingIsShownBeforeTheLineEnds) {
  WatchDx();
  terminal.Receive("DX de I4LCK");
  EXPECT_EQ(terminal.Received.Text(), "");
}

TEST_F(Telnet, NothingIsShownBeforeTheLineEnds) {
  terminal.Receive("login: ");
  EXPECT_EQ(terminal.Received.Text(), "");
  EXPECT_EQ(terminal.Engine.RxLine(), "login: ");
}

TEST_F(Radio, ALineMayArriveInSeveralPieces) {
  WatchDx();
  for (char c : kSpot20) terminal.Receive(std::string(1, c));
  EXPECT_EQ(terminal.Received.Text(), kShown20);
  EXPECT_EQ(terminal.Heard, Texts{"\\20m.wav"});
}

TEST_F(Radio, BytesAreLatin1) {
  terminal.Receive("citt\xE0\n");
  EXPECT_EQ(terminal.Received.Text(), "città\n");
}

}  // namespace
}  // namespace brenvo::links
