// What saves keys in a new contact, each by its choice, and what is said of what was stored.
#include <gmock/gmock.h>

#include "core/log_time.h"
#include "core/preferences.h"
#include "log/log_form.h"
#include "tests/support/station.h"

namespace brenvo::log {
namespace {

using Texts = std::vector<std::string>;
using forms::Weight;

class LogKeysTest : public StationTest {
 protected:
  LogKeysTest() {
    Know<LogForm>("LogForm");
    // The band's own row of the profile: what a contact on it begins with.
    Exec("update UserRTX set Frequenza=144.3,RST='59',Modo='SSB',Potenza=50 where Banda='  2 m'");
    log = &Open<LogForm>("LogForm");
  }
  void Choose(const core::Choice& choice) { EXPECT_EQ(session.Choices.Set(choice, "Sì"), ""); }
  void New() { Press(*log, "cmClear"); }
  void Type(forms::TextField& field, std::string_view text) {
    Event([&] { field.SetText(text); });
  }
  void Enter() {
    Event([&] { log->DefaultCommand->Press(); });
  }
  // Where the window has moved the focus to last.
  std::string Focused() {
    std::string last;
    for (const std::string& line : machine.TakeLines()) {
      if (line.starts_with("focus ")) last = line.substr(6);
    }
    return last;
  }

