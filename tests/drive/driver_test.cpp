#include "tools/drive/driver.h"

#include <gmock/gmock.h>
#include <sqlite3.h>

#include <fstream>
#include <sstream>

#include "every_field.h"
#include "tests/support/places.h"
#include "tests/support/scratch_directory.h"

namespace brenvo::drive {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::MatchesRegex;
using testing::StartsWith;

class Scripts : public testing::Test {
 protected:
  Scripts() {
    std::filesystem::copy_file(BuildDir() / "delivered" / "Brenvo.mdb", directory / "Brenvo.mdb");
  }

  // Runs a script to its end.
  std::vector<std::string> Run(const std::string& script) {
    const auto failure = Try(script);
    if (failure) ADD_FAILURE() << "line " << failure->line << ": " << failure->reason;
    return lines;
  }
  // Why it failed, as "line: reason".
  std::string Failure(const std::string& script) {
    const auto failure = Try(script);
    return failure ? std::to_string(failure->line) + ": " + failure->reason : "none";
  }
  std::optional<ScriptFailure> Try(const std::string& script) {
    lines.clear();
    std::istringstream in(script);
    Driver driver(directory, [this](std::string line) { lines.push_back(std::move(line)); });
    return driver.Run(in);
  }
  // Behind the program's back, as a broken delivery would be.
  void Damage(const char* statement) {
    sqlite3* file = nullptr;
    ASSERT_EQ(sqlite3_open((directory / "Brenvo.mdb").c_str(), &file), SQLITE_OK);
    ASSERT_EQ(sqlite3_exec(file, statement, nullptr, nullptr, nullptr), SQLITE_OK);
    ASSERT_EQ(sqlite3_close(file), SQLITE_OK);
  }

