// A new contact and the transceiver.
#include <gmock/gmock.h>

#include "base/number.h"
#include "tests/log/log_station.h"

namespace brenvo::log {
namespace {

class LogRigTest : public LogStation {
 protected:
  LogRigTest() {
    Exec("update UserRTX set RST='599',Potenza=80 where Banda=' 20 m'");
    log = &OpenLog();
  }
  void RigAt(double mhz, std::string banda, std::string modo) {
    Event([&] {
      session.Rig.Put(
          core::RigNow{base::ToHz(base::Mhz(mhz)), std::move(banda), std::move(modo), {}});
    });
  }
  void New() { Press(*log, "cmClear"); }
  std::string Link() {
    return log->Frequenza.Text() + "|" + log->Banda.Text() + "|" + log->Modo.Text();
  }

  LogForm* log = nullptr;
};

TEST_F(LogRigTest, ANewContactTakesFrequencyBandAndModeWithTheBandsReportsAndPower) {
  RigAt(14.2505, " 20 m", "CW");
  New();
  EXPECT_EQ(Link(), "14.2505| 20 m|CW");
  EXPECT_EQ(log->QrkDato.Text(), "599");
  EXPECT_EQ(base::Val(log->Potenza.Text()), 80);
  RigAt(7.05, " 40 m", "SSB");
  EXPECT_EQ(Link(), "7.050| 40 m|SSB");
}

TEST_F(LogRigTest, WhatWasTypedIsNeverWrittenOver) {
  RigAt(14.25, " 20 m", "CW");
  const auto touch = [&](const std::function<void()>& type) {
    New();
    Event(type);
    const std::string before = Link();
    RigAt(7.05, " 40 m", "SSB");
    EXPECT_EQ(Link(), before);
    RigAt(14.25, " 20 m", "CW");
  };
  touch([&] { log->CallQso.SetText("D"); });
  touch([&] { log->Frequenza.SetText("14.300"); });
  touch([&] { log->Modo.SetText("FT8"); });
  touch([&] { log->Banda.SetText(" 10 m"); });
  touch([&] { log->Note.SetText("x"); });
  touch([&] { log->QslDaInviare.SetOn(true); });
}

TEST_F(LogRigTest, AContactThatIsShownStaysAsItWasStored) {
  New();
  Type(log->CallQso, "DL1ABC");
  Pick(log->Banda, "  2 m");
  Press(*log, "cmInsert");
  const std::string stored = Link();
  RigAt(7.05, " 40 m", "SSB");
  EXPECT_EQ(Link(), stored);
  Press(*log, "cmLast");
  const std::string shown = Link();
  RigAt(7.06, " 40 m", "SSB");
  EXPECT_EQ(Link(), shown);
}

TEST_F(LogRigTest, AModeThatTheTransceiverDoesNotTellStaysTheOneOfTheBand) {
  Exec("update UserRTX set Modo='FT8' where Banda=' 20 m'");
  RigAt(14.074, " 20 m", "");
  New();
  EXPECT_EQ(Link(), "14.074| 20 m|FT8");
}

TEST_F(LogRigTest, WithoutTheChoiceOrTheTransceiverANewContactIsAsEver) {
  New();
  EXPECT_EQ(Link(), "0||");
  EXPECT_EQ(session.Choices.Set(core::choice::kRigInLog, "No"), "");
  RigAt(7.05, " 40 m", "SSB");
  New();
  EXPECT_EQ(Link(), "0||");
}

TEST_F(LogRigTest, AKeySendsTheTransceiverWhereTheContactIs) {
  std::string tuned;
  session.Rig.OnTune = [&](base::Hz frequency, std::string_view modo) {
    tuned = base::PlainNumber(frequency.Value()) + " " + std::string(modo);
    return std::string("va");
  };
  New();
  Press(*log, "cmRtx");
  EXPECT_EQ(log->Avviso.Text(), "Manca la frequenza per l'rtx");
  EXPECT_EQ(tuned, "");
  Event([&] { log->Frequenza.SetText("144.3"); });
  Pick(log->Modo, "SSB");
  Press(*log, "cmRtx");
  EXPECT_EQ(tuned, "144300000 SSB");
  EXPECT_EQ(log->Avviso.Text(), "va");
  session.Rig.OnTune = nullptr;
  Press(*log, "cmRtx");
  EXPECT_EQ(log->Avviso.Text(), "Nessun rtx collegato: Comunication > Rtx");
}

}  // namespace
}  // namespace brenvo::log
