// Work of the file that somebody watches and may stop.
#include <gtest/gtest.h>

#include <stdexcept>

#include "tests/file/contacts.h"

namespace brenvo::file {
namespace {

constexpr int kRows = 4096;

class WatchTest : public testing::Test {
 protected:
  WatchTest() {
    db.Execute("insert into Log (DataQso,Call) values ('01/01/2001','A')");
    for (int rows = 1; rows < kRows; rows *= 2) {
      db.Execute("insert into Log (DataQso,Call) select DataQso,Call+'" + std::to_string(rows) +
                 "' from Log");
    }
  }
  std::int64_t Count(std::string_view where = "") {
    return db.OpenSnapshot("select count(*) from Log " + std::string(where))->Field(0).Integer();
  }
  // Looks at every row.
  void WorkLong() {
    db.OpenSnapshot("select count(*) from Log where Note like '*x*' or Call+Locator like '*zz*'");
  }

  ScratchDatabase scratch;
  engine::Database db = scratch.Open();
};

TEST_F(WatchTest, OneWhoWatchesIsAskedWhileAStatementWorksAndNoMoreAfterwards) {
  int asked = 0;
  db.Watch([&] { return ++asked > 0; });
  WorkLong();
  EXPECT_GT(asked, 0);
  db.Watch(nullptr);
  const int before = asked;
  WorkLong();
  EXPECT_EQ(asked, before);
}

TEST_F(WatchTest, AReadingThatIsStoppedSaysSoAndTheNextGoesOnWhenNobodyWatches) {
  db.Watch([] { return false; });
  EXPECT_EQ(ErrorOf([&] { WorkLong(); }), engine::DatabaseError::kStopped);
  EXPECT_EQ(ErrorOf([&] { WorkLong(); }), engine::DatabaseError::kStopped);
  db.Watch(nullptr);
  WorkLong();
  EXPECT_EQ(Count(), kRows);
}

TEST_F(WatchTest, AWriteThatIsStoppedTakesItsTransactionBack) {
  db.BeginTrans();
  db.Execute("insert into Log (DataQso,Call) values ('01/01/2001','B')");
  db.Watch([] { return false; });
  EXPECT_EQ(ErrorOf([&] { db.Execute("update Log set Note='x'"); }),
            engine::DatabaseError::kStopped);
  db.Watch(nullptr);
  EXPECT_FALSE(db.InTransaction());
  EXPECT_EQ(Count("where Note='x'"), 0);
  EXPECT_EQ(Count(), kRows);
}

TEST_F(WatchTest, TheDatabaseAnswersNobodyWhileItAsks) {
  const auto open = db.OpenDynaset("select * from Log");
  std::vector<int> numbers;
  db.Watch([&] {
    numbers.push_back(ErrorOf([&] { db.OpenSnapshot("select * from Log"); }));
    numbers.push_back(ErrorOf([&] { open->RowAt(100); }));
    numbers.push_back(ErrorOf([&] { db.Watch(nullptr); }));
    return false;
  });
  EXPECT_EQ(ErrorOf([&] { WorkLong(); }), engine::DatabaseError::kStopped);
  EXPECT_EQ(numbers, std::vector<int>(3, engine::DatabaseError::kLocked));
  db.Watch(nullptr);
  EXPECT_EQ(open->RowAt(100).at(0).Integer(), 101);
}

TEST_F(WatchTest, WhatTheOneWhoWatchesThrowsArrivesOutside) {
  db.Watch([]() -> bool { throw std::runtime_error("fuori"); });
  EXPECT_THROW(WorkLong(), std::runtime_error);
}

TEST_F(WatchTest, AClosedDatabaseForgetsWhoWatchedIt) {
  db.Watch([] { return false; });
  db.Close();
  db = scratch.Open();
  WorkLong();
}

TEST_F(WatchTest, ACompactionThatIsStoppedLeavesNothingBehind) {
  db.Close();
  const std::filesystem::path to = scratch.Path() / "new.mdb";
  EXPECT_EQ(ErrorOf([&] { CompactDatabase(scratch.File(), to, [] { return false; }); }),
            engine::DatabaseError::kStopped);
  EXPECT_FALSE(std::filesystem::exists(to));
  int asked = 0;
  CompactDatabase(scratch.File(), to, [&] { return ++asked > 0; });
  EXPECT_GT(asked, 0);
  db = OpenDatabaseFile(to);
  EXPECT_EQ(Count(), kRows);
}

}  // namespace
}  // namespace brenvo::file
