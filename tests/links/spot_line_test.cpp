#include "links/spot_line.h"

#include <gtest/gtest.h>

namespace brenvo::links {
namespace {

TEST(SpotLine, IsALineThatBeginsWithDxDe) {
  EXPECT_TRUE(BeginsAsSpot("DX DE I4LCK: 14195.0 VP8ORK"));
  EXPECT_TRUE(BeginsAsSpot("DX DE"));
  EXPECT_FALSE(BeginsAsSpot("DX D"));
  EXPECT_FALSE(BeginsAsSpot(" DX DE I4LCK: 14195.0 VP8ORK"));
  EXPECT_FALSE(BeginsAsSpot("dx de i4lck: 14195.0 vp8ork"));
}

TEST(SpotLine, IsCutAtTheFirstColonAndAtBlanks) {
  const auto spot = CutSpotLine("DX DE I4LCK:     14195.0  VP8ORK   QSL VIA: I2YDX  1423Z");
  ASSERT_TRUE(spot);
  EXPECT_EQ(spot->Spotter, "I4LCK:     ");
  EXPECT_EQ(spot->SpotFrequenza, base::Khz(14195.0));
  EXPECT_EQ(spot->SpotCall, "VP8ORK");
}

TEST(SpotLine, WithoutAColonIsNotCut) {
  EXPECT_FALSE(CutSpotLine("DX DE I4LCK 14195.0 VP8ORK"));
  EXPECT_FALSE(CutSpotLine(""));
}

TEST(SpotLine, WhoseFrequencyEndsItGivesOnlyItsFirstDigit) {
  EXPECT_EQ(CutSpotLine("DX DE I4LCK: 14195.0")->SpotFrequenza, base::Khz(1));
  EXPECT_EQ(CutSpotLine("DX DE I4LCK: 14195.0 ")->SpotFrequenza, base::Khz(14195));
}

TEST(SpotLine, WithoutANumberGivesFrequencyZero) {
  EXPECT_EQ(CutSpotLine("DX DE I4LCK: ABC VP8ORK CQ")->SpotFrequenza, base::Khz(0));
  EXPECT_EQ(CutSpotLine("DX DE I4LCK:")->SpotFrequenza, base::Khz(0));
}

TEST(SpotLine, ReadsTheFrequencyAsFarAsItLooksLikeANumber) {
  EXPECT_EQ(CutSpotLine("DX DE I4LCK: 14195.0KHZ VP8ORK CQ")->SpotFrequenza, base::Khz(14195));
  EXPECT_EQ(CutSpotLine("DX DE I4LCK: 14195,5 VP8ORK CQ")->SpotFrequenza, base::Khz(14195));
}

TEST(SpotLine, WhoseCallIsItsLastWordHasNoSpotCall) {
  EXPECT_FALSE(CutSpotLine("DX DE I4LCK: 14195.0 VP8ORK")->SpotCall);
  EXPECT_FALSE(CutSpotLine("DX DE I4LCK: 14195.0  ")->SpotCall);
  EXPECT_EQ(CutSpotLine("DX DE I4LCK: 14195.0 VP8ORK ")->SpotCall, "VP8ORK");
}

TEST(SpotLine, WithAFrequencyOfOneDigitTakesTheWordBehindTheCall) {
  EXPECT_EQ(CutSpotLine("DX DE I4LCK: 7 VP8ORK CQ DX")->SpotCall, "CQ");
}

TEST(SpotLine, KeepsTheNodeNumberWithTheSpotter) {
  EXPECT_EQ(CutSpotLine("DX DE EA5WU-#: 14034.1 DL5XJ CW")->Spotter, "EA5WU-#: ");
}

TEST(SpotLine, CountsCharactersAndNotBytes) {
  const auto spot = CutSpotLine("DX DEÉI4LCK: 14195.0 VP8ØRK CQ");
  EXPECT_EQ(spot->Spotter, "I4LCK: ");
  EXPECT_EQ(spot->SpotCall, "VP8ØRK");
  // A frequency of one character, be it of two bytes, is behind it at once.
  EXPECT_EQ(CutSpotLine("DX DE I4LCK: É VP8ORK CQ DX")->SpotCall, "CQ");
}

TEST(SpotLine, WithoutASpotterHasItsCallAllTheSame) {
  const auto spot = CutSpotLine("DX DE:14195.0 VP8ORK CQ");
  EXPECT_EQ(spot->Spotter, "");
  EXPECT_EQ(spot->SpotCall, "VP8ORK");
}

constexpr std::string_view kScreen =
    "hello\nDX de I4LCK:     14195.0  VP8ORK   ssb split up 5   1423Z\nprompt >\n"
    "DX de DL1ABC:     7040.0  JA3XYZ   tnx             1424Z\nlast\n";

TEST(SpotsOfAText, TheSpotIsTheOneThatTheCursorStandsIn) {
  for (const std::size_t place : {6, 20, 60}) {
    const auto found = FindSpot(kScreen, place);
    ASSERT_TRUE(found) << place;
    EXPECT_EQ(found->spot.SpotFrequenza, base::Khz(14195));
    EXPECT_EQ(found->modo, "SSB");
  }
}

TEST(SpotsOfAText, ElsewhereItIsTheLastOne) {
  for (const std::size_t place :
       {std::size_t{0}, std::size_t{70}, kScreen.size(), std::size_t{9999}}) {
    const auto found = FindSpot(kScreen, place);
    ASSERT_TRUE(found) << place;
    EXPECT_EQ(found->spot.SpotFrequenza, base::Khz(7040)) << place;
    EXPECT_EQ(found->modo, "");
  }
}

TEST(SpotsOfAText, ATextWithoutOneHasNone) {
  EXPECT_FALSE(FindSpot("", 0));
  EXPECT_FALSE(FindSpot("\n\n", 1));
  EXPECT_FALSE(FindSpot("DX de nobody\nà", 99));
}

}  // namespace
}  // namespace brenvo::links
