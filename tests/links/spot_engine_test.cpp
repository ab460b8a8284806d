#include "links/spot_engine.h"

#include <gtest/gtest.h>

#include <stdexcept>

#include "base/text.h"
#include "tests/links/test_terminal.h"

namespace brenvo {
namespace {

using Texts = std::vector<std::string>;

constexpr std::string_view kSpot20 = "DX de I4LCK:     14195.0  VP8ORK   tnx 1423Z\r\n";
constexpr std::string_view kSpot2 = "DX de I4LCK:    144300.0  DL1ABC   tnx 1424Z\r\n";
constexpr std::string_view kSpotNowhere = "DX de I4LCK:     13000.0  VP8ORK   tnx 1425Z\r\n";
constexpr std::string_view kShown20 = "DX DE I4LCK:     14195.0  VP8ORK   TNX 1423Z\n";
constexpr std::string_view kShown2 = "DX DE I4LCK:    144300.0  DL1ABC   TNX 1424Z\n";

std::string Arrived(std::string_view line) {
  std::string text(line);
  std::erase(text, '\r');
  return text;
}

class Radio : public testing::Test {
 protected:
  void WatchDx() { terminal.cmMDX.Press(); }
  void OnlyBand(std::string_view band) { terminal.Banda.Pick(terminal.Entry(band)); }
  bool Ticked(std::string_view band) {
    return terminal.Banda.Entries()[static_cast<std::size_t>(terminal.Entry(band))].checked;
  }
  RecordingPlatform platform;
  TestTerminal terminal{platform.Host(), kRadioPolicy};
};

class Telnet : public testing::Test {
 protected:
  void OnlyBand(std::string_view band) { terminal.Banda.Pick(terminal.Entry(band)); }
  RecordingPlatform platform;
  TestTerminal terminal{platform.Host(), kTelnetPolicy};
};

// Characters.

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

// The monitor.

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

// Repeats.

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

// The size of the text area.

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

// Display.

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

// Bands.

TEST_F(Radio, ASpotOnNoBandStaysWithoutASoundUnderTutte) {
  WatchDx();
  terminal.Receive(kSpotNowhere);
  EXPECT_EQ(terminal.Asked, std::vector<Khz>{Khz(13000)});
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
  terminal.Receive(std::string(kSpot20) + std::string(kSpot2));
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

// Announcement.

TEST_F(Radio, SpellsTheSpotterThenAPauseThenTheCall) {
  terminal.cmAutoSpelling.Press();
  terminal.Receive("DX de I4L:14195.0  ZL9   tnx 1423Z\r\n");
  EXPECT_EQ(terminal.Heard, (Texts{"\\20m.wav", "\\I.wav", "\\4.wav", "\\L.wav", "\\:.wav",
                                   "\\pause.wav", "\\Z.wav", "\\L.wav", "\\9.wav"}));
}

TEST_F(Radio, ASpotterWithANodeNumberIsSpelledUpToTheDash) {
  terminal.cmAutoSpelling.Press();
  terminal.Receive("DX de I4L-1:    14195.0  ZL9   tnx 1423Z\r\n");
  EXPECT_EQ(terminal.Heard, (Texts{"\\20m.wav", "\\I.wav", "\\4.wav", "\\L.wav", "\\pause.wav",
                                   "\\Z.wav", "\\L.wav", "\\9.wav"}));
}

TEST_F(Radio, APortableCallPlaysTheStrokeBetweenItsParts) {
  terminal.cmAutoSpelling.Press();
  terminal.Receive("DX de I4-1: 14195.0  Z9/P   tnx 1423Z\r\n");
  EXPECT_EQ(terminal.Heard, (Texts{"\\20m.wav", "\\I.wav", "\\4.wav", "\\pause.wav", "\\Z.wav",
                                   "\\9.wav", "\\stroke.wav", "\\P.wav"}));
}

TEST_F(Radio, ACallThatIsTheLastWordIsNeitherSpelledNorChecked) {
  terminal.cmAutoSpelling.Press();
  terminal.cmAutoCheck.Press();
  terminal.Receive("DX de I4-1: 14195.0  ZL9HR\r\n");
  EXPECT_EQ(terminal.Heard, (Texts{"\\20m.wav", "\\I.wav", "\\4.wav", "\\pause.wav"}));
  EXPECT_TRUE(terminal.Checked.empty());
}

TEST_F(Radio, WithoutSpellingOnlyTheBandIsHeard) {
  terminal.Receive(kSpot20);
  EXPECT_EQ(terminal.Heard, Texts{"\\20m.wav"});
}

// Check.

TEST_F(Radio, ChecksASpotThatItsBandTookOffTheScreen) {
  terminal.cmAutoCheck.Press();
  OnlyBand("  2 m");
  terminal.Receive(kSpot20);
  EXPECT_EQ(terminal.Received.Text(), "");
  EXPECT_EQ(terminal.Checked, Texts{"VP8ORK"});
}

TEST_F(Radio, ChecksASpotThatNoBandHolds) {
  terminal.cmAutoCheck.Press();
  terminal.Receive(kSpotNowhere);
  OnlyBand("  2 m");
  terminal.Receive(kSpotNowhere);
  EXPECT_EQ(terminal.Checked, (Texts{"VP8ORK", "VP8ORK"}));
}

TEST_F(Radio, ChecksBehindTheAnnouncement) {
  terminal.cmAutoCheck.Press();
  std::size_t heardBefore = 0;
  SpotEngine engine(kRadioPolicy, terminal.Received,
                    {terminal.Banda, terminal.cmAutoSpelling, terminal.cmAutoCheck, &terminal.cmMDX,
                     &terminal.cmMAnnounce, &terminal.cmMTutto},
                    {.FindBand = [&](Khz) { return terminal.Bands.front().first; },
                     .PlayWave = [&](std::string_view name) { terminal.Heard.emplace_back(name); },
                     .ShowCheck = [&](std::string_view) { heardBefore = terminal.Heard.size(); },
                     .Beep = nullptr,
                     .TakeWaiting = nullptr});
  for (char c : kSpot20) engine.FeedCharacter(static_cast<unsigned char>(c));
  EXPECT_EQ(heardBefore, 1u);
}

TEST_F(Telnet, ChecksASpotWhoseBandPassesAndNoOther) {
  terminal.cmAutoCheck.Press();
  terminal.Receive(kSpotNowhere);
  OnlyBand("  2 m");
  terminal.Receive(std::string(kSpot20) + std::string(kSpotNowhere) + std::string(kSpot2));
  EXPECT_EQ(terminal.Checked, Texts{"DL1ABC"});
}

TEST_F(Radio, WithoutTheMarkNothingIsChecked) {
  terminal.Receive(kSpot20);
  EXPECT_TRUE(terminal.Checked.empty());
}

// Marks.

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

// Failures and floods.

TEST_F(Radio, AFailedBandQueryLosesItsLineAndNoOther) {
  WatchDx();
  int asked = 0;
  SpotEngine engine(kRadioPolicy, terminal.Received,
                    {terminal.Banda, terminal.cmAutoSpelling, terminal.cmAutoCheck, &terminal.cmMDX,
                     &terminal.cmMAnnounce, &terminal.cmMTutto},
                    {.FindBand = [&](Khz) -> std::optional<SpotBand> {
                       if (++asked == 1) throw std::runtime_error("no");
                       return terminal.Bands.front().first;
                     },
                     .PlayWave = [](std::string_view) {},
                     .ShowCheck = [](std::string_view) {},
                     .Beep = nullptr,
                     .TakeWaiting = nullptr});
  int failures = 0;
  for (char c : std::string(kSpot20) + std::string(kSpot2)) {
    try {
      engine.FeedCharacter(static_cast<unsigned char>(c));
    } catch (const std::runtime_error&) {
      ++failures;
    }
  }
  EXPECT_EQ(failures, 1);
  EXPECT_EQ(asked, 2);
  EXPECT_EQ(engine.RxLine(), "");
}

TEST_F(Radio, ALineWithoutAnEndStaysBounded) {
  for (const bool everything : {true, false}) {
    if (!everything) WatchDx();
    const std::string block(1 << 16, 'x');
    for (int i = 0; i < 64; ++i) terminal.Receive(block);
    EXPECT_EQ(terminal.Engine.RxLine().size(), SpotEngine::kLongestLine);
    EXPECT_LE(terminal.Received.Length(), 32001u);
    terminal.Receive("\n");
    EXPECT_EQ(terminal.Engine.RxLine(), "");
  }
}

TEST_F(Telnet, ALineWithoutAnEndStaysBounded) {
  const std::string block(1 << 16, 'x');
  for (int i = 0; i < 64; ++i) terminal.Receive(block);
  EXPECT_EQ(terminal.Engine.RxLine().size(), SpotEngine::kLongestLine);
  EXPECT_EQ(terminal.Received.Length(), 0u);
  terminal.Receive("\nhello\n");
  EXPECT_EQ(Right(terminal.Received.Text(), 7), "\nhello\n");
}

TEST_F(Radio, ManyLongLinesStayBounded) {
  WatchDx();
  for (int i = 0; i < 40; ++i) {
    terminal.Receive("DX de " + std::to_string(i) + std::string(30000, 'x') + "\n");
    EXPECT_LE(terminal.Received.Length(), 132001u);
  }
}

// Each line in turn is seen at the end of the text before the next one comes.
TEST_F(Radio, TenThousandLinesAtOnceAllComeUp) {
  WatchDx();
  std::string burst;
  for (int i = 0; i < 10000; ++i) {
    burst += "DX de I4LCK:     14195.0  Z" + std::to_string(i) + "A   tnx\r\n";
  }
  int shown = 0;
  terminal.Received.Edited = [&](const RichText::Edit& edit) {
    if (!edit.inserted.empty()) {
      EXPECT_EQ(edit.inserted.front().text,
                "DX DE I4LCK:     14195.0  Z" + std::to_string(shown) + "A   TNX\n");
      ++shown;
    }
    EXPECT_LE(terminal.Received.Length(), 32100u);
  };
  terminal.Receive(burst);
  EXPECT_EQ(shown, 10000);
  EXPECT_EQ(terminal.Heard.size(), 10000u);
}

TEST_F(Telnet, TenThousandLinesAtOnceAllComeUp) {
  terminal.cmAutoCheck.Press();
  std::string burst;
  for (int i = 0; i < 10000; ++i) {
    burst += "DX de I4LCK:     14195.0  Z" + std::to_string(i) + "A   tnx\r\n";
  }
  int shown = 0;
  terminal.Received.Edited = [&](const RichText::Edit& edit) {
    if (!edit.inserted.empty()) ++shown;
    EXPECT_LE(terminal.Received.Length(), 32100u);
  };
  terminal.Receive(burst);
  EXPECT_EQ(shown, 10000);
  EXPECT_EQ(terminal.Checked.size(), 10000u);
  EXPECT_EQ(terminal.Checked.back(), "Z9999A");
}

TEST_F(Radio, ControlBytesAndBytesThatAreNoTextDoNoHarm) {
  std::string bytes;
  for (int byte = 0; byte < 256; ++byte) {
    if (byte != '\n' && byte != '\r' && byte != 7 && byte != '!') bytes += static_cast<char>(byte);
  }
  terminal.Receive("DX de " + bytes + ": 14195.0 " + bytes + " cq\n");
  EXPECT_EQ(Len(terminal.Received.Text()), 6 + 252 + 2 + 8 + 252 + 3 + 1);
}

}  // namespace
}  // namespace brenvo