  LogForm* log = nullptr;
};

TEST_F(LogKeysTest, WhatWasStoredIsSaidBelowThePanels) {
  New();
  Type(log->CallQso, "DL1ABC");
  Type(log->Banda, "  2 m");
  Press(*log, "cmInsert");
  EXPECT_EQ(log->Avviso.Text(), "Qso inserito: DL1ABC  2 m  SSB");
  Type(log->Modo, "CW");
  Press(*log, "cmUpdate");
  EXPECT_EQ(log->Avviso.Text(), "Qso aggiornato: DL1ABC  2 m  CW");
  machine.Messages().QueueAnswer(true);
  Press(*log, "cmDelete");
  EXPECT_EQ(log->Avviso.Text(), "Qso cancellato: DL1ABC  2 m  CW");
  Lines();
}

TEST_F(LogKeysTest, WhatIsRefusedInSilenceStaysSilent) {
  New();
  Press(*log, "cmInsert");
  EXPECT_EQ(log->Avviso.Text(), "");
}

TEST_F(LogKeysTest, WithoutAnyChoiceANewContactBeginsEmptyAndEnterStoresNothing) {
  New();
  Type(log->CallQso, "DL1ABC");
  Type(log->Banda, "  2 m");
  Press(*log, "cmInsert");
  New();
  EXPECT_EQ(log->Banda.Text() + log->Modo.Text() + log->QrkDato.Text(), "");
  EXPECT_EQ(log->Frequenza.Text(), "0");
  EXPECT_EQ(log->DefaultCommand, nullptr);
}

TEST_F(LogKeysTest, ANewContactKeepsBandModeFrequencyAndPowerButNotThePropagation) {
  Choose(core::choice::kKeepsLink);
  New();
  Type(log->CallQso, "DL1ABC");
  Type(log->Banda, "  2 m");
  Type(log->Frequenza, "144.250");
  Type(log->Propagazione, "TEP");
  Press(*log, "cmInsert");
  New();
  EXPECT_EQ(log->Banda.Text(), "  2 m");
  EXPECT_EQ(log->Modo.Text(), "SSB");
  EXPECT_EQ(log->Frequenza.Text(), "144.250");
  EXPECT_EQ(log->Potenza.Text(), " 50");
  EXPECT_EQ(log->Propagazione.Text(), "");
  EXPECT_EQ(log->CallQso.Text(), "");
  // The band is the one that was acted on: chosen again it overwrites nothing.
  Event([&] { log->OnBandaChange(); });
  EXPECT_EQ(log->Frequenza.Text(), "144.250");
}

TEST_F(LogKeysTest, ReportsFollowTheModeAndTheProfile) {
  Choose(core::choice::kReportsByMode);
  const auto reports = [&](std::string_view mode) {
    Type(log->Modo, mode);
    EXPECT_EQ(log->QrkDato.Text(), log->QrkRicevuto.Text()) << mode;
    return log->QrkDato.Text();
  };
  Exec("update UserRTX set RST='57' where Banda='  2 m'");
  New();
  Type(log->Banda, "  2 m");
  EXPECT_EQ(reports("CW"), "599");
  EXPECT_EQ(reports("FM"), "59");
  EXPECT_EQ(reports("SSB"), "57");
  EXPECT_EQ(reports("FT8"), "");
  EXPECT_EQ(reports("PSK31"), "599");
}

TEST_F(LogKeysTest, TheReportsOfAContactOnTheScreenStayWithAnotherMode) {
  Choose(core::choice::kReportsByMode);
  New();
  Type(log->CallQso, "DL1ABC");
  Type(log->QrkDato, "55");
  Press(*log, "cmInsert");
  Type(log->Modo, "CW");
  EXPECT_EQ(log->QrkDato.Text(), "55");
}

TEST_F(LogKeysTest, TheTimeIsThatOfTheFirstCharacterAndTheEndThatOfTheStore) {
  Choose(core::choice::kTimesOfQso);
  New();
  machine.SetNow(base::DateTime::Of(2001, 2, 3, 5, 0, 10));
  Type(log->CallQso, "D");
  EXPECT_EQ(log->Qtr.Text(), "05:00");
  machine.SetNow(base::DateTime::Of(2001, 2, 3, 5, 4, 30));
  Type(log->CallQso, "DL1ABC");
  EXPECT_EQ(log->Qtr.Text(), "05:00");
  Press(*log, "cmInsert");
  EXPECT_EQ(Rows("select DataQso from Log"), Texts{"03/02/2001 05:00:00"});
  EXPECT_THAT(Rows("select Valore from LogAdif where QsoNr=1 order by Campo"),
              testing::ElementsAre("20010203", "050430"));
}

TEST_F(LogKeysTest, TheEndIsKeptInUtcWhateverTimeTheLogIsKeptIn) {
  core::StoreLogTime(session, core::LogTime::kLocal);
  EXPECT_EQ(session.Choices.Set(core::choice::kZone, "Europe/Rome"), "");
  Choose(core::choice::kTimesOfQso);
  New();
  Type(log->CallQso, "DL1ABC");
  Press(*log, "cmInsert");
  const base::DateTime utc = core::LocalTime(session).ToUtc(session.Now());
  EXPECT_THAT(Rows("select Valore from LogAdif where Campo='TIME_OFF'"),
              testing::ElementsAre(fmt::format("{:02}0506", utc.Hour())));
}

TEST_F(LogKeysTest, AContactWhoseTimeIsTypedHasNoTimeOfEnd) {
  Choose(core::choice::kTimesOfQso);
  New();
  Type(log->CallQso, "DL1ABC");
  log->Qtr.SetText("01:30");
  Press(*log, "cmInsert");
  EXPECT_EQ(Rows("select DataQso from Log"), Texts{"03/02/2001 01:30:00"});
  EXPECT_EQ(Rows("select Campo from LogAdif"), Texts{});
}

TEST_F(LogKeysTest, EnterGoesToWhatIsMissingThenStoresAndBeginsANewContact) {
  Choose(core::choice::kEnterStores);
  New();
  Enter();
  EXPECT_EQ(Focused(), "LogForm.CallQso");
  EXPECT_EQ(log->Avviso.Text(), "Manca: Call");
  Type(log->CallQso, "DL1ABC");
  Enter();
  EXPECT_EQ(Focused(), "LogForm.Banda");
  Type(log->Banda, "  2 m");
  Enter();
  EXPECT_EQ(Focused(), "LogForm.QrkRicevuto");
  Type(log->QrkRicevuto, "57");
  Enter();
  EXPECT_EQ(Focused(), "LogForm.Locator");
  EXPECT_EQ(Rows("select Call from Log"), Texts{});
  Type(log->Locator, "JO31AA");
  Enter();
  EXPECT_EQ(Rows("select Call,Locator from Log"), Texts{"DL1ABC|JO31AA"});
  EXPECT_EQ(log->Avviso.Text(), "Qso inserito: DL1ABC  2 m  SSB");
  EXPECT_EQ(log->CallQso.Text(), "");
  EXPECT_EQ(Focused(), "LogForm.CallQso");
}

TEST_F(LogKeysTest, EnterAgainLeavesOutWhatTheStationDidNotGiveButNeverTheCall) {
  Choose(core::choice::kEnterStores);
  New();
  Enter();
  Enter();
  EXPECT_EQ(log->Avviso.Text(), "Manca: Call");
  Type(log->CallQso, "DL1ABC");
  Type(log->Banda, "  2 m");
  Enter();  // to the report received
  Enter();  // there is none; to the locator
  EXPECT_EQ(Focused(), "LogForm.Locator");
  Enter();
  EXPECT_EQ(Rows("select Call from Log"), Texts{"DL1ABC"});
}

TEST_F(LogKeysTest, BelowFiftyMegahertzNoLocatorIsAskedFor) {
  Choose(core::choice::kEnterStores);
  Choose(core::choice::kReportsByMode);
  New();
  Type(log->CallQso, "DL1ABC");
  Type(log->Banda, " 20 m");
  Enter();
  EXPECT_EQ(Rows("select Call from Log"), Texts{"DL1ABC"});
}

TEST_F(LogKeysTest, MidnightIsATimeThatEnterAsksFor) {
  Choose(core::choice::kEnterStores);
  New();
  Type(log->CallQso, "DL1ABC");
  log->Qtr.SetText("00:00");
  Enter();
  EXPECT_EQ(Focused(), "LogForm.Qtr");
}

TEST_F(LogKeysTest, EnterOnAContactOfTheLogStoresNothing) {
  Choose(core::choice::kEnterStores);
  New();
  Type(log->CallQso, "DL1ABC");
  Press(*log, "cmInsert");
  Type(log->Qra, "HANS");
  Enter();
  EXPECT_EQ(Rows("select Qra from Log"), Texts{""});
  EXPECT_EQ(log->Avviso.Text(), "Invio registra un Qso nuovo: F5 lo comincia");
}

TEST_F(LogKeysTest, WithAllChoicesAKnownStationCostsItsCallAndOneKey) {
  for (const core::Choice* choice :
       {&core::choice::kKeepsLink, &core::choice::kReportsByMode, &core::choice::kStatusByBand,
        &core::choice::kTimesOfQso, &core::choice::kEnterStores}) {
    Choose(*choice);
  }
  New();
  Type(log->CallQso, "DL1ABC");
  Type(log->Banda, "  2 m");
  Type(log->Locator, "JO31AA");
  Enter();
  machine.SetNow(base::DateTime::Of(2001, 2, 3, 6, 0, 0));
  Type(log->CallQso, "DL1ABC");
  Enter();
  EXPECT_EQ(Rows("select Call,Banda,Modo,QrkDato,QrkRicevuto,Locator from Log order by QsoNr"),
            (Texts{"DL1ABC|  2 m|SSB|59|59|JO31AA", "DL1ABC|  2 m|SSB|59|59|JO31AA"}));
}

TEST_F(LogKeysTest, AStatusIsPaleWhileItSpeaksOfAnotherBand) {
  New();
  Type(log->CallQso, "DL1ABC");
  Type(log->Banda, "  2 m");
  Press(*log, "cmInsert");
  New();
  Type(log->CallQso, "DL1ABC");
  EXPECT_EQ(log->StatusBar1.Panel(2), "New Call");
  EXPECT_EQ(
      log->StatusBar1.Mark(2),
      (forms::PanelMark{Weight::kNew, true, "Nessuna banda scelta: vale per i Qso senza banda"}));
  Type(log->Banda, "  2 m");
  // As told: the word waits for the next keystroke in the call.
  EXPECT_EQ(log->StatusBar1.Panel(2), "New Call");
  Type(log->CallQso, "DL1ABCX");
  Type(log->CallQso, "DL1ABC");
  EXPECT_EQ(log->StatusBar1.Panel(2), "Call Worked");
  EXPECT_EQ(log->StatusBar1.Mark(2), (forms::PanelMark{Weight::kWorked, false, "Vale per 2 m"}));
  Type(log->Banda, " 20 m");
  EXPECT_EQ(log->StatusBar1.Panel(2), "Call Worked");
  EXPECT_EQ(log->StatusBar1.Mark(2),
            (forms::PanelMark{Weight::kWorked, true, "Vale per 2 m, non per 20 m"}));
}

TEST_F(LogKeysTest, ChosenTheStatusFollowsTheBand) {
  Choose(core::choice::kStatusByBand);
  New();
  Type(log->CallQso, "DL1ABC");
  Type(log->Banda, "  2 m");
  Press(*log, "cmInsert");
  New();
  Type(log->CallQso, "DL1ABC");
  Type(log->Banda, "  2 m");
  EXPECT_EQ(log->StatusBar1.Panel(2), "Call Worked");
  Type(log->Banda, " 20 m");
  EXPECT_EQ(log->StatusBar1.Panel(2), "New Call");
}

TEST_F(LogKeysTest, ALocatorThatIsNoneHasNoMark) {
  New();
  Type(log->Locator, "JO31AA");
  EXPECT_EQ(log->StatusBar1.Mark(4).weight, Weight::kNew);
  Type(log->Locator, "JO31A");
  EXPECT_EQ(log->StatusBar1.Mark(4), forms::PanelMark());
}

TEST_F(LogKeysTest, InALogInUtcTheTimeProposedMayBeUtc) {
  core::StoreLogTime(session, core::LogTime::kUtc);
  New();
  EXPECT_EQ(log->Qtr.Text(), "04:05");
  Choose(core::choice::kUtcInLog);
  const base::DateTime utc = machine.GetClock().UtcNow();
  New();
  EXPECT_EQ(log->Qtr.Text(), fmt::format("{:02}:{:02}", utc.Hour(), utc.Minute()));
  core::StoreLogTime(session, core::LogTime::kLocal);
  New();
  EXPECT_EQ(log->Qtr.Text(), "04:05");
}

}  // namespace
}  // namespace brenvo::log
