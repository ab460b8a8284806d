#include <gtest/gtest.h>

#include "file/database_file.h"
#include "tests/file/contacts.h"
#include "tests/support/recorded_files.h"
#include "tests/support/scratch_database.h"

namespace brenvo::file {
namespace {

// What the disk answers, and what the program makes of it.
struct Fault {
  const char* name;
  int code;
  int number;
};
constexpr Fault kFaults[] = {
    {"the disk is full", SQLITE_FULL, engine::DatabaseError::kDiskFull},
    {"a write fails", SQLITE_IOERR_WRITE, engine::DatabaseError::kFailed},
    {"a sync fails", SQLITE_IOERR_FSYNC, engine::DatabaseError::kFailed},
    {"the file has become read-only", SQLITE_READONLY, engine::DatabaseError::kReadOnly},
};

std::int64_t Count(engine::Database& database) {
  return database.OpenSnapshot("select count(*) from Log")->Field(0).Integer();
}

void Store(engine::Database& database, const std::string& call) {
  AddContact(database, 5, call.c_str());
}

class FailingDisk : public testing::TestWithParam<Fault> {
 protected:
  // Runs `work` again and again, each time failing one operation of the disk later, until it is
  // through. After each: told by its number, undone whole, and done when it is tried again.
  void FailEachInTurn(const std::function<void(engine::Database&)>& work, std::int64_t rows) {
    int failures = 0;
    for (std::int64_t n = 0;; ++n) {
      SCOPED_TRACE(n);
      ScratchDatabase scratch;
      RecordedFiles files;
      engine::Database database = scratch.Open();
      Store(database, "IK3ABC");
      files.FailFrom(n, GetParam().code);
      int number = 0;
      try {
        work(database);
      } catch (const engine::DatabaseError& failure) {
        number = failure.Number;
        if (database.InTransaction()) database.Rollback();
      }
      const bool failed = files.HasFailed();
      files.StopFailing();
      if (number != 0) {
        ++failures;
        ASSERT_EQ(number, GetParam().number);
        ASSERT_EQ(Count(database), 1);
        work(database);
      }
      ASSERT_EQ(Count(database), 1 + rows);
      database.Close();
      engine::Database again = scratch.Open();
      ASSERT_EQ(Count(again), 1 + rows);
      if (!failed) break;
    }
    EXPECT_GT(failures, 0);
  }
};

TEST_P(FailingDisk, AContactIsStoredOrTheFailureIsToldAndItCanBeStoredAgain) {
  FailEachInTurn([](engine::Database& database) { Store(database, "IK3DEF"); }, 1);
}

TEST_P(FailingDisk, ATransactionIsUndoneWhole) {
  FailEachInTurn(
      [](engine::Database& database) {
        database.BeginTrans();
        for (int i = 0; i < 5; ++i) Store(database, "IK" + std::to_string(i));
        database.CommitTrans();
      },
      5);
}

TEST_P(FailingDisk, ACompactionThatFailsLeavesTheSourceAndNoHalfResult) {
  ScratchDatabase scratch;
  {
    engine::Database database = scratch.Open();
    Store(database, "IK3ABC");
  }
  const auto result = scratch.Path() / "BrenvoNEW.MDB";
  for (std::int64_t n = 0;; n += 7) {
    SCOPED_TRACE(n);
    RecordedFiles files;
    files.FailFrom(n, GetParam().code);
    int number = 0;
    try {
      CompactDatabase(scratch.File(), result);
    } catch (const engine::DatabaseError& failure) {
      number = failure.Number;
    }
    const bool failed = files.HasFailed();
    files.StopFailing();
    if (number != 0) {
      ASSERT_EQ(number, GetParam().number);
      ASSERT_FALSE(std::filesystem::exists(result));
    } else {
      ASSERT_TRUE(std::filesystem::exists(result));
      std::filesystem::remove(result);
    }
    engine::Database database = scratch.Open();
    ASSERT_EQ(Count(database), 1);
    if (!failed) break;
  }
}

INSTANTIATE_TEST_SUITE_P(All, FailingDisk, testing::ValuesIn(kFaults), [](const auto& each) {
  std::string name = each.param.name;
  std::replace_if(
      name.begin(), name.end(), [](char c) { return c == ' ' || c == '-'; }, '_');
  return name;
});

}  // namespace
}  // namespace brenvo::file
