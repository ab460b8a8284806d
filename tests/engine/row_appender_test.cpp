#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/engine/contacts.h"

namespace brenvo {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class RowAppenderTest : public ::testing::Test {
 protected:
  static constexpr std::size_t kBanda = 13, kZonaCQ = 6;  // among the columns to give

  // A contact at a second of its own.
  static std::vector<Value> Contact(int number) {
    const DateTime at = DateTime::FromSeconds(DateTime::Of(2001, 2, 3).Seconds() + number);
    std::vector<Value> row = {at, "I1A" + std::to_string(number)};
    row.resize(kBanda);
    row.push_back("  2 m");
    return row;
  }

  ScratchDatabase scratch_;
  Database db_ = scratch_.Open();
  std::unique_ptr<RowAppender> appender_ = db_.OpenAppender("log");
};

TEST_F(RowAppenderTest, HoweverManyRowsHaveTheKeysThatFollowTheFirst) {
  AddContact(db_, 1, "I1FIRST");
  db_.BeginTrans();
  std::int64_t next = 2;
  int number = 0;
  for (const int count : {1, 2, 511, 512, 1300}) {
    for (int i = 0; i < count; ++i) appender_->Add(Contact(number++));
    EXPECT_EQ(appender_->Waiting(), static_cast<std::size_t>(count));
    EXPECT_EQ(appender_->Write(), next);
    EXPECT_EQ(appender_->Waiting(), 0u);
    next += count;
  }
  db_.CommitTrans();
  const auto rows = db_.OpenSnapshot("Select QsoNr,Call from Log where QsoNr>1 order by QsoNr");
  for (int i = 0; i < number; ++i, rows->MoveNext()) {
    ASSERT_EQ(rows->Field("QsoNr").Integer(), i + 2);
    ASSERT_EQ(rows->Field("Call").Text(), "I1A" + std::to_string(i));
  }
  EXPECT_TRUE(rows->EOF_());
}

TEST_F(RowAppenderTest, RowsThatWaitAreSeenByNobody) {
  db_.BeginTrans();
  appender_->Add(Contact(1));
  EXPECT_THAT(Select(db_, "Select Call from Log"), IsEmpty());
  appender_->Write();
  EXPECT_THAT(Select(db_, "Select Call from Log"), ElementsAre("I1A1"));
}

TEST_F(RowAppenderTest, ColumnsLeftOutAreEmptyAndOthersAreConverted) {
  db_.BeginTrans();
  std::vector<Value> row = Contact(1);
  row[kZonaCQ] = "15";
  appender_->Add(row);
  appender_->Write();
  const auto rows = db_.OpenTable("Log");
  EXPECT_EQ(rows->Field("DataQso"), Value(DateTime::Of(2001, 2, 3, 0, 0, 1)));
  EXPECT_TRUE(rows->Field("Manager").IsNull());
  EXPECT_EQ(rows->Field("Zona CQ"), Value(15));
  EXPECT_EQ(rows->Field("QslInviata"), Value(false));
  EXPECT_TRUE(rows->Field("Note").IsNull());
}

TEST_F(RowAppenderTest, AKeyThatRepeatsIsAFailureAfterWhichNothingStaysOnceRolledBack) {
  db_.BeginTrans();
  for (const int number : {1, 2, 1}) appender_->Add(Contact(number));
  EXPECT_EQ(ErrorOf([&] { appender_->Write(); }), DatabaseError::kDuplicateKey);
  EXPECT_EQ(appender_->Waiting(), 0u);
  db_.Rollback();
  EXPECT_THAT(Select(db_, "Select Call from Log"), IsEmpty());
}

TEST_F(RowAppenderTest, WritingNothingIsNoFailure) {
  db_.BeginTrans();
  appender_->Write();
  db_.CommitTrans();
}

TEST_F(RowAppenderTest, ItTakesATransactionATableAndAnOpenDatabase) {
  appender_->Add(Contact(1));
  EXPECT_EQ(ErrorOf([&] { appender_->Write(); }), DatabaseError::kNoTransaction);
  EXPECT_EQ(ErrorOf([&] { db_.OpenAppender("Nowhere"); }), DatabaseError::kUnknownTable);
  db_.Close();
  EXPECT_EQ(ErrorOf([&] { appender_->Add(Contact(2)); }), DatabaseError::kObjectClosed);
  EXPECT_EQ(ErrorOf([&] { appender_->Write(); }), DatabaseError::kObjectClosed);
}

}  // namespace
}  // namespace brenvo
