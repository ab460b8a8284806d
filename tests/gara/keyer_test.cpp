#include "gara/keyer.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>

#include "tests/gara/gara_station.h"

namespace brenvo::gara {
namespace {

using ::testing::Each;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::StartsWith;

std::string HexOf(std::string_view bytes) {
  std::string hex;
  for (const char c : bytes) hex += fmt::format("{:02X}", static_cast<unsigned char>(c));
  return hex;
}
std::string ToDaemon(std::string_view bytes) {
  return "datagram CW 127.0.0.1:6789 " + HexOf(bytes);
}

class KeyerStation : public GaraStation {
 protected:
  void Enable() {
    Event([&] { EXPECT_EQ(session.Choices.Set(core::choice::kContestSends, "Sì"), ""); });
  }
  void InCw() {
    Begin("IARU Region 1 145 MHz", "07/09/2024");
    Event([&] { window->Modo.SetText("CW"); });
    Lines();
  }
  void FromDaemon(std::string_view bytes) {
    machine.Udp().Receive("CW", {"127.0.0.1", 6789}, bytes);
  }
};

TEST(KeyText, WordsInBracesAreFilledIn) {
  const KeyWords words{"IK4ABC", "DK5AB", "599", "012", "JN54MN", "FC"};
  EXPECT_EQ(FillKeyText("{CALL} {rst} {NR} {NR} {LOC} {EXCH} de {MYCALL} {FOO}", words),
            "DK5AB 599 012 012 JN54MN FC DE IK4ABC {FOO}");
  EXPECT_EQ(FillKeyText("", words), "");
}

TEST(KeyText, NothingThatIsNoSignOfCwReachesTheDaemon) {
  EXPECT_EQ(CwText("cq \x1B"
                   "5 test\r\n+-~^ è?"),
            "CQ 5 TEST E?");
  EXPECT_LE(CwText(std::string(5000, 'A')).size(), 200u);
}

TEST(KeyText, ParisTakesItsTime) {
  // Fifty dots of PARIS and the pause behind it, at so many words a minute.
  EXPECT_NEAR(CwMilliseconds("PARIS ", 20), 3000, 1);
  EXPECT_NEAR(CwMilliseconds("PARIS PARIS ", 12), 10000, 1);
  EXPECT_EQ(CwMilliseconds("", 20), 0);
}

TEST_F(KeyerStation, NothingIsSentWithoutTransmissionEnabled) {
  InCw();
  EXPECT_FALSE(window->cmTasto1.Visible());
  EXPECT_EQ(window->cmTasto1.Shortcut(), "");
  EXPECT_EQ(window->cmHelp.Shortcut(), "F1");
  Event([&] { window->cmTasto1.Press(); });
  EXPECT_EQ(window->Avviso.Text(), "In Preferenze la trasmissione non è abilitata");
  EXPECT_THAT(Lines(), IsEmpty());
}

TEST_F(KeyerStation, WithTransmissionTheFunctionKeysSendAndShiftDoesWhatTheyDid) {
  Enable();
  EXPECT_TRUE(window->cmTasto1.Visible());
  EXPECT_EQ(window->cmTasto1.Shortcut(), "F1");
  EXPECT_EQ(window->cmTasto8.Shortcut(), "F8");
  EXPECT_EQ(window->cmHelp.Shortcut(), "Shift+F1");
  EXPECT_EQ(window->cmInserisci.Shortcut(), "Shift+F2");
  EXPECT_EQ(window->cmSvuota.Shortcut(), "Shift+F5");
  EXPECT_EQ(window->cmTogliFiltri.Shortcut(), "Shift+F8");
  EXPECT_EQ(window->cmVaiAlQso.Shortcut(), "F9");
  Event([&] { EXPECT_EQ(session.Choices.Set(core::choice::kContestSends, "No"), ""); });
  EXPECT_EQ(window->cmHelp.Shortcut(), "F1");
  EXPECT_EQ(window->cmTasto1.Shortcut(), "");
  EXPECT_FALSE(window->cmTasto1.Visible());
}

TEST_F(KeyerStation, AKeySendsItsTextThroughTheDaemon) {
  Enable();
  InCw();
  Type(window->Call, "dk5ab");
  Lines();
  Press(*window, "cmTasto2");
  EXPECT_THAT(Lines(), ElementsAre("listen CW \"127.0.0.1:0\"",
                                   ToDaemon("\x1B"
                                            "224"),
                                   ToDaemon("\x1Bh"), ToDaemon("DK5AB 599 001 001 JN54MN")));
  EXPECT_EQ(window->Avviso.Text(), "Si manda DK5AB 599 001 001 JN54MN");
}

TEST_F(KeyerStation, EscapeFirstStopsWhatIsSentThenEmptiesTheEntryAndNeverCloses) {
  Enable();
  InCw();
  Type(window->Call, "dk5ab");
  Press(*window, "cmTasto1");
  Lines();
  Event([&] { window->CancelCommand->Press(); });
  EXPECT_THAT(Lines(), ElementsAre(ToDaemon("\x1B"
                                            "4"),
                                   ToDaemon("\x1B"
                                            "a0")));
  EXPECT_EQ(window->Call.Text(), "DK5AB");
  EXPECT_EQ(window->Avviso.Text(), "Trasmissione fermata");
  Event([&] { window->CancelCommand->Press(); });
  EXPECT_EQ(window->Call.Text(), "");
  EXPECT_TRUE(window->Visible());
  Press(*window, "cmRimetti");
  EXPECT_EQ(window->Call.Text(), "DK5AB");
}

TEST_F(KeyerStation, WhatTheDaemonHasEndedIsNotStoppedAnyMore) {
  Enable();
  InCw();
  Press(*window, "cmTasto1");
  FromDaemon("h\r\n");
  Lines();
  machine.Advance(300000);
  EXPECT_THAT(Lines(), IsEmpty());
}

TEST_F(KeyerStation, AStrangersWordDoesNotEndTheGuard) {
  Enable();
  InCw();
  Press(*window, "cmTasto1");
  machine.Udp().Receive("CW", {"127.0.0.1", 5555}, "h\r\n");
  Lines();
  machine.Advance(30000);
  EXPECT_THAT(Lines(), ElementsAre(ToDaemon("\x1B"
                                            "4"),
                                   ToDaemon("\x1B"
                                            "a0")));
}

TEST_F(KeyerStation, NoTransmissionIsLongerThanItsLimit) {
  Enable();
  Event([&] { EXPECT_EQ(session.Choices.Set(core::choice::kSendingLimit, "3"), ""); });
  InCw();
  Press(*window, "cmTasto1");
  Lines();
  machine.Advance(2900);
  EXPECT_THAT(Lines(), IsEmpty());
  machine.Advance(200);
  EXPECT_THAT(Lines(), ElementsAre(ToDaemon("\x1B"
                                            "4"),
                                   ToDaemon("\x1B"
                                            "a0")));
  EXPECT_EQ(window->Avviso.Text(), "Trasmissione fermata dopo 3 secondi");
}

TEST_F(KeyerStation, ClosingTheWindowStopsWhatIsSent) {
  Enable();
  InCw();
  Press(*window, "cmTasto1");
  Lines();
  Event([&] { window->Close(); });
  EXPECT_THAT(Lines(), ::testing::Contains(ToDaemon("\x1B"
                                                    "4")));
}

TEST_F(KeyerStation, InPhoneAKeyPlaysItsRecording) {
  std::ofstream(directory.Path() / "cq.wav") << "RIFF";
  Enable();
  Begin("IARU Region 1 145 MHz", "07/09/2024");
  Lines();
  Press(*window, "cmTasto1");
  EXPECT_THAT(Lines(), ElementsAre("wave-start \"cq.wav\""));
  Press(*window, "cmTasto3");
  EXPECT_EQ(window->Avviso.Text(), "Il file grazie.wav non c'è");
  EXPECT_THAT(Lines(), ElementsAre("wave-close"));
  Press(*window, "cmTasto5");
  EXPECT_EQ(window->Avviso.Text(), "Il tasto F5 non ha un file di suono");
  Press(*window, "cmTasto1");
  Lines();
  machine.Advance(30000);
  EXPECT_THAT(Lines(), ElementsAre("wave-close"));
}

TEST_F(KeyerStation, APortThatCannotBeOpenedIsTold) {
  Enable();
  InCw();
  machine.Udp().FailNext("CW");
  Press(*window, "cmTasto1");
  EXPECT_THAT(window->Avviso.Text(), StartsWith("cwdaemon non si raggiunge"));
}

}  // namespace
}  // namespace brenvo::gara