  const ScratchDirectory scratch;
  const std::filesystem::path directory = scratch.Path();
  std::vector<std::string> lines;
};

TEST_F(Scripts, AnEmptyScriptRunsToItsEnd) {
  EXPECT_THAT(Run(""), IsEmpty());
  EXPECT_THAT(Run("\n# a comment\n   \n"), IsEmpty());
}

TEST_F(Scripts, EchoPrintsItsText) {
  EXPECT_THAT(Run("echo \"a  b\"\necho a  b\necho"), ElementsAre("a  b", "a  b", ""));
}

TEST_F(Scripts, AFailureNamesItsLine) {
  EXPECT_EQ(Failure("echo a\n\nhop"), "3: unknown command hop");
  EXPECT_EQ(Failure("echo a\nset Brenvo.HDisplayMappa"), "2: set wants other words than these");
  EXPECT_EQ(Failure("get LogForm.CallQso"), "1: there is no window LogForm");
  EXPECT_EQ(Failure("get Brenvo.Nothing"), "1: there is no field Brenvo.Nothing");
  EXPECT_EQ(Failure("get Brenvo"), "1: there is no field Brenvo");
  EXPECT_EQ(Failure("menu cmNothing"), "1: there is no field Brenvo.cmNothing");
  EXPECT_EQ(Failure("echo \"a"), "1: a text in quotes does not end");
}

TEST_F(Scripts, TheSettingsOfADirectoryLastFromOneScriptToTheNext) {
  Run("menu cmHrd\nmenu cmSaveDesktop\nresize Hrd 9000 7000\nclose Brenvo");
  EXPECT_THAT(Run("menu cmLoadDesktop\nwindows\nget Hrd.Width"),
              ElementsAre("windows Brenvo Hrd", "get Hrd.Width 9000"));
}

TEST_F(Scripts, NothingRunsAfterAFailure) {
  Failure("echo a\nhop\necho b");
  EXPECT_THAT(lines, ElementsAre("a"));
}

TEST_F(Scripts, AnAnswerThatNothingAskedForIsAFailure) {
  EXPECT_EQ(Failure("answer yes\necho a"), "2: an answer is left that nothing asked for");
}

TEST_F(Scripts, AQuestionWithoutAnAnswerIsAFailure) {
  EXPECT_EQ(Failure("menu cmAzzeraLog"),
            "1: nobody answers the question \"Azzeramento Log\" \"Confermi l'operazione ?\"");
}

TEST_F(Scripts, AnAnswerIsQueuedForTheQuestion) {
  EXPECT_THAT(Run("answer no\nmenu cmAzzeraLog"),
              ElementsAre("question \"Azzeramento Log\" \"Confermi l'operazione ?\" no"));
}

TEST_F(Scripts, TheClockStandsStillUnlessTold) {
  EXPECT_THAT(
      Run("clock \"2001-12-31 23:59:58\"\nadvance 1500\nmenu cmLog\nget LogForm.DataQso\n"
          "advance 500\npress LogForm.cmClear\nget LogForm.DataQso"),
      ElementsAre("get LogForm.DataQso \"31/12/2001\"", "get LogForm.DataQso \"01/01/2002\""));
  EXPECT_EQ(Failure("clock yesterday"), "1: \"yesterday\" is no time");
}

TEST_F(Scripts, SettingsStartEmptyAndAreKept) {
  EXPECT_THAT(Run("setting Log X\nsetting Log X 120\nsetting Log X"),
              ElementsAre("setting Log X \"\"", "setting Log X \"120\""));
}

TEST_F(Scripts, AQueryIsPrintedRowByRow) {
  EXPECT_THAT(Run("exec \"insert into NoteHelp (TipoNota,Nota) values ('ZZ','a')\"\n"
                  "sql select TipoNota, Nota from NoteHelp where TipoNota='ZZ'\n"
                  "sql \"select Nota from NoteHelp where TipoNota='YY'\""),
              ElementsAre("row\tZZ\ta", "rows 1", "rows 0"));
}

TEST_F(Scripts, NullIsPrintedAsSuch) {
  EXPECT_THAT(Run("exec \"insert into Log (Call,DataQso) values ('I3XYZ',cvdate('03/02/2001'))\"\n"
                  "sql select Call, DataQso, Qra, QslInviata from Log"),
              ElementsAre("row\tI3XYZ\t03/02/2001\tNULL\t0", "rows 1"));
}

TEST_F(Scripts, AStatementThatFailsEndsOnlyItsEvent) {
  const auto out = Run("sql select * from Nowhere\necho on");
  ASSERT_EQ(out.size(), 2u);
  EXPECT_THAT(out[0], MatchesRegex("error \"3078 - .*\""));
  EXPECT_EQ(out[1], "on");
}

TEST_F(Scripts, WindowsAreListedInOrderOfOpening) {
  EXPECT_THAT(
      Run("windows\nmenu cmLog\nmenu cmLog\nwindows\nclose LogForm\nwindows"),
      ElementsAre("windows Brenvo", "windows Brenvo LogForm LogForm#2", "windows Brenvo LogForm"));
}

TEST_F(Scripts, AWindowsPropertiesAreFields) {
  EXPECT_THAT(Run("resize Brenvo 9000 6000\nget Brenvo.Width\nget Brenvo.Caption\n"
                  "get Brenvo.cmLog.Caption"),
              ElementsAre("get Brenvo.Width 9000", "get Brenvo.Caption \"Brenvo\"",
                          "get Brenvo.cmLog.Caption \"&Log\""));
}

TEST_F(Scripts, AClosedProgramLeavesItsFileToBeLookedAt) {
  EXPECT_THAT(Run("close Brenvo\nwindows\nsql select Count(*) from Log\necho end"),
              ElementsAre("windows", "row\t0", "rows 1", "end"));
  EXPECT_EQ(Failure("close Brenvo\nget Brenvo.Width"), "2: the program has ended");
  EXPECT_EQ(Failure("close Brenvo\nmenu cmLog"), "2: the program has ended");
}

TEST_F(Scripts, DevicesThatAreNotOpenAreAFailure) {
  EXPECT_EQ(Failure("receive COM1 x"), "1: COM1 is not open");
  EXPECT_EQ(Failure("receive WWConv x"), "1: WWConv is not connected");
  EXPECT_EQ(Failure("peer-close WWConv"), "1: WWConv is not connected");
  EXPECT_EQ(Failure("wave-end 1"), "1: no wave file plays");
  EXPECT_EQ(Failure("fail scanner"), "1: there is no device scanner");
  EXPECT_EQ(Failure("receive RIGSERVER f"), "1: RIGSERVER does not listen");
  EXPECT_EQ(Failure("receive ROTOR x"), "1: ROTOR is not connected");
  EXPECT_EQ(Failure("process rigctl -l 0 @nowhere"), "1: there is no file nowhere");
}

TEST_F(Scripts, TheScriptGoesOnInsideADialog) {
  EXPECT_THAT(
      Run("menu cmQslStampa\nwindows\nset StampaQsl.EtichXFila 2\n"
          "get StampaQsl.VEtichXFila\nclose StampaQsl\nwindows"),
      ElementsAre("windows Brenvo StampaQsl", "get StampaQsl.VEtichXFila \"2\"", "windows Brenvo"));
}

TEST_F(Scripts, NoOtherWindowAnswersWhileADialogWaits) {
  EXPECT_EQ(Failure("menu cmLog\nmenu cmQslStampa\nget LogForm.CallQso\n"
                    "type LogForm.CallQso A"),
            "4: LogForm does not answer while StampaQsl waits");
  EXPECT_EQ(Failure("menu cmQslStampa\nclose Brenvo"),
            "2: Brenvo does not answer while StampaQsl waits");
}

TEST_F(Scripts, TypingGoesOnBehindAKeyThatFails) {
  EXPECT_THAT(Run("menu cmLog\ntype LogForm.CallQso \"D'AB\"\nget LogForm.CallQso"),
              ElementsAre(HasSubstr("''D''"), HasSubstr("'A'"), HasSubstr("'AB'"),
                          "get LogForm.CallQso \"D'AB\""));
}

TEST_F(Scripts, AScriptMayEndInsideADialog) {
  EXPECT_THAT(Run("menu cmQslStampa\necho inside"), ElementsAre("inside"));
}

TEST_F(Scripts, AFailureInsideADialogIsTheScripts) {
  EXPECT_EQ(Failure("menu cmQslStampa\nhop\necho on"), "2: unknown command hop");
  EXPECT_THAT(lines, IsEmpty());
}

TEST_F(Scripts, OnlyTheNextUseOfAFailingPrinterFails) {
  const auto out =
      Run("menu cmQslStampa\ntick StampaQsl.DatiQso on\nfail printer\n"
          "press StampaQsl.cmPrint\npress StampaQsl.cmPrint");
  ASSERT_EQ(out.size(), 2u);
  EXPECT_THAT(out[0], MatchesRegex("error \".*\""));
  EXPECT_EQ(out[1], "print end");
}

TEST_F(Scripts, AMissingDatabaseFailsTheStart) {
  std::filesystem::remove(directory / "Brenvo.mdb");
  EXPECT_EQ(Failure("echo a"), "0: the station does not start");
  ASSERT_EQ(lines.size(), 1u);
  EXPECT_THAT(lines[0], MatchesRegex("message critical \"Brenvo\" \".*Brenvo\\.mdb.*\""));
}

TEST_F(Scripts, AMissingTableFailsTheStart) {
  Damage("DROP TABLE Hrd");
  EXPECT_EQ(Failure("echo a"), "0: the station does not start");
  ASSERT_EQ(lines.size(), 1u);
  EXPECT_THAT(lines[0], MatchesRegex("message critical \"Brenvo\" \".*Hrd.*\""));
}

constexpr const char* kContact =
    "menu cmLog\nset LogForm.CallQso A41KJ\nleave LogForm.CallQso\nget LogForm.Manager";

TEST_F(Scripts, TheManagersTableMayBeMissingWhereTheirPathIsEmpty) {
  Damage("DROP TABLE qmgr");
  EXPECT_THAT(Run(kContact), ElementsAre("get LogForm.Manager \"\""));
}

TEST_F(Scripts, AMissingTableOfManagersFailsTheLookupWhereTheirPathIsSet) {
  Damage("DROP TABLE qmgr");
  Run("setting Log ManagerZX9TOK C:\\qmgr");
  EXPECT_THAT(Run(kContact), ElementsAre("error \"3078 - La tabella 'qmgr' non esiste.\"",
                                         "get LogForm.Manager \"\""));
}

TEST_F(Scripts, AQuestionAtTheStartIsAFailureToo) {
  Run("advance 10000\nclose Brenvo");
  std::ofstream(directory / "Brenvo.mdb") << "no database";
  EXPECT_THAT(Failure("echo a"),
              StartsWith("0: nobody answers the question \"Ripristina backup\""));
  EXPECT_THAT(lines, IsEmpty());
}

TEST_F(Scripts, AnEmptyUserTableFailsTheStart) {
  Damage("DELETE FROM User");
  EXPECT_EQ(Failure("echo a"), "0: the station does not start");
  EXPECT_THAT(lines, ElementsAre(HasSubstr("User")));
}

TEST_F(Scripts, AWindowThatFailsToOpenIsNotThereForTheOthers) {
  Damage("DROP TABLE Modi");
  EXPECT_THAT(
      Run("menu cmLog\nmenu cmHrdMode\nwindows\nmenu cmSaveDesktop\nsetting Desktop Window"),
      ElementsAre("error \"3078 - La tabella 'Modi' non esiste.\"",
                  "error \"3078 - La tabella 'Modi' non esiste.\"", "windows Brenvo",
                  "setting Desktop Window \"\""));
}

}  // namespace
}  // namespace brenvo::drive
