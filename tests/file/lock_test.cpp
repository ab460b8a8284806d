// Another program's lock and its changes, met while rows are still being read.
#include <gtest/gtest.h>

#include "tests/file/contacts.h"
#include "tests/support/other_program.h"

namespace brenvo::file {
namespace {

constexpr char kChange[] = "INSERT INTO Log (Call) VALUES ('OTHER')";

class AnotherProgramsLock : public testing::Test {
 protected:
  AnotherProgramsLock() {
    db_.BeginTrans();
    for (int i = 0; i < 600; ++i) {
      db_.Execute("insert into Log (Call, Banda) values ('I" + std::to_string(i) + "','  2 m')");
      db_.Execute("insert into Modi (Codice, Modo) values (" + std::to_string(i) + ",'CW')");
    }
    db_.CommitTrans();
  }
  std::string CountOf(const char* condition) {
    return Select(db_, std::string("select count(*) from Log where ") + condition).front();
  }

  ScratchDatabase scratch_;
  engine::Database db_ = scratch_.Open();
};

TEST_F(AnotherProgramsLock, IsWaitedForByATransactionWhileRowsAreRead) {
  const auto shown = db_.OpenDynaset("select * from Log order by Call");
  const auto modes = db_.OpenSnapshot("select * from Modi");
  const OtherProgram other(scratch_.File(), kChange);
  db_.BeginTrans();
  db_.Execute("update Log set QslInviata=true");
  db_.CommitTrans();
  EXPECT_EQ(CountOf("QslInviata"), "601");
  EXPECT_EQ(Texts(*modes, "Codice").size(), 600u);
  EXPECT_EQ(shown->TotalRows(), 600);
}

TEST_F(AnotherProgramsLock, IsWaitedForByAStatementWhileRowsOfAnotherTableAreRead) {
  const auto modes = db_.OpenDynaset("select * from Modi");
  const OtherProgram other(scratch_.File(), kChange);
  EXPECT_EQ(db_.Execute("delete * from Log"), 601);
  EXPECT_EQ(modes->TotalRows(), 600);
}

TEST_F(AnotherProgramsLock, IsWaitedForByARowThatIsAppendedWhileOthersAreRead) {
  const auto modes = db_.OpenDynaset("select * from Modi");
  const auto appender = db_.OpenAppender("Log");
  const OtherProgram other(scratch_.File(), kChange);
  EXPECT_EQ(appender->Append({base::DateTime::Of(2001, 2, 3), "IK3ABC"}), 602);
}

TEST_F(AnotherProgramsLock, ThatStaysIsToldAfterTwoSeconds) {
  const auto modes = db_.OpenDynaset("select * from Modi");
  const OtherProgram other(scratch_.File(), kChange, OtherProgram::kAsLongAsItLives);
  const auto from = std::chrono::steady_clock::now();
  EXPECT_EQ(ErrorOf([&] { db_.BeginTrans(); }), 3260);
  const auto waited = std::chrono::steady_clock::now() - from;
  EXPECT_GE(waited, std::chrono::milliseconds(1900));
  EXPECT_FALSE(db_.InTransaction());
}

TEST(AnotherProgramsChange, IsNoObstacleToWhatIsWrittenWhileRowsAreRead) {
  ScratchDatabase scratch;
  engine::Database db = scratch.Open();
  for (int i = 0; i < 3; ++i) {
    db.Execute("insert into Modi (Codice, Modo) values (" + std::to_string(i) + ",'CW')");
  }
  const auto modes = db.OpenSnapshot("select * from Modi");
  scratch.Sql(kChange);
  EXPECT_EQ(AddContact(db, 1, "IK3ABC").key, 2);
  const auto again = db.OpenSnapshot("select * from Modi");
  scratch.Sql(kChange);
  db.BeginTrans();
  db.CommitTrans();
  EXPECT_EQ(Texts(*modes, "Codice"), Texts(*again, "Codice"));
}

}  // namespace
}  // namespace brenvo::file
