// A journal that an unclean end has left, beside a file that has been put in the place of its own.
#include "file/journal.h"

#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <random>

#include "file/online_copy.h"
#include "tests/file/contacts.h"
#include "tests/support/golden.h"
#include "tests/support/integrity.h"
#include "tests/support/other_program.h"
#include "tests/support/thoroughly.h"

namespace brenvo::file {
namespace {

namespace fs = std::filesystem;

class JournalTest : public testing::Test {
 protected:
  fs::path File() const { return scratch_.File(); }
  fs::path JournalFile() const { return scratch_.File().string() + "-wal"; }
  fs::path Path(const char* name) const { return scratch_.Path() / name; }

  static void Store(engine::Database& database, int from, int to) {
    database.BeginTrans();
    for (int i = from; i < to; ++i) {
      database.Execute("insert into Log (DataQso, Call, Banda) values ('2001-02-03 04:05:00','I" +
                       std::to_string(i) + "','  2 m')");
    }
    database.CommitTrans();
  }
  // A station that ends without closing anything.
  void DieAfter(const std::function<void(engine::Database&)>& work) const {
    DieAfter(File(), work);
  }
  static void DieAfter(const fs::path& file, const std::function<void(engine::Database&)>& work) {
    const pid_t child = fork();
    if (child == 0) {
      try {
        engine::Database database = OpenDatabaseFile(file);
        work(database);
        kill(getpid(), SIGKILL);
      } catch (const std::exception& failure) {
        std::fprintf(stderr, "%s\n", failure.what());
      }
      _exit(1);
    }
    ExpectKilled(child);
  }
  static void ExpectKilled(pid_t child) {
    int status = 0;
    waitpid(child, &status, 0);
    ASSERT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL) << "it ended by itself";
  }
  // The day's copy.
  void CopyTo(const fs::path& to) const {
    OnlineCopy copy(File(), to);
    while (copy.Step(1000)) {
    }
    ASSERT_TRUE(copy.Verify([] { return true; }));
  }
  // By hand, as a file manager does.
  void PutInPlace(const fs::path& copy) const {
    fs::copy_file(copy, File(), fs::copy_options::overwrite_existing);
  }
  static std::int64_t Count(const fs::path& file) {
    engine::Database database = OpenDatabaseFile(file);
    return database.OpenSnapshot("select count(*) from Log")->Field(0).Integer();
  }
  // Refused, and nothing has been written: what stands there can all be set aside.
  void ExpectForeign() const {
    const std::string file = ReadBytes(File()), journal = ReadBytes(JournalFile());
    EXPECT_EQ(JudgeJournal(File()), Journal::kForeign);
    EXPECT_THROW(OpenDatabaseFile(File()), JournalFailure);
    EXPECT_THROW(OnlineCopy(File(), Path("copy.mdb")), JournalFailure);
    EXPECT_FALSE(fs::exists(Path("copy.mdb")));
    EXPECT_EQ(ReadBytes(File()), file);
    EXPECT_EQ(ReadBytes(JournalFile()), journal);
  }

