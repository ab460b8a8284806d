#include "log/log_adi.h"

#include <gmock/gmock.h>

#include <fstream>

#include "tests/log/log_station.h"
#include "tests/support/golden.h"
#include "tests/support/places.h"

namespace brenvo::log {
namespace {

constexpr std::string_view kColumns =
    ",Modo,QrkDato,QrkRicevuto,QslInviata,QslRicevuta,Qra,Frequenza,Manager,Qth,Locator,Potenza,"
    "Note";
constexpr std::string_view kOneContact = "log/golden/one_contact.adi";

class AdifExportTest : public LogStation {
 protected:
  AdifExportTest() {
    Exec("insert into Log (DataQso,Call,Banda" + std::string(kColumns) +
         ") values ('05/09/1999 23:07','IK3ABC/P','2m','SSB','59','57',true,false,'NICOLÒ',144.3,"
         "'I2MGR','CANTÙ','JN65AB',100,'nota')");
  }
  std::string File(std::string_view name = "Log.ADI") { return ReadBytes(directory.Path() / name); }
  // The file of the one contact that each test begins with.
  static std::string OneContact() { return ReadBytes(SourceDir() / "tests" / kOneContact); }
  void Export(LogForm& log, std::string_view key, bool keep) {
    machine.Messages().QueueAnswer(keep);
    Press(log, key);
  }
  std::string Contact(std::string_view where = "") {
    const auto rows = session.Db.OpenSnapshot("select * from Log " + std::string(where));
    return AdifWriter(*rows).Contact();
  }
};

TEST_F(AdifExportTest, AContactIsWrittenLineByLineInItsOrder) {
  LogForm& log = OpenLog();
  Export(log, "cmOnlyThisQso", false);
  EXPECT_EQ(Lines(), Texts{"question \"Esporta questo Qso\" \"Alcuni Qso sono gia' presenti nel "
                           "file per BV, vuoi lasciarli ?\" no"});
  ExpectGolden(kOneContact, File());
}

TEST_F(AdifExportTest, TheWholeSelectionIsWrittenFromItsFirst) {
  Exec("insert into Log (DataQso,Call) values ('06/09/1999','F1NULL')");
  Exec(
      "insert into Log (DataQso,Call,Banda,Qra,Frequenza,QslRicevuta,Manager) values "
      "('07/09/1999 00:01','DL1ÄÖ','  2 m','ΑΒΓ Łódź 5€ “x”',1296.2,true,'')");
  LogForm& log = OpenLog();
  Export(log, "cmAllQso", false);
  EXPECT_EQ(Lines(), Texts{"question \"Esporta tutti i Qso\" \"Alcuni Qso sono gia' presenti nel "
                           "file per BV, vuoi lasciarli ?\" no"});
  ExpectGolden("log/golden/all_contacts.adi", File());
}

TEST_F(AdifExportTest, TheWholeLogIsReadManyContactsAtATime) {
  session.Db.BeginTrans();
  for (int i = 0; i < 640; ++i) Store("IK3ABC", std::to_string(i));
  session.Db.CommitTrans();
  LogForm& log = OpenLog();
  EXPECT_LT(Counted([&] { Export(log, "cmAllQso", false); }).statements, 25);
}

TEST_F(AdifExportTest, ABandGivesItsLine) {
  EXPECT_THAT(Contact(), testing::HasSubstr("\r\n<band:2>2m \r\n"));
}

TEST_F(AdifExportTest, AFrequencyHasThreeDecimals) {
  EXPECT_THAT(Contact(), testing::HasSubstr("\r\n<freq:7>144.300 \r\n"));
}

TEST_F(AdifExportTest, AccentedNamesAreOneByteACharacter) {
  EXPECT_THAT(Contact(), testing::HasSubstr("\r\n<comment:6>NICOL\xD2 \r\n"));
}

TEST_F(AdifExportTest, ANullColumnWritesALengthOf0) {
  Exec("delete * from Log");
  Exec("insert into Log (Call) values ('X1X')");
  EXPECT_EQ(Contact(),
            "<call:3>X1X \r\n<qso_date:0:d> \r\n<time_on:0> \r\n<band:0> \r\n<mode:0> \r\n"
            "<rst_sent:0> \r\n<rst_rcvd:0> \r\n<qsl_sent:1>N \r\n<qsl_rcvd:1>N \r\n<comment:0> \r\n"
            "<freq:0> \r\n<qsl_via:0> \r\n<eor>\r\n");
}

TEST_F(AdifExportTest, ASelectionOfThreeWritesThree) {
  for (const char* call : {"A1A", "B1B", "C1C"}) Store(call, "  2 m", ",Note", ",'scelto'");
  LogForm& log = OpenLog();
  Event([&] { session.ShowInLog("Select * from Log where Note='scelto'"); });
  Export(log, "cmAllQso", false);
  const std::string file = File();
  std::size_t contacts = 0;
  for (std::size_t at = file.find("<eor>"); at != std::string::npos;
       at = file.find("<eor>", at + 1)) {
    ++contacts;
  }
  EXPECT_EQ(contacts, 3u);
  EXPECT_EQ(file.find("IK3ABC"), std::string::npos);
}

TEST_F(AdifExportTest, AnsweringYesTwiceWritesTheSameContactTwice) {
  LogForm& log = OpenLog();
  Export(log, "cmOnlyThisQso", true);
  Export(log, "cmOnlyThisQso", true);
  EXPECT_EQ(File(), OneContact() + OneContact());
  Export(log, "cmOnlyThisQso", false);
  ExpectGolden(kOneContact, File());
}

TEST_F(AdifExportTest, AnExistingFileIsFoundWhateverItsCase) {
  { std::ofstream(directory.Path() / "log.adi", std::ios::binary) << "before\r\n"; }
  LogForm& log = OpenLog();
  Export(log, "cmOnlyThisQso", true);
  EXPECT_EQ(File("log.adi"), "before\r\n" + OneContact());
  EXPECT_FALSE(std::filesystem::exists(directory.Path() / "Log.ADI"));
}

TEST_F(AdifExportTest, AfterAnExportOfAllTheRecordOnScreenStaysTheOneWorkedOn) {
  Store("B1B", "  2 m");
  Store("C1C", "  2 m");
  LogForm& log = OpenLog();
  Press(log, "cmFirst");
  const std::string shown = log.CallQso.Text();
  Export(log, "cmAllQso", false);
  EXPECT_TRUE(log.DsLog->EOF_());
  EXPECT_EQ(log.CallQso.Text(), shown);
  Export(log, "cmOnlyThisQso", false);
  ExpectGolden(kOneContact, File());
  Export(log, "cmAllQso", false);
  log.Note.SetText("cambiata");
  Press(log, "cmUpdate");
  EXPECT_EQ(Rows("select Call from Log where Note='cambiata'"), Texts{shown});
  Export(log, "cmAllQso", false);
  Press(log, "cmNext");
  EXPECT_EQ(log.CallQso.Text(), "B1B");
}

TEST_F(AdifExportTest, AContactInsertedBeforeAnExportOfAllStaysTheOneWorkedOn) {
  LogForm& log = OpenLog();
  Press(log, "cmClear");
  log.CallQso.SetText("B1B");
  Press(log, "cmInsert");
  EXPECT_EQ(log.QsoNr.Text(), "1");  // still the number of the contact shown before
  Export(log, "cmAllQso", false);
  Export(log, "cmAllQso", false);
  log.Note.SetText("cambiata");
  Press(log, "cmUpdate");
  EXPECT_EQ(Rows("select Call from Log where Note='cambiata'"), Texts{"B1B"});
  Export(log, "cmAllQso", false);
  machine.Messages().QueueAnswer(true);
  Press(log, "cmDelete");
  EXPECT_EQ(Rows("select Call from Log"), Texts{"IK3ABC/P"});
}

TEST_F(AdifExportTest, AnEmptyLogLeavesAnEmptyFile) {
  Exec("delete * from Log");
  LogForm& log = OpenLog();
  for (const char* key : {"cmOnlyThisQso", "cmAllQso"}) {
    Export(log, key, true);
    EXPECT_EQ(File(), "") << key;
    EXPECT_TRUE(std::filesystem::exists(directory.Path() / "Log.ADI"));
  }
}

TEST_F(AdifExportTest, AFileThatCannotBeWrittenEndsTheEventAlone) {
  std::filesystem::create_directory(directory.Path() / "Log.ADI");
  LogForm& log = OpenLog();
  Press(log, "cmOnlyThisQso");
  EXPECT_EQ(Lines(), Texts{"error \"Il file Log.ADI non si apre\""});
  EXPECT_EQ(log.CallQso.Text(), "IK3ABC/P");
}

TEST_F(AdifExportTest, ADatabaseThatFailsEndsTheProgram) {
  LogForm& log = OpenLog();
  session.Db.Close();
  machine.Messages().QueueAnswer(false);
  EXPECT_THROW(Press(log, "cmAllQso"), forms::ProgramEnded);
  EXPECT_THAT(Lines().at(1),
              testing::StartsWith("message critical \"Esporta tutti i Qso\" \" 3420"));
}

TEST_F(AdifExportTest, TheGridViewDisablesTheExportsToo) {
  LogForm& log = OpenLog();
  Press(log, "cmVista");
  EXPECT_FALSE(log.cmAllQso.Enabled());
  EXPECT_FALSE(log.cmOnlyThisQso.Enabled());
  Press(log, "cmVista");
  EXPECT_TRUE(log.cmAllQso.Enabled());
}

}  // namespace
}  // namespace brenvo::log
