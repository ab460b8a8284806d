#include <gtest/gtest.h>

#include "tests/support/error_of.h"
#include "tests/support/integrity.h"
#include "tests/support/recorded_files.h"
#include "tests/support/scratch_database.h"

namespace brenvo::file {
namespace {

class StructureTest : public testing::Test {
 protected:
  bool Has(std::string_view table) {
    engine::Database database = scratch_.Open();
    return ErrorOf([&] { database.OpenTable(table); }) == 0;
  }
  ScratchDatabase scratch_;
};

TEST_F(StructureTest, StatementsThatChangeItAreRunOnTheClosedFile) {
  ChangeStructure(scratch_.File(), "CREATE TABLE Nuova (A TEXT); INSERT INTO Nuova VALUES ('x')");
  engine::Database database = scratch_.Open();
  EXPECT_EQ(database.OpenSnapshot("select A from Nuova")->Field("A").Text(), "x");
  EXPECT_EQ(IntegrityOf(scratch_.File()), "ok");
}

TEST_F(StructureTest, AllOfThemAreRunOrNone) {
  EXPECT_THROW(
      ChangeStructure(scratch_.File(), "CREATE TABLE Nuova (A TEXT); CREATE TABLE Log (A)"),
      engine::DatabaseError);
  EXPECT_FALSE(Has("Nuova"));
}

TEST_F(StructureTest, CutShortAnywhereItHasHappenedOrNot) {
  int failures = 0;
  for (int n = 0;; ++n) {
    ScratchDatabase scratch;
    bool failed = false;
    {
      RecordedFiles files;
      files.FailFrom(n, SQLITE_FULL);
      try {
        ChangeStructure(scratch.File(), "CREATE TABLE Nuova (A TEXT); CREATE TABLE Altra (B TEXT)");
      } catch (const engine::DatabaseError&) {
        failed = true;
      }
    }
    engine::Database database = scratch.Open();
    const auto has = [&](std::string_view table) {
      return ErrorOf([&] { database.OpenTable(table); }) == 0;
    };
    ASSERT_EQ(has("Nuova"), has("Altra")) << n;
    if (!failed) break;
    ++failures;
  }
  EXPECT_GT(failures, 2);
}

TEST_F(StructureTest, AStatementOfAWindowStillChangesNone) {
  ChangeStructure(scratch_.File(), "CREATE TABLE Nuova (A TEXT)");
  engine::Database database = scratch_.Open();
  EXPECT_NE(ErrorOf([&] { database.Execute("DROP TABLE Nuova"); }), 0);
  EXPECT_NE(ErrorOf([&] { database.Execute("PRAGMA data_version"); }), 0);
}

TEST_F(StructureTest, TheDataVersionTellsOfOthersWritesAlone) {
  engine::Database database = scratch_.Open();
  const std::int64_t first = database.DataVersion();
  database.Execute("insert into Log (Call) values ('IK3ABC')");
  EXPECT_EQ(database.DataVersion(), first);
  scratch_.Sql("INSERT INTO Log (Call) VALUES ('IK3DEF')");
  const std::int64_t second = database.DataVersion();
  EXPECT_NE(second, first);
  EXPECT_EQ(database.DataVersion(), second);
}

}  // namespace
}  // namespace brenvo::file