  ScratchDatabase scratch_;
};

TEST_F(JournalTest, OfTheFileIsAppliedAfterAnUncleanEnd) {
  DieAfter([](engine::Database& database) { Store(database, 0, 10); });
  EXPECT_EQ(JudgeJournal(File()), Journal::kOwn);
  EXPECT_EQ(Count(File()), 10);
  EXPECT_EQ(JudgeJournal(File()), Journal::kNone);
}

TEST_F(JournalTest, BesideACopyThatWasPutInPlaceByHandIsNotMixedIn) {
  {
    engine::Database database = scratch_.Open();
    Store(database, 0, 10);
  }
  CopyTo(Path("day.mdb"));
  {
    engine::Database database = scratch_.Open();
    Store(database, 10, 20);
  }
  DieAfter([](engine::Database& database) { Store(database, 20, 30); });
  PutInPlace(Path("day.mdb"));
  ExpectForeign();
  // Without the journal it is what the operator wanted.
  fs::remove(JournalFile());
  EXPECT_EQ(Count(File()), 10);
}

TEST_F(JournalTest, BesideACopyMadeInTheSameSessionIsNotMixedIn) {
  DieAfter([this](engine::Database& database) {
    Store(database, 0, 10);
    CopyTo(Path("day.mdb"));
    Store(database, 10, 20);
  });
  PutInPlace(Path("day.mdb"));
  ExpectForeign();
}

TEST_F(JournalTest, BesideAnOlderFileOfTheSameNameIsNotMixedIn) {
  {
    engine::Database database = scratch_.Open();
    Store(database, 0, 10);
  }
  fs::copy_file(File(), Path("by hand.mdb"));
  {
    engine::Database database = scratch_.Open();
    Store(database, 10, 20);
  }
  DieAfter([](engine::Database& database) { Store(database, 20, 30); });
  PutInPlace(Path("by hand.mdb"));
  ExpectForeign();
}

TEST_F(JournalTest, BesideACompactedFileIsNotMixedIn) {
  {
    engine::Database database = scratch_.Open();
    Store(database, 0, 10);
  }
  CompactDatabase(File(), Path("BrenvoNEW.MDB"));
  DieAfter([](engine::Database& database) { Store(database, 10, 20); });
  PutInPlace(Path("BrenvoNEW.MDB"));
  ExpectForeign();
}

TEST_F(JournalTest, BesideAFreshlyDeliveredFileIsNotMixedIn) {
  fs::copy_file(File(), Path("fresh.mdb"));
  {
    engine::Database database = scratch_.Open();
    Store(database, 0, 10);
  }
  DieAfter([](engine::Database& database) { Store(database, 10, 20); });
  PutInPlace(Path("fresh.mdb"));
  ExpectForeign();
}

TEST_F(JournalTest, BesideEitherOfTwoCopiesIsTheOthersAlone) {
  {
    engine::Database database = scratch_.Open();
    Store(database, 0, 10);
  }
  CopyTo(Path("one.mdb"));
  CopyTo(Path("two.mdb"));
  PutInPlace(Path("one.mdb"));
  DieAfter([](engine::Database& database) { Store(database, 10, 20); });
  PutInPlace(Path("two.mdb"));
  ExpectForeign();
  PutInPlace(Path("one.mdb"));
  EXPECT_EQ(Count(File()), 20);
}

TEST_F(JournalTest, ThatHasLongBeenWrittenBackInPartIsTheFilesOwn) {
  // More than is written back at a time, again and again.
  DieAfter([](engine::Database& database) {
    for (int i = 0; i < 6; ++i) {
      Store(database, i * 1000, (i + 1) * 1000);
      database.Execute("update Log set Qra='" + std::string(3000, 'A') + "' where QsoNr>" +
                       std::to_string(i * 1000));
    }
  });
  EXPECT_EQ(JudgeJournal(File()), Journal::kOwn);
  EXPECT_EQ(Count(File()), 6000);
}

TEST_F(JournalTest, ThatBeganAnewIsNotThatOfACopyMadeBefore) {
  DieAfter([this](engine::Database& database) {
    const auto change = [&](char letter) {  // a page each: all of it is written back at once
      database.Execute("update Log set Qra='" + std::string(3500, letter) + "'");
    };
    Store(database, 0, 1200);
    change('A');
    fs::copy_file(File(), Path("by hand.mdb"));
    change('B');
    Store(database, 1200, 1210);
  });
  EXPECT_EQ(JudgeJournal(File()), Journal::kOwn);
  PutInPlace(Path("by hand.mdb"));
  ExpectForeign();
}

TEST_F(JournalTest, IsKnownWhileRowsHoldItFromBeginningAnew) {
  DieAfter([](engine::Database& database) {
    Store(database, 0, 3000);
    const auto shown = database.OpenDynaset("select * from Log order by Call");
    for (int i = 0; i < 100; ++i) {
      database.Execute("update Modi set Modo='CW'");
      database.Execute("insert into Modi (Codice, Modo) values (" + std::to_string(i) + ",'" +
                       std::string(60000, 'x') + "')");
    }
  });
  EXPECT_EQ(JudgeJournal(File()), Journal::kOwn);
  EXPECT_EQ(Count(File()), 3000);
}

TEST_F(JournalTest, OfAToolThatGivesNoMarksIsApplied) {
  const auto die = [this](const char* sql) {
    const pid_t child = fork();
    if (child == 0) {
      sqlite3* tool = nullptr;
      sqlite3_open(File().c_str(), &tool);
      const int code = sqlite3_exec(tool, sql, nullptr, nullptr, nullptr);
      if (code == SQLITE_OK) kill(getpid(), SIGKILL);
      _exit(1);
    }
    ExpectKilled(child);
    EXPECT_EQ(JudgeJournal(File()), Journal::kOwn) << sql;
  };
  scratch_.Open().Close();
  die("INSERT INTO Log (Call) VALUES ('IK3ABC')");
  EXPECT_EQ(Count(File()), 1);
  die("WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 5000) "
      "INSERT INTO Log (Call) SELECT 'I' || i FROM n");
  EXPECT_EQ(Count(File()), 5001);
  die("CREATE TABLE Other (a); CREATE INDEX OtherA ON Other (a); DROP TABLE Other");
  EXPECT_EQ(Count(File()), 5001);
  die("DELETE FROM Log; VACUUM");
  EXPECT_EQ(Count(File()), 0);
}

TEST_F(JournalTest, OfAProgramThatIsAtWorkIsNoObstacle) {
  engine::Database first = scratch_.Open();
  Store(first, 0, 10);
  engine::Database second = scratch_.Open();
  Store(second, 10, 20);
  EXPECT_EQ(JudgeJournal(File()), Journal::kOwn);
  EXPECT_EQ(first.OpenSnapshot("select count(*) from Log")->Field(0).Integer(), 20);
}

TEST_F(JournalTest, ThatIsNoneIsNotWrittenOver) {
  {
    engine::Database database = scratch_.Open();
    Store(database, 0, 10);
  }
  std::mt19937 random(1);
  std::string noise(20000, '\0');
  for (char& byte : noise) byte = static_cast<char>(random());
  std::ofstream(JournalFile(), std::ios::binary) << noise;
  ExpectForeign();
}

TEST_F(JournalTest, ThatADiskHasOnlyMadeReadyIsNone) {
  {
    engine::Database database = scratch_.Open();
    Store(database, 0, 10);
  }
  for (const std::size_t size : {0, 1, 32, 20000}) {
    std::ofstream(JournalFile(), std::ios::binary) << std::string(size, '\0');
    EXPECT_EQ(JudgeJournal(File()), Journal::kNone) << size;
    EXPECT_EQ(Count(File()), 10) << size;
  }
}

TEST_F(JournalTest, ThatEndsInTheMiddleCountsAsFarAsItIsWhole) {
  DieAfter([](engine::Database& database) {
    for (int i = 0; i < 10; ++i) Store(database, i, i + 1);
  });
  const std::string whole = ReadBytes(JournalFile());
  const std::string file = ReadBytes(File());
  std::int64_t last = 0;
  for (std::size_t size = 0; size <= whole.size(); size += 9000) {
    std::ofstream(File(), std::ios::binary) << file;
    std::ofstream(JournalFile(), std::ios::binary) << whole.substr(0, size);
    EXPECT_NE(JudgeJournal(File()), Journal::kForeign) << size;
    const std::int64_t count = Count(File());
    EXPECT_GE(count, last) << size;
    last = count;
  }
  EXPECT_GE(last, 9);
}

TEST_F(JournalTest, ThatDamagesASoundFileIsNotApplied) {
  {
    engine::Database database = scratch_.Open();
    Store(database, 0, 2000);
  }
  // Pages of a table in each other's place, in a journal that is whole.
  scratch_.Sql("PRAGMA wal_checkpoint");
  const pid_t child = fork();
  if (child == 0) {
    sqlite3* tool = nullptr;
    sqlite3_open(File().c_str(), &tool);
    sqlite3_exec(tool,
                 "PRAGMA writable_schema = ON;"
                 "UPDATE sqlite_schema SET rootpage = (SELECT rootpage FROM sqlite_schema WHERE "
                 "name = 'Log') WHERE name = 'Country'",
                 nullptr, nullptr, nullptr);
    kill(getpid(), SIGKILL);
  }
  ExpectKilled(child);
  ASSERT_EQ(JudgeJournal(File()), Journal::kOwn);
  const std::string file = ReadBytes(File()), journal = ReadBytes(JournalFile());
  try {
    OpenDatabaseFile(File());
    FAIL();
  } catch (const JournalFailure& failure) {
    EXPECT_EQ(failure.Number, 3343);
    EXPECT_NE(failure.Description.find("che lo danneggia"), std::string::npos)
        << failure.Description;
  }
  EXPECT_EQ(ReadBytes(File()), file);
  EXPECT_EQ(ReadBytes(JournalFile()), journal);
}

TEST_F(JournalTest, OfAFileThatWasDamagedBeforeIsNotBlamed) {
  {
    engine::Database database = scratch_.Open();
    Store(database, 0, 2000);
  }
  std::string bytes = ReadBytes(File());
  bytes.replace(bytes.size() / 2 / 4096 * 4096, 4096, 4096, '\x5A');
  std::ofstream(File(), std::ios::binary) << bytes;
  DieAfter([](engine::Database& database) {
    database.Execute("insert into Modi (Codice, Modo) values (1, 'CW')");
  });
  EXPECT_NO_THROW(OpenDatabaseFile(File()));
}

TEST_F(JournalTest, TheMarkThatFollowsIsMadeOfTheFileAndOfChance) {
  const FileMark file{7, 100, 3};
  std::set<std::uint32_t> marks;
  for (int chance = 0; chance < 0x10000; ++chance) {
    const auto low = static_cast<std::uint16_t>(chance);
    const std::uint32_t mark = NextMark(file, low);
    ASSERT_NE(mark, 0u);
    marks.insert(mark);
  }
  EXPECT_GE(marks.size(), 0xFFFFu);
  int same = 0;
  for (int chance = 0; chance < 0x10000; ++chance) {
    const auto low = static_cast<std::uint16_t>(chance);
    for (const FileMark& other : {FileMark{8, 100, 3}, FileMark{7, 101, 3}, FileMark{7, 100, 4}}) {
      same += NextMark(other, low) == NextMark(file, low) ? 1 : 0;
    }
  }
  EXPECT_LT(same, 20);  // by chance, three
}

// What a station does to its file, without an end: small changes and large ones, so that it is
// killed while it stores, while it writes back, and while a journal begins anew. It says so once
// it has begun.
[[noreturn]] void WorkForEver(const fs::path& file, unsigned seed, int begun) {
  std::mt19937 random(seed);
  const auto below = [&](int limit) {
    return std::uniform_int_distribution<int>(0, limit - 1)(random);
  };
  const auto letters = [&](int most) {
    return std::string(static_cast<std::size_t>(below(most)), 'Q');
  };
  try {
    engine::Database database = OpenDatabaseFile(file);
    for (int n = 0;; ++n) {
      if (n == 1 && write(begun, "x", 1) != 1) _exit(1);
      const int what = below(20);
      if (what == 0) {
        database.Close();
        database = OpenDatabaseFile(file);
      } else if (what < 4) {
        database.BeginTrans();
        database.Execute("update Log set Qra='" + letters(900) + "' where QsoNr<" +
                         std::to_string(below(1000)));
        database.CommitTrans();
      } else if (what == 4) {
        database.Execute("delete * from Log where QsoNr<" + std::to_string(below(200)));
      } else {
        database.Execute(
            "insert into Log (DataQso, Call, Banda, Qra) values ('2001-02-03 04:05:00','I" +
            std::to_string(random()) + "','  2 m','" + letters(3000) + "')");
      }
    }
  } catch (const std::exception& failure) {
    std::fprintf(stderr, "%s\n", failure.what());
  }
  _exit(1);
}

TEST_F(JournalTest, ThatBelongsIsNeverSetAsideHoweverOftenTheStationIsKilled) {
  const unsigned kills = Thoroughly(60u, 2000u);
  fs::copy_file(File(), Path("other.mdb"));
  {
    engine::Database database = scratch_.Open();
    Store(database, 0, 1000);
  }
  std::mt19937 random(1);
  std::uniform_int_distribution<useconds_t> moment(0, 15000);
  unsigned journals = 0, noticed = 0;
  for (unsigned n = 0; n < kills; ++n) {
    SCOPED_TRACE(n);
    int ends[2];
    ASSERT_EQ(pipe(ends), 0);
    const pid_t child = fork();
    if (child == 0) WorkForEver(File(), n, ends[1]);
    close(ends[1]);
    char begun = 0;
    ASSERT_EQ(read(ends[0], &begun, 1), 1);
    close(ends[0]);
    usleep(moment(random));
    kill(child, SIGKILL);
    ExpectKilled(child);
    const Journal journal = JudgeJournal(File());
    ASSERT_NE(journal, Journal::kForeign);
    if (journal == Journal::kOwn) {
      ++journals;
      // The same journal beside another file, of the same origin.
      fs::copy_file(JournalFile(), Path("other.mdb-wal"), fs::copy_options::overwrite_existing);
      if (JudgeJournal(Path("other.mdb")) == Journal::kForeign) ++noticed;
    }
    // Every other time the next station goes on in the same journal.
    if (n % 2 == 0) {
      ASSERT_NO_THROW(OpenDatabaseFile(File()));
    }
    if (n % 20 == 0) {
      ASSERT_EQ(IntegrityOf(File()), "ok");
    }
  }
  std::printf("%u kills, %u journals, %u of them noticed beside another file\n", kills, journals,
              noticed);
  // How many stations leave one is the machine's doing; some do.
  EXPECT_GT(journals, kills / 20);
  // One in 65,536 is missed.
  EXPECT_GE(noticed + 1, journals);
}

}  // namespace
}  // namespace brenvo::file
