#include "upkeep/schema_steps.h"

#include <gmock/gmock.h>
#include <sqlite3.h>

#include <fstream>
#include <set>

#include "core/contact_origin.h"
#include "core/stations.h"
#include "file/file_check.h"
#include "tests/support/integrity.h"
#include "tests/support/recorded_files.h"
#include "tests/support/station.h"
#include "upkeep/maintenance.h"

namespace brenvo::upkeep {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

namespace fs = std::filesystem;

struct Unseen : platform::Progress {
  bool Advance(std::int64_t) override { return true; }
};
std::unique_ptr<platform::Progress> Nobody(std::string_view, std::int64_t) {
  return std::make_unique<Unseen>();
}

// What an earlier program has left: the specified tables, with contacts, and nothing beside them.
class SchemaStepsTest : public StationTest {
 protected:
  static constexpr int kContacts = 300;

  SchemaStepsTest() : StationTest(false) {
    fs::remove(Database());
    Sql(ContentOf(SourceDir() / "data" / "schema.sql") + R"(
      INSERT INTO User (Call, Locator, Provincia) VALUES ('IK3ABC', 'JN65AA', 'VE');
      INSERT INTO Prefissi VALUES ('IK3', 'I', 15, 28, 'EU');
      WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 300)
      INSERT INTO Log (DataQso, Call, Banda, Modo)
        SELECT datetime('2001-02-03', i || ' minutes'), 'DL' || i, '  2 m', 'SSB' FROM n;)");
  }

