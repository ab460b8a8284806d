#include <gtest/gtest.h>

#include "tests/links/spot_terminals.h"

namespace brenvo::links {
namespace {

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
                    {.FindBand = [&](base::Khz) { return terminal.Bands.front().first; },
                     .PlayWave = [&](std::string_view name) { terminal.Heard.emplace_back(name); },
                     .ShowCheck = [&](std::string_view) { heardBefore = terminal.Heard.size(); },
                     .Spotted = [](std::string_view) {},
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

}  // namespace
}  // namespace brenvo::links
