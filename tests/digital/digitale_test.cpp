#include "digital/digitale.h"

#include "tests/digital/digital_station.h"

namespace brenvo::digital {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::SizeIs;

class TheWindow : public DigitalStation {
 protected:
  TheWindow() {
    Event([&] { programs->WindowOpened(false); });
    session.SaveSetting("Digitale", "Colora", "N");
    window = &Open<Digitale>("Digitale");
    Send(Status{.dial = 14074000, .mode = "FT8", .deCall = "IK3ABC"});
  }
  void Hear(std::string message, std::uint32_t time) {
    Send(Decode{.time = time * 1000, .mode = "~", .message = std::move(message)});
  }
  Texts Calls() {
    Texts calls;
    for (std::int64_t row = 1; row < window->Decodifiche.Rows(); ++row) {
      calls.push_back(window->Decodifiche.Cell(row, 6));
    }
    return calls;
  }
  Digitale* window = nullptr;
};

TEST_F(TheWindow, ListensWhileItIsOpen) {
  EXPECT_TRUE(machine.Udp().IsOpen("WSJTX"));
  Event([&] { session.Windows.Unload(*window); });
  EXPECT_FALSE(machine.Udp().IsOpen("WSJTX"));
}

TEST_F(TheWindow, ShowsTheNewestFirstWithItsNeedAndColour) {
  Hear("CQ K1ABC FN42", 1);
  Hear("CQ JA1ABC PM95", 2);
  EXPECT_THAT(Calls(), ElementsAre("JA1ABC", "K1ABC"));
  EXPECT_EQ(window->Decodifiche.Cell(1, 7), "Country");
  EXPECT_EQ(window->Decodifiche.BackColour(1, 0), Programs::ColourOf(0));
  Hear("TNX BOB 73", 3);
  EXPECT_EQ(window->Decodifiche.BackColour(1, 0), base::kWhite);
}

TEST_F(TheWindow, ADelayOfNothingHasNoSign) {
  Decode decode = MessageOf<Decode>("02-decode-cq");
  decode.dtBits = std::uint64_t{1} << 63;
  Send(decode);
  decode.df = 1;
  decode.dtBits = ~std::uint64_t{0};  // no number at all
  Send(decode);
  EXPECT_EQ(window->Decodifiche.Cell(2, 2), "0.0");
  EXPECT_EQ(window->Decodifiche.Cell(1, 2), "");
}

TEST_F(TheWindow, TheMarkStaysOnItsDecodeWhileNewOnesCome) {
  Hear("CQ K1ABC FN42", 1);
  Hear("CQ JA1ABC PM95", 2);
  Event([&] { window->Decodifiche.ClickCell(2, 5); });
  Hear("CQ VK3ABC QF22", 3);
  EXPECT_EQ(window->Decodifiche.Row(), 3);
  EXPECT_EQ(window->Decodifiche.Cell(3, 6), "K1ABC");
}

TEST_F(TheWindow, TheMarkOnTheNewestStaysOnTop) {
  Hear("CQ K1ABC FN42", 1);
  Hear("CQ JA1ABC PM95", 2);
  EXPECT_EQ(window->Decodifiche.Row(), 1);
}

TEST_F(TheWindow, ItsBoxesNarrowWhatIsThereAndWhatComes) {
  Hear("CQ K1ABC FN42", 1);
  Hear("IK3ABC JA1ABC -10", 2);
  Event([&] { window->SoloCQ.SetState(forms::CheckState::kOn); });
  Hear("CQ VK3ABC QF22", 3);
  Hear("K1ABC DL1ABC -10", 4);
  EXPECT_THAT(Calls(), ElementsAre("VK3ABC", "K1ABC"));
  Event([&] { window->SoloCQ.SetState(forms::CheckState::kOff); });
  Event([&] { window->SoloMiei.SetState(forms::CheckState::kOn); });
  EXPECT_THAT(Calls(), ElementsAre("JA1ABC"));
}

TEST_F(TheWindow, ADoubleClickAnswersTheRightDecodeUnderAFilter) {
  Hear("CQ K1ABC FN42", 1);
  Hear("IK3ABC JA1ABC -10", 2);
  Event([&] { window->SoloCQ.SetState(forms::CheckState::kOn); });
  machine.TakeLines();
  Event([&] { window->Decodifiche.DoubleClickCell(1, 5); });
  EXPECT_THAT(
      Lines(),
      Contains(Line(ReplyTo(Decode{.time = 1000, .mode = "~", .message = "CQ K1ABC FN42"}))));
  EXPECT_THAT(window->Avviso.Text(), HasSubstr("Risposto a K1ABC"));
}

TEST_F(TheWindow, OpenedAgainItShowsWhatWasHeard) {
  session.SaveSetting("Digitale", "Ascolta", "Y");
  Hear("CQ K1ABC FN42", 1);
  Event([&] { session.Windows.Unload(*window); });
  Hear("CQ JA1ABC PM95", 2);
  window = &Open<Digitale>("Digitale");
  EXPECT_THAT(Calls(), ElementsAre("JA1ABC", "K1ABC"));
}

TEST_F(TheWindow, KeepsNoMoreRowsThanThereAreDecodes) {
  for (std::uint32_t i = 0; i < Programs::kMostDecodes + 5; ++i) {
    if (i % 500 == 0) Advance(1000);
    Hear("CQ K1ABC FN42", i);
  }
  EXPECT_EQ(window->Decodifiche.Rows(), static_cast<std::int64_t>(Programs::kMostDecodes) + 1);
}

TEST_F(TheWindow, TellsWhatBecameOfAContact) {
  ReceiveVector("12-logged-adif");
  EXPECT_EQ(window->Avviso.Text(), "Registrato DL1ABC, 2 m Q65, Qso 1");
  EXPECT_FALSE(window->cmRiprova.Enabled());
}

}  // namespace
}  // namespace brenvo::digital