  fs::path Database() const { return directory.Path() / "Brenvo.mdb"; }
  void Sql(const std::string& sql) const {
    sqlite3* file = nullptr;
    sqlite3_open(Database().c_str(), &file);
    char* message = nullptr;
    sqlite3_exec(file, sql.c_str(), nullptr, nullptr, &message);
    const std::string failure = message == nullptr ? "" : message;
    sqlite3_free(message);
    sqlite3_close(file);
    if (!failure.empty()) throw std::runtime_error(failure);
  }
  static std::string ContentOf(const fs::path& file) {
    std::ifstream in(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
  }
  void OpenFrame() {
    frame = &static_cast<frame::MainFrame&>(
        session.Windows.Adopt(std::make_unique<frame::MainFrame>(session)));
  }
  std::vector<std::string> Take() { return BringUpToDate(directory.Path(), session.Now(), Nobody); }
};

TEST_F(SchemaStepsTest, TheFirstStartTakesAllStepsAndGivesEveryContactItsNameAndStation) {
  OpenFrame();
  EXPECT_EQ(StepsTaken(session.Db), SchemaSteps().back().number);
  EXPECT_EQ(core::ContactsWithoutOrigin(session.Db), 0);
  EXPECT_THAT(Rows("select Stazione from LogOrigine group by Stazione"), ElementsAre("1"));
  const auto station = core::FindStation(session.Db, 1);
  ASSERT_TRUE(station);
  EXPECT_EQ(station->Call, "IK3ABC");
  EXPECT_EQ(station->Locator, "JN65AA");
  EXPECT_EQ(station->Country, "I");
  EXPECT_EQ(
      core::OriginOf(session.Db, 7)->uuid,
      core::DerivedName("IK3ABC", "DL7", base::DateTime::Of(2001, 2, 3, 0, 7), "  2 m", "SSB"));
  EXPECT_THAT(Rows("select Uuid from LogOrigine group by Uuid"), SizeIs(kContacts));
}

TEST_F(SchemaStepsTest, NothingIsDoneTwice) {
  EXPECT_THAT(Take(), SizeIs(SchemaSteps().size()));
  EXPECT_THAT(Take(), IsEmpty());
  OpenFrame();
  EXPECT_THAT(Rows("select Passo from Passi"), SizeIs(SchemaSteps().size()));
}

TEST_F(SchemaStepsTest, ADatabaseWithContactsHasItsCopyOfTheDayBeforeTheFirstStep) {
  Take();
  const auto copies = BackupCopies(directory.Path());
  ASSERT_THAT(copies, SizeIs(1));
  EXPECT_EQ(ContactsIn(copies[0]), kContacts);
  engine::Database copy = file::OpenDatabaseFile(copies[0].file);
  EXPECT_EQ(StepsTaken(copy), 0);
}

TEST_F(SchemaStepsTest, AnEmptyDatabaseNeedsNoCopy) {
  Sql("DELETE FROM Log");
  Take();
  EXPECT_THAT(BackupCopies(directory.Path()), IsEmpty());
}

TEST_F(SchemaStepsTest, ATableThatAnEarlierDeliveryBroughtKeepsItsRows) {
  Sql("CREATE TABLE \"LogAdif\" (\"QsoNr\" INTEGER, \"Campo\" TEXT, \"Valore\" TEXT);"
      "CREATE UNIQUE INDEX \"LogAdif.PrimaryKey\" ON \"LogAdif\" (\"QsoNr\","
      "rtrim(\"Campo\") COLLATE NOCASE); INSERT INTO LogAdif VALUES (1,'IOTA','EU-001')");
  OpenFrame();
  EXPECT_THAT(Rows("select Valore from LogAdif"), ElementsAre("EU-001"));
}

TEST_F(SchemaStepsTest, WhatLogFilesHaveSaidOfCardsMovesIntoTheirTable) {
  OpenFrame();
  session.CloseTables();
  Sql("DROP TABLE LogQsl; DROP TABLE EntitaCarichi; DROP TABLE EntitaRighe; DROP TABLE EntitaQso;"
      "DROP TABLE Gare; DROP TABLE GareBande; DROP TABLE GareQso;"
      "DROP TABLE LogConferme; DROP TABLE ConfermeRecord;"
      "DROP INDEX \"Log.FieldQsl\"; DROP INDEX \"Log.SquareQsl\";"
      "DROP INDEX \"Log.PrefissoQsl\"; DROP INDEX \"Log.ProvinciaQsl\";"
      "DELETE FROM Passi WHERE Passo>=5;"
      "UPDATE Log SET QslInviata=-1, QslRicevuta=-1 WHERE QsoNr<=9;"
      "INSERT INTO LogAdif VALUES (1,'QSL_SENT_VIA','b'), (1,'QSLSDATE','20010203'),"
      "(1,'IOTA','EU-001'), (2,'QSL_RCVD_VIA','D'), (3,'QSLRDATE','20240229'),"
      // What is no card that went out or came stays: a day that is none, a way that is none, a
      // card only asked for, one not sent, one received elsewhere.
      "(4,'QSLSDATE','20010231'), (5,'QSL_SENT_VIA','X'), (5,'QSLSDATE','20010203'),"
      "(6,'QSLSDATE','20010203'), (6,'QSL_SENT','R'), (10,'QSLSDATE','20010203'),"
      "(7,'QSLRDATE','20010203'), (7,'QSL_RCVD','N'), (8,'QSLRDATE','20010203'),"
      "(8,'QSL_RCVD','V')");
  Take();
  session.Open();
  EXPECT_THAT(Rows("select * from LogQsl order by QsoNr"),
              ElementsAre("1|I|B|03/02/2001", "2|R|D|", "3|R||29/02/2024", "8|R||03/02/2001"));
  EXPECT_THAT(Rows("select QsoNr,Campo from LogAdif where QsoNr<9 order by QsoNr,Campo"),
              ElementsAre("1|IOTA", "4|QSLSDATE", "5|QSL_SENT_VIA", "5|QSLSDATE", "6|QSL_SENT",
                          "6|QSLSDATE", "7|QSL_RCVD", "7|QSLRDATE", "8|QSL_RCVD"));
}

TEST_F(SchemaStepsTest, WhoeverKnowsOnlyTheOldTablesReadsAndWritesOn) {
  Take();
  Sql("INSERT INTO Log (DataQso, Call, Banda) VALUES ('2001-02-03 04:05:06', 'G0ABC', '  2 m');"
      "DELETE FROM Log WHERE QsoNr = 2");
  OpenFrame();
  EXPECT_THAT(Rows("select Count(*) from Log"), ElementsAre(std::to_string(kContacts)));
}

TEST_F(SchemaStepsTest, ACopyOfAnEarlierProgramIsBroughtUpToDateWhenItIsPutBack) {
  OpenFrame();
  Exec("delete * from Log where QsoNr>10");
  ASSERT_TRUE(RestoreBackup(session, BackupCopies(directory.Path())[0]));
  EXPECT_EQ(StepsTaken(session.Db), SchemaSteps().back().number);
  EXPECT_EQ(core::ContactsWithoutOrigin(session.Db), 0);
  EXPECT_THAT(Rows("select Count(*) from Log"), ElementsAre(std::to_string(kContacts)));
}

TEST_F(SchemaStepsTest, ACompactionKeepsWhatStandsBesideTheContacts) {
  OpenFrame();
  const auto origins = Rows("select * from LogOrigine");
  const auto stations = Rows("select * from Stazioni");
  const auto steps = Rows("select * from Passi");
  Event([this] { CompattaDatabase(session); });
  EXPECT_EQ(Rows("select * from LogOrigine"), origins);
  EXPECT_EQ(Rows("select * from Stazioni"), stations);
  EXPECT_EQ(Rows("select * from Passi"), steps);
  EXPECT_THAT(origins, SizeIs(kContacts));
}

// From the n-th on nothing that is written reaches the disk, as for a program that was killed
// there; whatever n, the next start finds a sound file and goes on.
TEST_F(SchemaStepsTest, CutShortAtAnyMomentTheNextStartGoesOn) {
  const fs::path before = directory.Path() / "before.mdb";
  fs::copy_file(Database(), before);
  std::set<int> reached;
  for (int n = 0;; n += 17) {
    SCOPED_TRACE(n);
    for (const char* suffix : {"", "-wal", "-shm"}) fs::remove(Database().string() + suffix);
    fs::remove_all(directory.Path() / "Backup");
    fs::copy_file(before, Database());
    bool cut = false;
    {
      RecordedFiles files;
      files.FailFrom(n, SQLITE_FULL);
      try {
        Take();
      } catch (const engine::DatabaseError&) {
        cut = true;
      }
    }
    ASSERT_EQ(IntegrityOf(Database()), "ok");
    {
      engine::Database left = file::OpenDatabaseFile(Database());
      reached.insert(StepsTaken(left));
    }
    Take();
    engine::Database db = file::OpenDatabaseFile(Database());
    ASSERT_EQ(StepsTaken(db), SchemaSteps().back().number);
    core::AdoptContacts(db, [](std::int64_t) {});
    db.Close();
    ASSERT_EQ(file::RowsIn(Database(), "LogOrigine"), kContacts);
    if (!cut) break;
  }
  EXPECT_THAT(reached, ElementsAre(0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 13));
}

}  // namespace
}  // namespace brenvo::upkeep
