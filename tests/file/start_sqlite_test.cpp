#include <gtest/gtest.h>
#include <sqlite3.h>

#include <cstdlib>

#include "file/sqlite_file.h"

namespace brenvo::file {
namespace {

// In a process of its own, in which SQLite has not run.
TEST(StartSqliteDeathTest, StartedAsOftenAsOneLikesSqliteDoesNotCountItsMemory) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  EXPECT_EXIT(
      {
        StartSqlite();
        StartSqlite();
        sqlite3* file = nullptr;
        const bool opened = sqlite3_open(":memory:", &file) == SQLITE_OK;
        std::_Exit(opened && sqlite3_memory_used() == 0 ? 0 : 1);
      },
      ::testing::ExitedWithCode(0), "");
}

}  // namespace
}  // namespace brenvo::file
