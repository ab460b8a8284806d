#include <gtest/gtest.h>

#include "tests/links/spot_terminals.h"

namespace brenvo::links {
namespace {

TEST_F(Radio, ASpotIsShownInUpperCaseWithItsDxInRed) {
  WatchDx();
  terminal.Receive(kSpot20);
  terminal.Receive(kSpot2);
  EXPECT_EQ(terminal.Received.Text(), std::string(kShown20) + std::string(kShown2));
  EXPECT_EQ(terminal.Red(), (Texts{"DX", "DX"}));
  EXPECT_EQ(terminal.Received.Runs().front().text, "DX");
}

TEST_F(Radio, UnderTuttoTheRedFallsOnTheCaseThatArrived) {
  terminal.Receive("hello\ndx de I4LCK: 14195.0 VP8ORK cq\n");
  EXPECT_EQ(terminal.Received.Text(), "hello\ndx de I4LCK: 14195.0 VP8ORK cq\n");
  EXPECT_EQ(terminal.Red(), Texts{"dx"});
}

TEST_F(Radio, ALineThatQuotesASpotIsRedWhereItQuotes) {
  terminal.Receive("I2ABC: DX de I4LCK\n");
  EXPECT_EQ(terminal.Received.Runs()[0].text, "I2ABC: ");
  EXPECT_EQ(terminal.Red(), Texts{"DX"});
}

TEST_F(Radio, OnlyTheLineJustShownIsPainted) {
  terminal.Receive(kSpot20);
  terminal.Received.SetText(terminal.Received.Text());
  terminal.Receive("no spot\n");
  EXPECT_TRUE(terminal.Red().empty());
}

TEST_F(Radio, NothingStaysSelectedBehindTheRed) {
  terminal.Receive(kSpot20);
  EXPECT_EQ(terminal.Received.SelText(), "");
}

TEST_F(Telnet, LinesAreShownInTheirOwnCaseWithoutRed) {
  terminal.Receive("Hello Mario\r\n" + std::string(kSpot20));
  EXPECT_EQ(terminal.Received.Text(), "Hello Mario\n" + Arrived(kSpot20));
  EXPECT_TRUE(terminal.Red().empty());
}

TEST_F(Radio, ASpotWithoutAColonIsShownAndDropped) {
  WatchDx();
  terminal.cmAutoCheck.Press();
  terminal.Receive("DX de I4LCK 14195.0 VP8ORK cq\r\n");
  EXPECT_EQ(terminal.Received.Text(), "DX DE I4LCK 14195.0 VP8ORK CQ\n");
  EXPECT_TRUE(terminal.Asked.empty());
  EXPECT_TRUE(terminal.Checked.empty());
}

TEST_F(Telnet, ASpotWithoutAColonIsDroppedUnseen) {
  terminal.Receive("DX de I4LCK 14195.0 VP8ORK cq\r\n");
  EXPECT_EQ(terminal.Received.Text(), "");
  EXPECT_EQ(terminal.Engine.RxLine(), "");
}

TEST_F(Radio, ATextLongerThanItsLimitLosesThatManyFromItsSecondCharacter) {
  WatchDx();
  terminal.Received.SetText("a" + std::string(2000, 'b') + std::string(30000, 'c'));
  terminal.Receive("nothing that counts\n");
  EXPECT_EQ(terminal.Received.Text(), "a" + std::string(30000, 'c'));
}

TEST_F(Radio, ATextAtItsLimitStays) {
  WatchDx();
  terminal.Received.SetText(std::string(32000, 'c'));
  terminal.Receive("nothing that counts\n");
  EXPECT_EQ(terminal.Received.Length(), 32000u);
}

TEST_F(Radio, UnderTuttoTheTextIsTrimmedBeforeEachCharacter) {
  terminal.Received.SetText(std::string(32001, 'c'));
  terminal.Receive("x");
  EXPECT_EQ(terminal.Received.Length(), 30002u);
}

TEST_F(Radio, WithoutTuttoTheTextIsTrimmedAtTheLineEndOnly) {
  WatchDx();
  terminal.Received.SetText(std::string(32001, 'c'));
  terminal.Receive("x");
  EXPECT_EQ(terminal.Received.Length(), 32001u);
  terminal.Receive("\n");
  EXPECT_EQ(terminal.Received.Length(), 30001u);
}

TEST_F(Telnet, TheTextIsTrimmedAfterEachCharacter) {
  terminal.Received.SetText(std::string(36000, 'c'));
  terminal.Receive("x");
  EXPECT_EQ(terminal.Received.Length(), 34000u);
  terminal.Receive("yz");
  EXPECT_EQ(terminal.Received.Length(), 32000u);
}

TEST_F(Radio, ASpotOnNoBandStaysWithoutASoundUnderTutte) {
  WatchDx();
  terminal.Receive(kSpotNowhere);
  EXPECT_EQ(terminal.Asked, std::vector<base::Khz>{base::Khz(13000)});
  EXPECT_NE(terminal.Received.Length(), 0u);
  EXPECT_TRUE(terminal.Heard.empty());
}

TEST_F(Radio, ASpotOnNoBandIsTakenBackWithoutTutte) {
  WatchDx();
  OnlyBand(" 20 m");
  terminal.Receive(kSpotNowhere);
  EXPECT_EQ(terminal.Received.Text(), "");
}

TEST_F(Telnet, ASpotOnNoBandIsShownUnderTutteAlone) {
  terminal.Receive(kSpotNowhere);
  EXPECT_EQ(terminal.Received.Text(), Arrived(kSpotNowhere));
  OnlyBand(" 20 m");
  terminal.Receive(kSpotNowhere);
  EXPECT_EQ(terminal.Received.Text(), Arrived(kSpotNowhere));
  EXPECT_TRUE(terminal.Heard.empty());
}

TEST_F(Radio, ASpotOnATickedBandStaysAndIsHeard) {
  WatchDx();
  OnlyBand(" 20 m");
  terminal.Receive(kSpot20);
  EXPECT_EQ(terminal.Received.Text(), kShown20);
  EXPECT_EQ(terminal.Heard, Texts{"\\20m.wav"});
}

TEST_F(Radio, TickingABandUnticksTutteAndASpotOnAnotherOneVanishes) {
  WatchDx();
  terminal.Receive(kSpot20);
  OnlyBand("  2 m");
  EXPECT_FALSE(Ticked("Tutte"));
  terminal.Receive("DX de I4LCK:     14200.0  ZL9HR   up 1426Z\r\n");
  EXPECT_EQ(terminal.Received.Text(), kShown20);
  EXPECT_EQ(terminal.Heard.size(), 1u);
}

TEST_F(Radio, TakingALineBackTakesItsOwnLineEndAndNothingMore) {
  WatchDx();
  terminal.Receive(kSpot20);
  terminal.Receive(kSpot2);
  OnlyBand("  2 m");
  terminal.Receive("DX de I4LCK:     14200.0  ZL9HR   up 1426Z\r\n");
  EXPECT_EQ(terminal.Received.Text(), std::string(kShown20) + std::string(kShown2));
}

TEST_F(Radio, TakingALineBackTakesTheRedOfAllLines) {
  WatchDx();
  terminal.Receive(kSpot2);
  OnlyBand("  2 m");
  terminal.Receive(kSpot20);
  EXPECT_EQ(terminal.Received.Text(), kShown2);
  EXPECT_TRUE(terminal.Red().empty());
}

TEST_F(Radio, TakingALineBackUnderTuttoTakesWhatHadComeUp) {
  OnlyBand("  2 m");
  terminal.Receive("hello\n" + std::string(kSpot20) + "there\n");
  EXPECT_EQ(terminal.Received.Text(), "hello\nthere\n");
}

TEST_F(Radio, ABandThatIsNotAnnouncedIsSilent) {
  for (auto& [band, edges] : terminal.Bands) band.AnnunceDX = false;
  terminal.cmAutoSpelling.Press();
  terminal.Receive(kSpot20);
  EXPECT_EQ(terminal.Received.Text(), Arrived(kSpot20));
  EXPECT_TRUE(terminal.Heard.empty());
}

TEST_F(Telnet, ASpotOnATickedBandIsShownWithoutASound) {
  OnlyBand(" 20 m");
  terminal.cmAutoSpelling.Press();
  terminal.Receive(kSpot20);
  EXPECT_EQ(terminal.Received.Text(), Arrived(kSpot20));
  EXPECT_TRUE(terminal.Heard.empty());
}

TEST_F(Telnet, UnderTutteNothingIsEverHeard) {
  const std::string spots = std::string(kSpot20) + std::string(kSpot2);
  terminal.Receive(spots);
  EXPECT_EQ(terminal.Received.Text(), Arrived(spots));
  EXPECT_TRUE(terminal.Heard.empty());
}

TEST_F(Telnet, ASpotOnABandThatIsNotTickedIsHeardAndNotShown) {
  OnlyBand("  2 m");
  terminal.cmAutoSpelling.Press();
  terminal.Receive("DX de I4L:     14195.0  ZL9   tnx 1423Z\r\n");
  EXPECT_EQ(terminal.Received.Text(), "");
  EXPECT_EQ(terminal.Heard, (Texts{"\\20m.wav", "\\I.wav", "\\4.wav", "\\L.wav", "\\:.wav",
                                   "\\ .wav", "\\ .wav", "\\ .wav", "\\ .wav", "\\ .wav",
                                   "\\pause.wav", "\\Z.wav", "\\L.wav", "\\9.wav"}));
}

TEST_F(Telnet, ABandThatIsNeitherTickedNorAnnouncedIsSilent) {
  for (auto& [band, edges] : terminal.Bands) band.AnnunceDX = false;
  OnlyBand("  2 m");
  terminal.Receive(kSpot20);
  EXPECT_TRUE(terminal.Heard.empty());
}

TEST_F(Radio, WhoIsSpottedIsToldOfSpotsThatStay) {
  terminal.Receive(std::string(kSpot20) + "DX de I4LCK: 14195.0 VP8ORK\n");
  EXPECT_EQ(terminal.Spotted, Texts{"VP8ORK"});
  OnlyBand("  2 m");
  terminal.Receive(std::string(kSpot20) + std::string(kSpot2));
  EXPECT_EQ(terminal.Spotted, (Texts{"VP8ORK", "DL1ABC"}));
}

TEST_F(Telnet, WhoIsSpottedIsToldOfSpotsThatStay) {
  OnlyBand("  2 m");
  terminal.Receive(std::string(kSpot20) + std::string(kSpot2));
  EXPECT_EQ(terminal.Spotted, Texts{"DL1ABC"});
}

}  // namespace
}  // namespace brenvo::links
