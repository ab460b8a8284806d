#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/file/contacts.h"
#include "tests/support/integrity.h"

namespace brenvo::file {
namespace {

using ::testing::Contains;
using ::testing::HasSubstr;
using ::testing::Not;

// Any other tool that has the file open.
class Tool {
 public:
  explicit Tool(const std::filesystem::path& file) { sqlite3_open(file.c_str(), &file_); }
  ~Tool() { sqlite3_close(file_); }
  Tool(const Tool&) = delete;
  Tool& operator=(const Tool&) = delete;

  std::vector<std::string> Texts(const std::string& sql) {
    std::vector<std::string> texts;
    const auto add = [](void* to, int, char** cells, char**) {
      static_cast<std::vector<std::string>*>(to)->emplace_back(cells[0]);
      return 0;
    };
    EXPECT_EQ(sqlite3_exec(file_, sql.c_str(), add, &texts, nullptr), SQLITE_OK);
    return texts;
  }

 private:
  sqlite3* file_ = nullptr;
};

class PutOffIndexesTest : public ::testing::Test {
 protected:
  void AddMany(int from, int to) {
    for (int minute = from; minute < to; ++minute) AddContact(db_, minute, "I1AAA");
  }
  std::string Plan() { return db_.QueryPlan("Select QsoNr from Log where Call='I1AAA'"); }
  std::vector<std::string> Indexes() {
    return Tool(scratch_.File())
        .Texts(
            "SELECT name || ' ' || sql FROM sqlite_schema WHERE type = 'index' AND sql <> '' ORDER "
            "BY name");
  }

  ScratchDatabase scratch_;
  engine::Database db_ = scratch_.Open();
};

TEST_F(PutOffIndexesTest, TheCommitMakesThemAsTheyWere) {
  const std::vector<std::string> before = Indexes();
  AddMany(0, 3);
  db_.BeginTrans();
  db_.PutOffIndexes("log");
  EXPECT_THAT(Plan(), Not(HasSubstr("Log.Call")));
  AddMany(3, 200);
  EXPECT_THAT(Select(db_, "Select Count(*) from Log where Call='i1aaa'"), Contains("200"));
  db_.CommitTrans();
  EXPECT_THAT(Plan(), HasSubstr("Log.Call"));
  EXPECT_THAT(Select(db_, "Select Count(*) from Log where Call='i1aaa'"), Contains("200"));
  EXPECT_EQ(Indexes(), before);
  db_.Close();
  EXPECT_EQ(IntegrityOf(scratch_.File()), "ok");
}

TEST_F(PutOffIndexesTest, WhatKeepsRowsApartGoesOn) {
  db_.BeginTrans();
  db_.PutOffIndexes("Log");
  AddContact(db_, 1, "I1AAA");
  EXPECT_EQ(ErrorOf([&] { AddContact(db_, 1, "i1aaa"); }), engine::DatabaseError::kDuplicateKey);
  db_.CommitTrans();
}

TEST_F(PutOffIndexesTest, AnIndexOfAnotherToolIsLeftAsItIs) {
  scratch_.Sql("CREATE INDEX Theirs ON Log (Qth -- by place\n)");
  db_ = scratch_.Open();
  db_.BeginTrans();
  db_.PutOffIndexes("Log");
  AddMany(0, 10);
  db_.CommitTrans();
  EXPECT_THAT(Indexes(), Contains(HasSubstr("by place")));
  EXPECT_THAT(Plan(), HasSubstr("Log.Call"));
  db_.Close();
  EXPECT_EQ(IntegrityOf(scratch_.File()), "ok");
}

TEST_F(PutOffIndexesTest, WhoeverRollsBackHasThemAgain) {
  const std::vector<std::string> before = Indexes();
  db_.BeginTrans();
  db_.PutOffIndexes("Log");
  AddMany(0, 10);
  db_.Rollback();
  EXPECT_THAT(Plan(), HasSubstr("Log.Call"));
  db_.BeginTrans();  // has none to make
  AddMany(0, 10);
  db_.CommitTrans();
  EXPECT_EQ(Indexes(), before);
}

TEST_F(PutOffIndexesTest, ACommitThatIsStoppedWhileItMakesThemStoresNothing) {
  const std::vector<std::string> before = Indexes();
  constexpr int kRows = 2000;
  db_.BeginTrans();
  db_.PutOffIndexes("Log");
  AddMany(0, kRows);
  db_.Watch([] { return false; });
  EXPECT_EQ(ErrorOf([&] { db_.CommitTrans(); }), engine::DatabaseError::kStopped);
  db_.Watch(nullptr);
  EXPECT_FALSE(db_.InTransaction());
  EXPECT_THAT(Select(db_, "Select Count(*) from Log"), Contains("0"));
  EXPECT_EQ(Indexes(), before);
}

TEST_F(PutOffIndexesTest, WhileRowsAreBeingReadTheyAreKeptRowByRow) {
  AddMany(0, 3);
  const auto reading = db_.OpenTable("Log");
  reading->MoveFirst();
  reading->MoveNext();
  const auto others = db_.OpenDynaset("Select * from Log");
  db_.BeginTrans();
  db_.PutOffIndexes("Log");
  AddMany(3, 10);
  reading->MoveNext();
  EXPECT_EQ(reading->Field("QsoNr").Integer(), 3);
  db_.CommitTrans();
  EXPECT_THAT(Select(db_, "Select Count(*) from Log where Call='i1aaa'"), Contains("10"));
}

TEST_F(PutOffIndexesTest, AnotherProgramReadsWhatWasBeforeAndThenAll) {
  Tool other(scratch_.File());
  const std::string count =
      "SELECT count(*) FROM Log INDEXED BY \"Log.Call\" WHERE "
      "rtrim(\"Call\") COLLATE NOCASE = 'I1AAA'";
  AddMany(0, 3);
  EXPECT_THAT(other.Texts(count), Contains("3"));
  db_.BeginTrans();
  db_.PutOffIndexes("Log");
  AddMany(3, 10);
  EXPECT_THAT(other.Texts(count), Contains("3"));
  db_.CommitTrans();
  EXPECT_THAT(other.Texts(count), Contains("10"));
}

TEST_F(PutOffIndexesTest, IsForATransactionAndATableThatIsThere) {
  EXPECT_EQ(ErrorOf([&] { db_.PutOffIndexes("Log"); }), engine::DatabaseError::kNoTransaction);
  EXPECT_EQ(ErrorOf([&] { db_.PutOffIndexes("Nowhere"); }), engine::DatabaseError::kUnknownTable);
}

}  // namespace
}  // namespace brenvo::file
