#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/file/contacts.h"

namespace brenvo::file {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class RowAppenderTest : public ::testing::Test {
 protected:
  static constexpr std::size_t kBanda = 13, kZonaCQ = 6, kNote = 23;  // among the columns to give

  // A contact at a second of its own.
  static std::vector<engine::Value> Contact(int number) {
    const base::DateTime at =
        base::DateTime::FromSeconds(base::DateTime::Of(2001, 2, 3).Seconds() + number);
    std::vector<engine::Value> row = {at, "I1A" + std::to_string(number)};
    row.resize(kBanda);
    row.push_back("  2 m");
    return row;
  }

  ScratchDatabase scratch_;
  engine::Database db_ = scratch_.Open();
  std::unique_ptr<engine::RowAppender> appender_ = db_.OpenAppender("log");
};

TEST_F(RowAppenderTest, EachRowHasTheNextKeyAndIsSeenAtOnce) {
  AddContact(db_, 1, "I1FIRST");
  db_.BeginTrans();
  for (int number = 2; number < 200; ++number) {
    ASSERT_EQ(appender_->Append(Contact(number)), number);
    ASSERT_EQ(db_.OpenSnapshot("Select Call from Log where QsoNr=" + std::to_string(number))
                  ->Field("Call")
                  .Text(),
              "I1A" + std::to_string(number));
  }
  db_.CommitTrans();
  EXPECT_THAT(Select(db_, "Select Count(*) from Log"), ElementsAre("199"));
}

TEST_F(RowAppenderTest, OneStatementServesAllRows) {
  db_.BeginTrans();
  appender_->Append(Contact(1));
  const std::int64_t prepared = db_.Counters().prepared;
  for (int number = 2; number < 100; ++number) appender_->Append(Contact(number));
  EXPECT_EQ(db_.Counters().prepared, prepared);
}

TEST_F(RowAppenderTest, NothingOfARowIsLeftInTheNext) {
  std::vector<engine::Value> whole = Contact(1);
  whole.resize(kNote);
  whole.push_back("a note");
  appender_->Append(whole);
  appender_->Append(Contact(2));
  const auto rows = db_.OpenSnapshot("Select Note from Log order by QsoNr");
  EXPECT_EQ(rows->Field("Note"), engine::Value("a note"));
  rows->MoveNext();
  EXPECT_TRUE(rows->Field("Note").IsNull());
}

TEST_F(RowAppenderTest, ColumnsLeftOutAreEmptyAndOthersAreConverted) {
  std::vector<engine::Value> row = Contact(1);
  row[kZonaCQ] = "15";
  appender_->Append(row);
  const auto rows = db_.OpenTable("Log");
  EXPECT_EQ(rows->Field("DataQso"), engine::Value(base::DateTime::Of(2001, 2, 3, 0, 0, 1)));
  EXPECT_TRUE(rows->Field("Manager").IsNull());
  EXPECT_EQ(rows->Field("Zona CQ"), engine::Value(15));
  EXPECT_EQ(rows->Field("QslInviata"), engine::Value(false));
  EXPECT_TRUE(rows->Field("Note").IsNull());
}

TEST_F(RowAppenderTest, AKeyThatRepeatsStoresNothingAndTheNextRowIsSound) {
  appender_->Append(Contact(1));
  EXPECT_EQ(ErrorOf([&] { appender_->Append(Contact(1)); }), engine::DatabaseError::kDuplicateKey);
  appender_->Append(Contact(2));
  EXPECT_THAT(Select(db_, "Select Call from Log"), ElementsAre("I1A1", "I1A2"));
}

TEST_F(RowAppenderTest, WhatIsRolledBackIsGone) {
  db_.BeginTrans();
  appender_->Append(Contact(1));
  db_.Rollback();
  EXPECT_THAT(Select(db_, "Select Call from Log"), IsEmpty());
}

TEST_F(RowAppenderTest, WhoReadsTheTableShowsWhatWasThere) {
  AddContact(db_, 1, "I1FIRST");
  const auto rows = db_.OpenSnapshot("Select Call from Log");
  appender_->Append(Contact(2));
  rows->MoveNext();
  EXPECT_TRUE(rows->EOF_());
}

TEST_F(RowAppenderTest, ItTakesATableAndAnOpenDatabase) {
  EXPECT_EQ(ErrorOf([&] { db_.OpenAppender("Nowhere"); }), engine::DatabaseError::kUnknownTable);
  db_.Close();
  EXPECT_EQ(ErrorOf([&] { appender_->Append(Contact(2)); }), engine::DatabaseError::kObjectClosed);
}

}  // namespace
}  // namespace brenvo::file
