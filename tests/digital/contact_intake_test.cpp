#include "digital/contact_intake.h"

#include <fmt/format.h>

#include <sstream>

#include "adif/adif_import.h"
#include "core/log_time.h"
#include "digital/logged_contact.h"
#include "file/database_file.h"
#include "geo/locator.h"
#include "log/log_form.h"
#include "tests/digital/digital_station.h"

namespace brenvo::digital {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::SizeIs;

// The recorded contact of a real program: types 5 and 12, with letters beyond ASCII.
class Intake : public DigitalStation {
 protected:
  void ReceiveReal() {
    ReceiveVector("real-05-0");
    ReceiveVector("real-12-0");
  }
  // The record of type 12 alone, as a relay sends it.
  static std::string RealRecord() {
    const std::string adif = MessageOf<LoggedAdif>("real-12-0").adif;
    return adif.substr(adif.find("<EOH>") + 5);
  }
  std::filesystem::path WaitingFile() { return directory.Path() / ContactIntake::kWaitingFile; }
};

TEST_F(Intake, BothDatagramsOfAContactMakeOne) {
  ReceiveReal();
  Advance(ContactIntake::kHold);
  EXPECT_THAT(Contacts(), SizeIs(1));
  EXPECT_THAT(Rows("Select Qra,Note from Log"), ElementsAre("Niccolò|perché no"));
}

TEST_F(Intake, TheFirstDatagramAloneIsStoredAfterAMoment) {
  ReceiveVector("real-05-0");
  EXPECT_EQ(ContactCount(), 0);
  Advance(ContactIntake::kHold);
  EXPECT_EQ(ContactCount(), 1);
}

TEST_F(Intake, TheSecondAloneIsStoredAtOnceAndTheFirstAddsNone) {
  ReceiveVector("real-12-0");
  EXPECT_EQ(ContactCount(), 1);
  ReceiveVector("real-05-0");
  Advance(ContactIntake::kHold);
  EXPECT_EQ(ContactCount(), 1);
}

TEST_F(Intake, ARelayOfItAddsNone) {
  ReceiveReal();
  ReceiveAdif(RealRecord());
  ReceiveVector("real-12-0");
  EXPECT_EQ(ContactCount(), 1);
  EXPECT_THAT(programs->LastNews(), HasSubstr("è già nel log"));
}

TEST_F(Intake, AcrossARestartItIsStillKnown) {
  ReceiveReal();
  Start();
  ReceiveReal();
  ReceiveAdif(RealRecord());
  Advance(ContactIntake::kHold);
  EXPECT_EQ(ContactCount(), 1);
}

TEST_F(Intake, WhatTheOperatorHasCorrectedSinceIsStillTheSame) {
  ReceiveReal();
  Exec("update Log set Call='DL1ABD',DataQso='2001-01-01 10:00:00'");
  ReceiveAdif(RealRecord());
  EXPECT_THAT(Rows("Select Call from Log"), ElementsAre("DL1ABD"));
}

TEST_F(Intake, WhatTheOperatorHasDeletedDoesNotComeBack) {
  ReceiveReal();
  Event([&] {
    const auto rows = session.Db.OpenDynaset("select * from Log");
    session.Contacts.Delete(core::ContactTable::kLog, *rows);
  });
  ReceiveAdif(RealRecord());
  EXPECT_EQ(ContactCount(), 0);
  EXPECT_THAT(programs->LastNews(), HasSubstr("cancellato"));
}

TEST_F(Intake, AContactThatWasImportedFromAFileIsTheSame) {
  Exec(
      "insert into Log (DataQso,Call,Banda,Modo) values "
      "('04/07/2026 14:03','DL1ABC','  2 m','Q65')");
  ReceiveVector("12-logged-adif");
  EXPECT_EQ(ContactCount(), 1);
}

TEST_F(Intake, AStartWithinTwoSecondsIsTheSameContactAndAThirdIsAnother) {
  std::string record = Vector("n1mm-2333-plain");
  const std::size_t at = record.find("140300");
  record.replace(at, 6, "140315");
  ReceiveAdif(record);
  record.replace(at, 6, "140317");
  ReceiveAdif(record);
  EXPECT_EQ(ContactCount(), 1);
  record.replace(at, 6, "140318");
  ReceiveAdif(record);
  EXPECT_EQ(ContactCount(), 2);
}

TEST_F(Intake, AcrossMidnightTheStartIsTheSameToo) {
  auto logged = MessageOf<QsoLogged>("05-qso-logged-eu-vhf");
  logged.on->time = base::DateTime::Of(2026, 7, 3, 23, 59, 59);
  Send(logged);
  Advance(ContactIntake::kHold);
  logged.on->time = base::DateTime::Of(2026, 7, 4, 0, 0, 1);
  Send(logged);
  Advance(ContactIntake::kHold);
  EXPECT_EQ(ContactCount(), 1);
  EXPECT_THAT(Rows("Select DataQso from Log"), ElementsAre("03/07/2026 23:59:59"));
}

TEST_F(Intake, MidnightSecondsAndTheEndAreKept) {
  auto logged = MessageOf<QsoLogged>("05-qso-logged-null-strings");
  logged.on = Moment{base::DateTime::Of(2026, 7, 4), Moment::Basis::kUtc, 0};
  Send(logged);
  Advance(ContactIntake::kHold);
  EXPECT_THAT(Rows("Select Valore from LogAdif where Campo='TIME_OFF'"), ElementsAre("140430"));
  const auto rows = session.Db.OpenSnapshot("Select DataQso from Log");
  EXPECT_EQ(rows->Field(std::size_t{0}).Date(), base::DateTime::Of(2026, 7, 4));
}

TEST_F(Intake, ModesFollowTheRulesOfLogFiles) {
  EXPECT_EQ(
      *RecordOf(MessageOf<QsoLogged>("05-qso-logged-null-strings"), false, core::LocalTime(session))
           .Find("SUBMODE"),
      "FT4");
  ReceiveVector("05-qso-logged-null-strings");
  ReceiveVector("12-logged-adif");
  Advance(ContactIntake::kHold);
  EXPECT_THAT(Rows("Select Modo from Log Order By Modo"), ElementsAre("FT4", "Q65"));
}

TEST_F(Intake, JtdxTellsUtcWhateverItSays) {
  session.SaveSetting("Ora", "Zona", "Europe/Rome");
  ReceiveVector("05-qso-logged-jtdx-localtime");
  Advance(ContactIntake::kHold);
  EXPECT_THAT(Rows("Select DataQso from Log"), ElementsAre("04/07/2026 14:03:00"));
}

TEST_F(Intake, LocalTimeOfAnyOtherIsThatOfTheStation) {
  session.SaveSetting("Ora", "Zona", "Europe/Rome");
  auto logged = MessageOf<QsoLogged>("05-qso-logged-jtdx-localtime");
  Send(logged, "WSJT-X");
  Advance(ContactIntake::kHold);
  EXPECT_THAT(Rows("Select DataQso from Log"), ElementsAre("04/07/2026 12:03:00"));
}

TEST_F(Intake, ALogInLocalTimeGetsItsOwnTime) {
  session.SaveSetting("Ora", "Zona", "Europe/Rome");
  core::StoreLogTime(session, core::LogTime::kLocal);
  ReceiveVector("12-logged-adif");
  EXPECT_THAT(Rows("Select DataQso from Log"), ElementsAre("04/07/2026 16:03:00"));
}

TEST_F(Intake, SerialsOfAContestOnVhfAreParted) {
  ReceiveVector("05-qso-logged-eu-vhf");
  Advance(ContactIntake::kHold);
  EXPECT_THAT(Rows("Select Campo,Valore from LogAdif where Campo in ('STX','SRX') Order By Campo"),
              ElementsAre("SRX|34", "STX|12"));
  EXPECT_THAT(Rows("Select QrkDato,QrkRicevuto,Locator,Potenza from Log"),
              ElementsAre("54|57|JO31NF|100"));
}

TEST_F(Intake, CountryAndDistanceAreFilledAsByAnImport) {
  ReceiveVector("12-logged-adif");
  EXPECT_THAT(Rows("Select Country,Continente,Banda,Propagazione from Log"),
              ElementsAre(HasSubstr("DL")));
  EXPECT_THAT(Rows("Select Continente from Log"), ElementsAre("EU"));
}

TEST_F(Intake, TheOwnCallAndLocatorAreThoseOfTheDatagram) {
  ReceiveVector("12-logged-adif");
  EXPECT_THAT(Rows("Select Call,Locator from Stazioni where Stazione in (Select Stazione from "
                   "LogOrigine)"),
              ElementsAre("IK0XYZ/P|JN61FV"));
  // From JN61FV to JO31NF, and not from the profile's JN65AA.
  EXPECT_THAT(Rows("Select Qrb from Log"),
              ElementsAre(std::to_string(geo::QrbKm("JN61FV", "JO31NF"))));
}

TEST_F(Intake, TheSquareOfTheOwnLocatorIsTheSameStation) {
  auto logged = MessageOf<QsoLogged>("05-qso-logged-null-strings");
  logged.myCall = "IK3ABC";
  logged.myGrid = "JN65";
  logged.operatorCall = "IK3ABC";
  Send(logged);
  Advance(ContactIntake::kHold);
  EXPECT_THAT(Rows("Select Call,Locator from Stazioni"), ElementsAre("IK3ABC|JN65AA"));
}

TEST_F(Intake, ABandThatTheProfileLacksGetsItsRow) {
  Exec("delete * from UserRTX where Banda='  2 m'");
  ReceiveVector("12-logged-adif");
  EXPECT_THAT(Rows("Select Frequenza from UserRTX where Banda='  2 m'"), SizeIs(1));
}

TEST_F(Intake, IsAnnouncedAsOneContact) {
  std::vector<bool> many;
  const auto heard = session.Contacts.Subscribe(
      [&](const core::ContactsChanged& change) { many.push_back(change.Many()); });
  ReceiveReal();
  EXPECT_THAT(many, ElementsAre(false));
}

TEST_F(Intake, WhatCannotBeStoredWaitsStandsInAFileAndIsStoredLater) {
  {
    engine::Database other = file::OpenDatabaseFile(directory.Path() / "Brenvo.mdb");
    other.BeginTrans();
    other.Execute("update [User] set Qth='x'");
    ReceiveReal();
    EXPECT_THAT(programs->WaitingText(), HasSubstr("In attesa 1 Qso"));
    EXPECT_THAT(ReadBytes(WaitingFile()), HasSubstr("DL1ABC"));
    EXPECT_THAT(ReadBytes(WaitingFile()), HasSubstr("Niccolò"));
    other.Rollback();
  }
  Advance(ContactIntake::kRetry);
  EXPECT_EQ(programs->WaitingText(), "");
  EXPECT_EQ(ContactCount(), 1);
  EXPECT_FALSE(std::filesystem::exists(WaitingFile()));
}

TEST_F(Intake, WhatWaitedWhenTheProgramEndedIsStoredAtTheNextStart) {
  {
    engine::Database other = file::OpenDatabaseFile(directory.Path() / "Brenvo.mdb");
    other.BeginTrans();
    other.Execute("update [User] set Qth='x'");
    ReceiveReal();
    other.Rollback();
  }
  Start();
  EXPECT_THAT(programs->WaitingText(), HasSubstr("In attesa 1 Qso"));
  Event([&] { programs->TryAgain(); });
  EXPECT_THAT(Rows("Select Call,Qra from Log"), ElementsAre("DL1ABC|Niccolò"));
}

TEST_F(Intake, WhatIsHeldWhenTheDatabaseClosesIsStoredBefore) {
  ReceiveVector("real-05-0");
  Event([&] { session.CloseForCompaction(); });
  Event([&] { session.ReopenAfterCompaction(); });
  EXPECT_EQ(ContactCount(), 1);
}

TEST_F(Intake, WhatTheLogCanNeverHoldIsToldAndKeptInAFile) {
  ReceiveAdif("<call:6>DL1ABC <mode:3>FT8 <eor>");
  EXPECT_EQ(ContactCount(), 0);
  EXPECT_THAT(programs->LastNews(), HasSubstr("non si può registrare"));
  EXPECT_THAT(ReadBytes(directory.Path() / ContactIntake::kRefusedFile), HasSubstr("DL1ABC"));
  EXPECT_EQ(programs->WaitingText(), "");
}

TEST_F(Intake, AnImportOfTheProgramsOwnFileFindsTheGapAlone) {
  ReceiveReal();
  std::string other = RealRecord();
  other.replace(other.find("DL1ABC"), 6, "DL2XYZ");
  const auto file = directory.Path() / "wsjtx_log.adi";
  std::ofstream(file, std::ios::binary) << "<eoh>\n" << RealRecord() << other;
  std::ostringstream report;
  const auto counts = adif::ImportContacts(
      session, file, {}, [](std::int64_t) { return true; }, report);
  ASSERT_TRUE(counts);
  EXPECT_EQ(counts->fresh, 1);
  EXPECT_EQ(counts->repeated, 1);
}

TEST_F(Intake, AllRecordsOfADatagramAreStored) {
  std::string other = RealRecord();
  other.replace(other.find("DL1ABC"), 6, "DL2XYZ");
  ReceiveAdif(RealRecord() + "<call:1>X <eor>" + other);
  EXPECT_THAT(Rows("Select Call from Log Order By Call"), ElementsAre("DL1ABC", "DL2XYZ"));
  EXPECT_THAT(ReadBytes(directory.Path() / ContactIntake::kRefusedFile), HasSubstr("<CALL:1>X"));
}

TEST_F(Intake, ACountryThatARecordTellsIsKeptAndThatOfItsDayElse) {
  ReceiveAdif(
      "<call:6>IK0ABC <qso_date:8>20240510 <time_on:4>1200 <band:2>2m <mode:3>FT8 "
      "<dxcc:3>225 <eor>");
  ReceiveAdif("<call:5>GB6WW <qso_date:8>20240510 <time_on:4>1200 <band:2>2m <mode:3>FT8 <eor>");
  EXPECT_THAT(Rows("Select Call,Country from Log Order By QsoNr"),
              ElementsAre("IK0ABC|IS0", "GB6WW|GM"));
  EXPECT_THAT(Rows("Select QsoNr,Dxcc,Country,Regola from EntitaQso Order By QsoNr"),
              ElementsAre("1|225||", "2||GM|GB6WW"));
  // Told of a contact that is there, it completes that.
  ReceiveAdif(
      "<call:5>GB6WW <qso_date:8>20240510 <time_on:4>1200 <band:2>2m <mode:3>FT8 "
      "<dxcc:3>223 <eor>");
  EXPECT_THAT(programs->LastNews(), HasSubstr("completato"));
  EXPECT_THAT(Rows("Select Dxcc from EntitaQso where QsoNr=2"), ElementsAre("223"));
}

TEST_F(Intake, AnOpenLogHasTheContactAndKeepsWhatIsBeingTyped) {
  Know<log::LogForm>("LogForm");
  log::LogForm& log = Open<log::LogForm>("LogForm");
  Press(log, "cmClear");
  Event([&] { log.CallQso.SetText("IK3XYZ"); });
  ReceiveVector("12-logged-adif");
  EXPECT_EQ(log.QsoTotali.Text(), "1");
  EXPECT_EQ(log.CallQso.Text(), "IK3XYZ");
  Press(log, "cmLast");
  EXPECT_EQ(log.CallQso.Text(), "DL1ABC");
}

}  // namespace
}  // namespace brenvo::digital
