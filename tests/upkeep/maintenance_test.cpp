#include "upkeep/maintenance.h"
#include "file/database_file.h"

#include <sqlite3.h>

#include <fstream>
#include <optional>

#include "core/prefix.h"
#include "station/station.h"
#include "tests/core/core_station.h"

namespace brenvo::upkeep {
namespace {

using Texts = std::vector<std::string>;
using MaintenanceTest = core::CoreStation;

// The number of contacts in a file of the directory; none where there is no such file.
std::optional<std::int64_t> ContactsIn(const std::filesystem::path& file) {
  if (!std::filesystem::exists(file)) return std::nullopt;
  engine::Database db = file::OpenDatabaseFile(file);
  return db.OpenSnapshot("select Count(*) as N from Log")->Field(0).Integer();
}

TEST_F(MaintenanceTest, PrefixesAreAssignedToTheWholeLogAndOthersKeepTheirs) {
  session.Db.Execute("insert into Log (DataQso,Call,Country) values ('05/01/2001','IK3ABC','XX')");
  session.Db.Execute(
      "insert into Log (DataQso,Call,Prefisso,[Zona CQ],Continente) values "
      "('05/01/2001','NODIGIT','OLD',7,'SA')");
  machine.Messages().QueueAnswer(false);
  Menu("cmAssegnaPrefissi");
  EXPECT_EQ(Lines(), Texts{"question \"Assegnazione Prefissi\" \"Confermi l'operazione ?\" no"});
  EXPECT_EQ(Rows("select Prefisso from Log where Call='IK3ABC'"), Texts{""});
  machine.Messages().QueueAnswer(true);
  Menu("cmAssegnaPrefissi");
  EXPECT_EQ(Rows("select Prefisso,[Zona CQ],[Zona ITU],Continente,Country from Log order by QsoNr"),
            (Texts{"IK3  |15|28|EU|XX", "OLD|7||SA|"}));
  EXPECT_FALSE(machine.Host().Busy());
}

TEST_F(MaintenanceTest, ThePrefixesOfContactsThatHaveThemAreNotWrittenAgain) {
  session.Db.Execute("insert into Log (DataQso,Call,Banda) values ('01/02/2001','IK3ABC','  2 m')");
  for (int i = 0; i < 2; ++i) {
    machine.Messages().QueueAnswer(true);
    Menu("cmAssegnaPrefissi");
  }
  EXPECT_EQ(Rows("select count(*) from Log where Prefisso='IK3'"), Texts{"1"});
  const auto before = session.Db.Counters().rowsStepped;
  machine.Messages().QueueAnswer(true);
  Menu("cmAssegnaPrefissi");
  // The contact, how many there are, and the row of the prefix, twice.
  EXPECT_LE(session.Db.Counters().rowsStepped - before, 6);
}

TEST_F(MaintenanceTest, ThePrefixesThatWereAssignedBeforeTheOperatorStoppedStay) {
  session.Db.BeginTrans();
  for (int i = 0; i < 2500; ++i) {
    session.Db.Execute("insert into Log (DataQso,Call,Banda) values ('01/02/2001','IK3A" +
                       std::to_string(i) + "','  2 m')");
  }
  session.Db.CommitTrans();
  machine.StopProgressAt(2000);
  machine.Messages().QueueAnswer(true);
  Menu("cmAssegnaPrefissi");
  EXPECT_EQ(Rows("select count(*) from Log where [Zona CQ]=15"), Texts{"2000"});
  EXPECT_FALSE(session.Db.InTransaction());
}

TEST_F(MaintenanceTest, ThePrefixesThatWereAssignedBeforeAFailureStay) {
  for (const char* call : {"IK3ABC", "IK4ABC", "IK3DEF", "IK5ABC"}) {
    session.Db.Execute(std::string("insert into Log (DataQso,Call,Banda) values ('01/02/2001','") +
                       call + "','  2 m')");
  }
  sqlite3* beside = nullptr;
  ASSERT_EQ(sqlite3_open((directory.Path() / "Brenvo.mdb").c_str(), &beside), SQLITE_OK);
  ASSERT_EQ(
      sqlite3_exec(beside, "CREATE UNIQUE INDEX Once ON Log (Prefisso)", nullptr, nullptr, nullptr),
      SQLITE_OK);
  sqlite3_close(beside);
  int announced = 0;
  const forms::Subscription subscription = session.Contacts.Subscribe(
      [&](const core::ContactsChanged& change) { announced += change.Many(); });
  machine.Messages().QueueAnswer(true);
  Menu("cmAssegnaPrefissi");
  EXPECT_EQ(announced, 1);
  EXPECT_EQ(Rows("select Call from Log where [Zona CQ]=15"), (Texts{"IK3ABC", "IK4ABC"}));
  EXPECT_FALSE(session.Db.InTransaction());
}

TEST_F(MaintenanceTest, AnEmptyLogTakesThePrefixesInItsStride) {
  machine.Messages().QueueAnswer(true);
  Menu("cmAssegnaPrefissi");
  EXPECT_EQ(Lines().size(), 1u);
}

TEST_F(MaintenanceTest, EmptyingTheLogAsksFirst) {
  session.Db.Execute("insert into Log (DataQso,Call) values ('05/01/2001','A')");
  machine.Messages().QueueAnswer(false);
  Menu("cmAzzeraLog");
  EXPECT_EQ(Rows("select Call from Log").size(), 1u);
  machine.Messages().QueueAnswer(true);
  Menu("cmAzzeraLog");
  EXPECT_TRUE(Rows("select Call from Log").empty());
  EXPECT_EQ(Lines(), (Texts{"question \"Azzeramento Log\" \"Confermi l'operazione ?\" no",
                            "question \"Azzeramento Log\" \"Confermi l'operazione ?\" yes"}));
}

TEST_F(MaintenanceTest, EmptyingTheContestsTakesContactsAndHeaders) {
  session.Db.Execute("insert into Contest (DataContest,Banda) values ('05/01/2001','  2 m')");
  session.Db.Execute(
      "insert into [Contest Qso] (DataContest,Banda,ProgrDato) values "
      "('05/01/2001','  2 m',1)");
  machine.Messages().QueueAnswer(true);
  Menu("cmAzzeraContest");
  EXPECT_TRUE(Rows("select Banda from Contest").empty());
  EXPECT_TRUE(Rows("select Banda from [Contest Qso]").empty());
  EXPECT_EQ(Lines(), Texts{"question \"Azzeramento Contest\" \"Confermi l'operazione ?\" yes"});
}

TEST_F(MaintenanceTest, EmptyingTheContestsTakesTheContactsBeforeTheirHeaders) {
  // With neither table in the file, the failure names the one that is emptied first.
  sqlite3* file = nullptr;
  ASSERT_EQ(sqlite3_open((directory.Path() / "Brenvo.mdb").c_str(), &file), SQLITE_OK);
  EXPECT_EQ(sqlite3_exec(file, "DROP TABLE \"Contest Qso\"; DROP TABLE \"Contest\"", nullptr,
                         nullptr, nullptr),
            SQLITE_OK);
  sqlite3_close(file);
  machine.Messages().QueueAnswer(true);
  Menu("cmAzzeraContest");
  const Texts lines = Lines();
  ASSERT_EQ(lines.size(), 2u);
  EXPECT_TRUE(lines[1].starts_with("error ")) << lines[1];
  EXPECT_NE(lines[1].find("Contest Qso"), std::string::npos) << lines[1];
}

TEST_F(MaintenanceTest, TheFirstCompactionMakesABackupAndTheSecondReplacesIt) {
  session.Db.Execute("insert into Log (DataQso,Call) values ('05/01/2001','A')");
  Menu("cmCompatta");
  EXPECT_TRUE(Lines().empty());
  EXPECT_EQ(Rows("select Call from Log"), Texts{"A"});
  EXPECT_EQ(ContactsIn(directory.Path() / "Brenvo.BAK"), 1);
  session.Db.Execute("insert into Log (DataQso,Call) values ('06/01/2001','B')");
  Menu("cmCompatta");
  EXPECT_EQ(ContactsIn(directory.Path() / "Brenvo.BAK"), 2);
  EXPECT_FALSE(std::filesystem::exists(directory.Path() / "BrenvoNEW.MDB"));
  // Every handle serves again.
  EXPECT_EQ(session.Station.MyLocator, "JN65AA");
  EXPECT_EQ(core::ResolvePrefix(session, "IK3ABC").Country, "I");
}

TEST_F(MaintenanceTest, ACompactionThatIsStoppedLeavesEverythingAsItWasAndInUse) {
  FillLog(12);
  machine.StopProgressAt(0);
  Menu("cmCompatta");
  EXPECT_EQ(Lines(),
            Texts{"message exclamation \"Compatta Database\" \"Compattazione interrotta: il "
                  "database è rimasto com'era.\""});
  EXPECT_FALSE(std::filesystem::exists(directory.Path() / "Brenvo.BAK"));
  EXPECT_FALSE(std::filesystem::exists(directory.Path() / "BrenvoNEW.MDB"));
  EXPECT_EQ(session.Tables.TbLog->RecordCount(), 4096);
  EXPECT_EQ(core::ResolvePrefix(session, "IK3ABC").Country, "I");
  EXPECT_FALSE(machine.Host().Busy());
  machine.StopProgressAt(-1);
  Menu("cmCompatta");
  EXPECT_EQ(ContactsIn(directory.Path() / "Brenvo.BAK"), 4096);
}

TEST_F(MaintenanceTest, ACompactionThatFailsEndsTheProgramUnderItsTitle) {
  std::filesystem::create_directory(directory.Path() / "BrenvoNEW.MDB");
  std::ofstream(directory.Path() / "BrenvoNEW.MDB" / "x") << "x";
  EXPECT_THROW(Menu("cmCompatta"), forms::ProgramEnded);
  const Texts lines = Lines();
  ASSERT_EQ(lines.size(), 2u);
  EXPECT_TRUE(lines[0].starts_with("message critical \"Compact Database\" \" ")) << lines[0];
  EXPECT_EQ(lines[1], "end-program");
}

TEST_F(MaintenanceTest, ABackupThatCannotGoStopsTheCompactionWithTheDataInPlace) {
  session.Db.Execute("insert into Log (DataQso,Call) values ('05/01/2001','A')");
  std::filesystem::create_directory(directory.Path() / "Brenvo.BAK");
  std::ofstream(directory.Path() / "Brenvo.BAK" / "x") << "x";
  EXPECT_THROW(Menu("cmCompatta"), forms::ProgramEnded);
  const Texts lines = Lines();
  ASSERT_EQ(lines.size(), 2u);
  EXPECT_TRUE(lines[0].starts_with("message critical \"Compact Database\" \" 75 - ")) << lines[0];
  EXPECT_EQ(lines[1], "end-program");
  EXPECT_EQ(ContactsIn(directory.Path() / "Brenvo.mdb"), 1);
}

TEST_F(MaintenanceTest, ADatabaseThatAnotherProgramHasOpenIsNotRenamedUnderIt) {
  session.Db.Execute("insert into Log (DataQso,Call) values ('05/01/2001','A')");
  engine::Database other = file::OpenDatabaseFile(directory.Path() / "Brenvo.mdb");
  const auto reading = other.OpenSnapshot("select Call from Log");
  EXPECT_THROW(Menu("cmCompatta"), forms::ProgramEnded);
  EXPECT_EQ(Lines().front(),
            "message critical \"Compact Database\" "
            "\" 3260 - Il database è aperto in un altro programma.\"");
  EXPECT_EQ(ContactsIn(directory.Path() / "Brenvo.mdb"), 1);
  EXPECT_FALSE(std::filesystem::exists(directory.Path() / "Brenvo.BAK"));
}

TEST_F(MaintenanceTest, ACompactionLeavesTheHandleOfHrdAlone) {
  const engine::Table* const before = session.Tables.TbHrd.get();
  Menu("cmCompatta");
  EXPECT_EQ(session.Tables.TbHrd.get(), before);
}

// The power goes after the first n steps of a compaction, for each n.
class InterruptedCompaction : public StationTest, public testing::WithParamInterface<std::size_t> {
 protected:
  InterruptedCompaction() : StationTest(false) {
    std::ofstream(directory.Path() / "Brenvo.BAK") << "the backup of last month";
    core::Session interrupted(machine, directory.Path());
    interrupted.Open();
    interrupted.Db.Execute("insert into Log (DataQso,Call) values ('05/01/2001','A')");
    for (std::size_t i = 0; i < GetParam(); ++i) CompactionSteps()[i](interrupted);
  }
};

TEST_P(InterruptedCompaction, LeavesTheDataInOneOfItsFiles) {
  const std::optional<std::int64_t> database = ContactsIn(directory.Path() / "Brenvo.mdb");
  if (database) {
    EXPECT_EQ(database, 1);
    return;
  }
  EXPECT_EQ(ContactsIn(directory.Path() / "Brenvo.BAK"), 1);
  EXPECT_EQ(ContactsIn(directory.Path() / "BrenvoNEW.MDB"), 1);
}

TEST_P(InterruptedCompaction, TheNextStartOpensTheDataOrSaysWhereItIs) {
  const bool present = std::filesystem::exists(directory.Path() / "Brenvo.mdb");
  if (!present) machine.Messages().QueueAnswer(false);  // the backup is offered, and not wanted
  EXPECT_EQ(station::StartStation(session) != nullptr, present);
  if (present) {
    EXPECT_TRUE(Lines().empty());
    EXPECT_EQ(Rows("select Call from Log"), Texts{"A"});
    // And the next compaction is not disturbed by what the last one left.
    Event([&] { session.Windows.Find("Brenvo")->FindCommand("cmCompatta")->Press(); });
    EXPECT_TRUE(Lines().empty());
    EXPECT_EQ(Rows("select Call from Log"), Texts{"A"});
    EXPECT_EQ(ContactsIn(directory.Path() / "Brenvo.BAK"), 1);
    return;
  }
  const Texts lines = Lines();
  ASSERT_EQ(lines.size(), 2u);
  EXPECT_NE(lines[0].find("C'è Brenvo.BAK, di una compattazione interrotta, con 1 QSO."),
            std::string::npos)
      << lines[0];
  EXPECT_NE(lines[1].find("BrenvoNEW.MDB: rinominarlo in Brenvo.mdb."), std::string::npos)
      << lines[1];
}

INSTANTIATE_TEST_SUITE_P(EachStep, InterruptedCompaction,
                         testing::Range<std::size_t>(0, CompactionSteps().size() + 1));

}  // namespace
}  // namespace brenvo::upkeep
