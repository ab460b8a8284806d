// Opening, closing, transactions, compaction, and what survives a kill.
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <fstream>
#include <functional>

#include "file/connection.h"
#include "file/database_file.h"
#include "tests/file/contacts.h"

namespace brenvo::file {
namespace {

namespace fs = std::filesystem;
using Strings = std::vector<std::string>;

class DatabaseTest : public ::testing::Test {
 protected:
  void Overwrite(std::size_t at, const std::string& bytes) {
    std::fstream file(scratch_.File(), std::ios::in | std::ios::out | std::ios::binary);
    file.seekp(static_cast<std::streamoff>(at));
    file << bytes;
  }
  int Open() {
    return ErrorOf([&] { scratch_.Open(); });
  }
  std::size_t Files() const {
    const std::filesystem::directory_iterator files(scratch_.Path());
    return static_cast<std::size_t>(std::distance(begin(files), end(files)));
  }

  ScratchDatabase scratch_;
};

TEST_F(DatabaseTest, AMissingFileIsNotMade) {
  const std::filesystem::path file = scratch_.Path() / "Altro.mdb";
  EXPECT_EQ(ErrorOf([&] { OpenDatabaseFile(file); }), 3024);
  EXPECT_FALSE(std::filesystem::exists(file));
}

TEST_F(DatabaseTest, AFileOfAnotherKindIsRefused) {
  std::ofstream(scratch_.File()) << std::string(8192, 'x');
  EXPECT_EQ(Open(), 3343);
  std::ofstream(scratch_.File()).close();
  EXPECT_EQ(Open(), 3343);
  EXPECT_EQ(ErrorOf([&] { OpenDatabaseFile(scratch_.Path()); }), 3343);
}

TEST_F(DatabaseTest, ADatabaseOfAnotherProgramIsRefused) {
  scratch_.Sql("PRAGMA application_id = 5");
  EXPECT_EQ(Open(), 3343);
}

TEST_F(DatabaseTest, ADatabaseOfAnotherVersionIsRefused) {
  scratch_.Sql("PRAGMA user_version = 2");
  EXPECT_EQ(Open(), 3343);
}

TEST_F(DatabaseTest, ADamagedFileIsToldWhenItIsMet) {
  Overwrite(100, std::string(4000, '\xAA'));
  EXPECT_EQ(Open(), 3343);
}

TEST_F(DatabaseTest, ADamagedTableIsToldWhenItIsRead) {
  scratch_.Sql(
      "INSERT INTO Modi VALUES (1, 'CW');"
      "CREATE TABLE place AS SELECT rootpage FROM sqlite_schema WHERE name = 'Modi';");
  sqlite3* file = nullptr;
  sqlite3_open(scratch_.File().c_str(), &file);
  sqlite3_stmt* statement = nullptr;
  sqlite3_prepare_v2(file, "SELECT rootpage FROM place", -1, &statement, nullptr);
  sqlite3_step(statement);
  const auto page = static_cast<std::size_t>(sqlite3_column_int(statement, 0));
  sqlite3_finalize(statement);
  sqlite3_close(file);
  Overwrite((page - 1) * 4096, std::string(4096, '\xAA'));
  engine::Database db = scratch_.Open();
  EXPECT_EQ(ErrorOf([&] { Select(db, "select * from Modi"); }), 3343);
}

TEST_F(DatabaseTest, AFileLockedByAnotherProgramIsTold) {
  engine::Database db = scratch_.Open();
  sqlite3* other = nullptr;
  sqlite3_open(scratch_.File().c_str(), &other);
  sqlite3_exec(other, "BEGIN IMMEDIATE", nullptr, nullptr, nullptr);
  EXPECT_EQ(ErrorOf([&] { AddContact(db, 1, "I1AAA"); }), 3260);
  sqlite3_exec(other, "ROLLBACK", nullptr, nullptr, nullptr);
  sqlite3_close(other);
  EXPECT_EQ(AddContact(db, 1, "I1AAA").key, 1);
}

TEST_F(DatabaseTest, AWriteThatTheDiskRefusesIsToldAndHarmsNothing) {
  engine::Database db = scratch_.Open();
  AddContact(db, 1, "I1AAA");
  // As full as a file that may not grow.
  rlimit old{};
  getrlimit(RLIMIT_FSIZE, &old);
  signal(SIGXFSZ, SIG_IGN);
  const rlimit low{4096, old.rlim_max};
  setrlimit(RLIMIT_FSIZE, &low);
  const int error = ErrorOf([&] { Add(db, "Log", {{"Note", std::string(200000, 'x')}}); });
  setrlimit(RLIMIT_FSIZE, &old);
  EXPECT_EQ(error, 3146);
  EXPECT_EQ(Select(db, "select count(*) from Log"), Strings{"1"});
}

TEST_F(DatabaseTest, FailuresOfTheFileHaveTheEnginesNumbers) {
  const std::pair<int, int> cases[] = {
      {SQLITE_FULL, 3026},
      {SQLITE_READONLY, 3027},
      {SQLITE_BUSY, 3260},
      {SQLITE_BUSY_SNAPSHOT, 3260},
      {SQLITE_LOCKED, 3260},
      {SQLITE_CORRUPT, 3343},
      {SQLITE_NOTADB, 3343},
      {SQLITE_CONSTRAINT_UNIQUE, 3022},
      {SQLITE_CONSTRAINT_PRIMARYKEY, 3022},
      {SQLITE_CONSTRAINT_NOTNULL, 3146},
      {SQLITE_IOERR, 3146},
      {SQLITE_AUTH, 3219},
  };
  for (const auto& [code, number] : cases) EXPECT_EQ(FailureOf(code, "").Number, number) << code;
}

TEST_F(DatabaseTest, WhatTheSystemRefusesIsToldByItsCause) {
  const auto told = [](int code, int systemError) {
    return FailureOf(code, "disk I/O error", systemError);
  };
  EXPECT_EQ(told(SQLITE_CANTOPEN, ENOSPC).Number, 3026);
  EXPECT_EQ(told(SQLITE_CANTOPEN, EDQUOT).Number, 3026);
  EXPECT_EQ(told(SQLITE_CANTOPEN, EACCES).Number, 3027);
  EXPECT_EQ(told(SQLITE_CANTOPEN, EMFILE).Description,
            "Nella directory del file non si può scrivere: troppi file aperti.");
  EXPECT_EQ(told(SQLITE_IOERR_SHMSIZE, 0).Number, 3026);
  EXPECT_EQ(told(SQLITE_IOERR_WRITE, ENOSPC).Number, 3026);
  EXPECT_EQ(told(SQLITE_IOERR_READ, EIO).Description,
            "Errore del disco (disk I/O error): controllare il disco su cui sta il database, e il "
            "suo collegamento.");
}

TEST_F(DatabaseTest, ACounterAtItsHighestNumberIsNoFullDisk) {
  scratch_.Sql("INSERT INTO Log (QsoNr, Call) VALUES (9223372036854775807, 'I1AAA')");
  engine::Database db = scratch_.Open();
  const auto expect = [](const std::function<void()>& work) {
    try {
      work();
      ADD_FAILURE() << "it was stored";
    } catch (const engine::DatabaseError& failure) {
      EXPECT_EQ(failure.Number, 3146);
      EXPECT_EQ(failure.Description,
                "Il contatore della tabella 'Log' ha raggiunto il numero più alto, che un altro "
                "programma vi ha scritto: nessuna riga si può più aggiungere. Ripristinare una "
                "copia di sicurezza.");
    }
  };
  expect([&] { AddContact(db, 1, "I1BBB"); });
  expect([&] { db.Execute("insert into Log (Call) values ('I1BBB')"); });
  expect([&] { db.OpenAppender("Log")->Append({engine::Value(), "I1BBB"}); });
  // The number is not given again.
  db.Execute("delete * from Log");
  expect([&] { AddContact(db, 1, "I1BBB"); });
}

TEST_F(DatabaseTest, APathThatIsTooLongIsToldAsWhatItIs) {
  fs::path deep = scratch_.Path();
  for (int i = 0; i < 3; ++i) deep /= std::string(170, 'a');
  fs::create_directories(deep);
  fs::copy_file(scratch_.File(), deep / "Brenvo.mdb");
  EXPECT_EQ(ErrorOf([&] { OpenDatabaseFile(deep / "Brenvo.mdb"); }), 3044);
  // As long as it may be.
  fs::path most = scratch_.Path();
  while (most.native().size() < 504 - sizeof "/Brenvo.mdb" - 100) most /= std::string(99, 'a');
  const std::size_t rest = 504 - sizeof "/Brenvo.mdb" - most.native().size();
  most /= std::string(rest, 'a');
  fs::create_directories(most);
  fs::copy_file(scratch_.File(), most / "Brenvo.mdb");
  EXPECT_EQ((most / "Brenvo.mdb").native().size(), 504u);
  engine::Database db = OpenDatabaseFile(most / "Brenvo.mdb");
  EXPECT_EQ(AddContact(db, 1, "I1AAA").key, 1);
}

TEST_F(DatabaseTest, AFileThatLeadsNowhereIsToldAsWhatItIs) {
  const fs::path file = scratch_.Path() / "giro.mdb";
  fs::create_symlink("giro.mdb", file);
  try {
    OpenDatabaseFile(file);
    FAIL();
  } catch (const engine::DatabaseError& failure) {
    EXPECT_STREQ(failure.what(),
                 "75 - Errore di accesso a 'giro.mdb' (collegamenti che rimandano l'uno "
                 "all'altro).");
  }
}

TEST_F(DatabaseTest, ClosingLeavesOneFile) {
  engine::Database db = scratch_.Open();
  AddContact(db, 1, "I1AAA");
  EXPECT_GT(Files(), 1U);
  db.Close();
  EXPECT_EQ(Files(), 1U);
}

TEST_F(DatabaseTest, RecordsetsOfAClosedDatabaseAnswerWithAnError) {
  engine::Database db = scratch_.Open();
  AddContact(db, 1, "I1AAA");
  AddContact(db, 2, "I1AAA");
  const auto table = db.OpenTable("Log");
  const auto dynaset = db.OpenDynaset("select * from Log");
  const auto snapshot = db.OpenSnapshot("select * from Log");
  db.Close();
  EXPECT_FALSE(db.IsOpen());
  for (engine::Recordset* rows : {static_cast<engine::Recordset*>(table.get()),
                                  static_cast<engine::Recordset*>(dynaset.get()),
                                  static_cast<engine::Recordset*>(snapshot.get())}) {
    EXPECT_EQ(ErrorOf([&] { rows->Field("Call"); }), 3420);
    EXPECT_EQ(ErrorOf([&] { rows->MoveNext(); }), 3420);
    EXPECT_EQ(ErrorOf([&] { rows->EOF_(); }), 3420);
    EXPECT_EQ(ErrorOf([&] { rows->RecordCount(); }), 3420);
    rows->Close();
  }
  EXPECT_EQ(ErrorOf([&] { db.OpenTable("Log"); }), 3420);
  EXPECT_EQ(ErrorOf([&] { db.Execute("delete from Log"); }), 3420);
  EXPECT_EQ(ErrorOf([] { engine::Database().OpenSnapshot("select * from Log"); }), 3420);
}

TEST_F(DatabaseTest, AMovedDatabaseClosesWhatItHeld) {
  ScratchDatabase other;
  engine::Database db = scratch_.Open();
  const auto rows = db.OpenTable("Log");
  db = other.Open();
  EXPECT_EQ(ErrorOf([&] { rows->MoveFirst(); }), 3420);
  EXPECT_TRUE(db.IsOpen());
}

TEST_F(DatabaseTest, ACommitKeepsAndARollbackDrops) {
  engine::Database db = scratch_.Open();
  db.BeginTrans();
  EXPECT_TRUE(db.InTransaction());
  AddContact(db, 1, "I1AAA");
  db.CommitTrans();
  EXPECT_FALSE(db.InTransaction());
  db.BeginTrans();
  AddContact(db, 2, "I1BBB");
  db.Execute("DELETE FROM Log WHERE Call='I1AAA'");
  db.Rollback();
  EXPECT_EQ(Select(db, "select Call from Log"), Strings{"I1AAA"});
}

TEST_F(DatabaseTest, ARepeatedKeyInsideATransactionLeavesTheRestOfIt) {
  engine::Database db = scratch_.Open();
  db.BeginTrans();
  AddContact(db, 1, "I1AAA");
  EXPECT_EQ(ErrorOf([&] { AddContact(db, 1, "I1AAA"); }), 3022);
  EXPECT_TRUE(db.InTransaction());
  AddContact(db, 2, "I1BBB");
  db.CommitTrans();
  EXPECT_EQ(Select(db, "select Call from Log"), (Strings{"I1AAA", "I1BBB"}));
}

TEST_F(DatabaseTest, AnOpenTransactionGoesWithTheDatabase) {
  engine::Database db = scratch_.Open();
  AddContact(db, 1, "I1AAA");
  db.BeginTrans();
  AddContact(db, 2, "I1BBB");
  const auto rows = db.OpenSnapshot("select * from Log");
  db.Close();
  db = scratch_.Open();
  EXPECT_EQ(Select(db, "select Call from Log"), Strings{"I1AAA"});
}

TEST_F(DatabaseTest, TransactionsDoNotNestAndDoNotEndTwice) {
  engine::Database db = scratch_.Open();
  EXPECT_EQ(ErrorOf([&] { db.CommitTrans(); }), 3034);
  EXPECT_EQ(ErrorOf([&] { db.Rollback(); }), 3034);
  db.BeginTrans();
  EXPECT_EQ(ErrorOf([&] { db.BeginTrans(); }), 3219);
  db.CommitTrans();
}

TEST_F(DatabaseTest, ACompactedFileHoldsTheSameAndCountsOn) {
  engine::Database db = scratch_.Open();
  AddContact(db, 1, "I1AAA");
  AddContact(db, 2, "I1BBB");
  db.Execute("DELETE FROM Log WHERE QsoNr=2");
  db.Close();
  const std::filesystem::path compacted = scratch_.Path() / "BrenvoNEW.MDB";
  CompactDatabase(scratch_.File(), compacted);
  db = OpenDatabaseFile(compacted);
  EXPECT_EQ(Select(db, "select Call from Log"), Strings{"I1AAA"});
  EXPECT_EQ(AddContact(db, 3, "I1CCC").key, 3);
  db.OpenTable("Contest")->SetIndex("PrimaryKey");
}

TEST_F(DatabaseTest, CompactionNeedsASourceAndNoTarget) {
  const std::filesystem::path target = scratch_.Path() / "BrenvoNEW.MDB";
  EXPECT_EQ(ErrorOf([&] { CompactDatabase(scratch_.Path() / "x.mdb", target); }), 3024);
  std::ofstream(target) << "x";
  EXPECT_EQ(ErrorOf([&] { CompactDatabase(scratch_.File(), target); }), 3204);
  EXPECT_EQ(std::filesystem::file_size(target), 1U);
}

TEST_F(DatabaseTest, OtherToolsReadAndWriteTheFile) {
  scratch_.Sql(
      "INSERT INTO Log (DataQso, Call, Banda, QslRicevuta) "
      "VALUES ('2001-02-03 04:05:06', 'i3abc ', '  2 m', -1)");
  engine::Database db = scratch_.Open();
  const auto rows = db.OpenSnapshot("select * from Log where Call='I3ABC' and QslRicevuta");
  EXPECT_EQ(rows->Field("DataQso"), engine::Value(base::DateTime::Of(2001, 2, 3, 4, 5, 6)));
  AddContact(db, 1, "K1XYZ");
  scratch_.Sql("UPDATE Log SET Call = 'K1ZZZ' WHERE Call = 'K1XYZ'; PRAGMA integrity_check;");
  EXPECT_EQ(Select(db, "select Call from Log where Call='K1ZZZ'"), Strings{"K1ZZZ"});
}

// A child stores contacts and tells of each whose Update has returned; it is killed in the middle.
TEST_F(DatabaseTest, EveryContactWhoseUpdateReturnedSurvivesAKill) {
  for (int round = 0; round < 3; ++round) {
    int channel[2];
    ASSERT_EQ(pipe(channel), 0);
    const pid_t child = fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
      engine::Database db = scratch_.Open();
      for (int minute = 0;; ++minute) {
        const std::int64_t key = AddContact(db, minute + round * 100000, "I1AAA").key;
        if (write(channel[1], &key, sizeof(key)) != sizeof(key)) _exit(1);
      }
    }
    close(channel[1]);
    std::int64_t last = 0;
    for (int i = 0; i < 25 + round; ++i) {
      ASSERT_EQ(read(channel[0], &last, sizeof(last)), static_cast<ssize_t>(sizeof(last)));
    }
    kill(child, SIGKILL);
    for (std::int64_t key; read(channel[0], &key, sizeof(key)) == sizeof(key);) last = key;
    close(channel[0]);
    waitpid(child, nullptr, 0);

    engine::Database db = scratch_.Open();
    const auto rows = db.OpenSnapshot("select QsoNr from Log order by QsoNr");
    rows->MoveLast();
    EXPECT_GE(rows->RecordCount(), last);
    EXPECT_LE(rows->RecordCount(), last + 1);
    EXPECT_EQ(rows->RecordCount(), rows->Field(0).Integer());
  }
}

// A power cut leaves what was synced: each Update has synced the journal before it returns.
TEST_F(DatabaseTest, WhatTheJournalHoldsAloneIsRecovered) {
  engine::Database db = scratch_.Open();
  AddContact(db, 1, "I1AAA");
  ScratchDirectory after;
  for (const char* suffix : {"", "-wal"}) {
    std::filesystem::copy_file(scratch_.File().string() + suffix,
                               after.Path() / (std::string("Brenvo.mdb") + suffix));
  }
  engine::Database recovered = OpenDatabaseFile(after.Path() / "Brenvo.mdb");
  EXPECT_EQ(Select(recovered, "select Call from Log"), Strings{"I1AAA"});
}

}  // namespace
}  // namespace brenvo::file
