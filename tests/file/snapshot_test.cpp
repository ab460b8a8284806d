#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/file/contacts.h"

namespace brenvo::file {
namespace {

using ::testing::ElementsAre;

class SnapshotTest : public ::testing::Test {
 protected:
  void AddContacts(int count) {
    db_.BeginTrans();
    for (int minute = 0; minute < count; ++minute) AddContact(db_, minute, "I1AAA");
    db_.CommitTrans();
  }

  ScratchDatabase scratch_;
  engine::Database db_ = scratch_.Open();
};

TEST_F(SnapshotTest, AnEmptyOneStandsOnBothMarks) {
  const auto rows = db_.OpenSnapshot("select * from Log where Call='X'");
  EXPECT_TRUE(rows->BOF());
  EXPECT_TRUE(rows->EOF_());
  EXPECT_EQ(rows->RecordCount(), 0);
  rows->MoveFirst();
  rows->MoveLast();
  EXPECT_TRUE(rows->EOF_());
  EXPECT_EQ(ErrorOf([&] { rows->MoveNext(); }), 3021);
  EXPECT_EQ(ErrorOf([&] { rows->Field("Call"); }), 3021);
}

TEST_F(SnapshotTest, OneThatIsBeingReadGoesOnHoweverManyOtherStatementsRun) {
  AddContacts(300);
  const auto rows = db_.OpenSnapshot("select * from Log order by QsoNr");
  std::string numbers = "1";
  for (int i = 0; i < 400; ++i) {  // each is compiled for itself, of as many numbers as no other
    db_.OpenSnapshot("select Call from Log where QsoNr in (" + numbers + ")");
    numbers += ",1";
  }
  for (int nr = 1; nr <= 300; ++nr, rows->MoveNext()) {
    ASSERT_EQ(rows->Field("QsoNr").Integer(), nr);
  }
  EXPECT_TRUE(rows->EOF_());
}

TEST_F(SnapshotTest, MovesGoBothWaysAndStopOnTheMarks) {
  AddContacts(3);
  const auto rows = db_.OpenSnapshot("select * from Log order by DataQso");
  EXPECT_EQ(rows->Field("QsoNr").Integer(), 1);
  rows->MoveNext();
  rows->MoveNext();
  EXPECT_EQ(rows->Field("QsoNr").Integer(), 3);
  rows->MoveNext();
  EXPECT_TRUE(rows->EOF_());
  EXPECT_EQ(ErrorOf([&] { rows->MoveNext(); }), 3021);
  rows->MovePrevious();
  EXPECT_EQ(rows->Field("QsoNr").Integer(), 3);
  rows->MoveFirst();
  rows->MovePrevious();
  EXPECT_TRUE(rows->BOF());
  EXPECT_FALSE(rows->EOF_());
  EXPECT_EQ(ErrorOf([&] { rows->MovePrevious(); }), 3021);
  rows->MoveLast();
  EXPECT_EQ(rows->Field("QsoNr").Integer(), 3);
}

TEST_F(SnapshotTest, MovingBeforeAnyReadGoesInTheOrderOfEntry) {
  AddContact(db_, 1, "I3AAA");
  AddContact(db_, 2, "I1BBB");
  AddContact(db_, 3, "I2CCC");
  // The index that finds them has them by their call.
  const auto rows = db_.OpenSnapshot("select * from Log where Call like 'I*'");
  rows->MoveNext();
  EXPECT_EQ(rows->Field("QsoNr").Integer(), 2);
  rows->MoveNext();
  EXPECT_EQ(rows->Field("QsoNr").Integer(), 3);
  rows->MovePrevious();
  rows->MovePrevious();
  EXPECT_EQ(rows->Field("QsoNr").Integer(), 1);
}

TEST_F(SnapshotTest, CellsAreReadInAnyOrder) {
  AddContacts(2);
  const auto rows = db_.OpenSnapshot("select QsoNr,Call,DataQso from Log order by QsoNr");
  EXPECT_EQ(rows->Field(2).Date().Minute(), 0);
  EXPECT_EQ(rows->Field(1).Text(), "I1AAA");
  EXPECT_EQ(rows->Field(1).Text(), "I1AAA");
  EXPECT_EQ(rows->Field(0).Integer(), 1);
  rows->MoveNext();
  EXPECT_EQ(rows->Field(2).Date().Minute(), 1);
  rows->MovePrevious();
  EXPECT_EQ(rows->Field(2).Date().Minute(), 0);
}

TEST_F(SnapshotTest, TheTestForOneRowStepsOnce) {
  AddContacts(300);
  const auto before = db_.Counters().rowsStepped;
  {
    const auto rows = db_.OpenSnapshot("select Call from Log where Call='I1AAA'");
    EXPECT_FALSE(rows->EOF_());
    EXPECT_EQ(rows->RecordCount(), 1);
  }
  EXPECT_EQ(db_.Counters().rowsStepped - before, 1);
}

TEST_F(SnapshotTest, TheCountGrowsWithTheRowsReached) {
  AddContacts(5);
  const auto rows = db_.OpenSnapshot("select * from Log order by DataQso");
  EXPECT_EQ(rows->RecordCount(), 1);
  rows->MoveNext();
  EXPECT_EQ(rows->RecordCount(), 2);
  rows->MoveLast();
  EXPECT_EQ(rows->RecordCount(), 5);
}

TEST_F(SnapshotTest, WithoutAnOrderRowsComeAsTheyWereEntered) {
  AddContact(db_, 9, "I1AAA", "  2 m", "JN65", false);
  AddContact(db_, 8, "I1AAA", " 20 m", "JN66", true);
  AddContact(db_, 7, "I1AAA", "  2 m", "JN67", true);
  EXPECT_THAT(Select(db_, "select Locator from Log where Call='I1AAA'"),
              ElementsAre("JN65", "JN66", "JN67"));
  EXPECT_THAT(Select(db_, "select Locator from Log"), ElementsAre("JN65", "JN66", "JN67"));
  EXPECT_THAT(Select(db_, "select Locator from Log where Call='I1AAA' and Banda='  2 m'"),
              ElementsAre("JN65", "JN67"));
}

TEST_F(SnapshotTest, ItShowsTheRowsAsTheyWereWhenItWasOpened) {
  AddContacts(10);
  const auto ordered = db_.OpenSnapshot("select * from Log order by DataQso");
  const auto entered = db_.OpenSnapshot("select * from Log where Call='I1AAA'");
  db_.Execute("UPDATE Log SET Call='I1ZZZ'");
  AddContact(db_, 50, "I1AAA");
  db_.Execute("DELETE FROM Log WHERE QsoNr=2");
  EXPECT_EQ(Texts(*ordered, "Call"), std::vector<std::string>(10, "I1AAA"));
  EXPECT_THAT(Texts(*entered, "QsoNr"),
              ElementsAre("1", "2", "3", "4", "5", "6", "7", "8", "9", "10"));
}

TEST_F(SnapshotTest, WritingToAnotherTableReadsNothingAhead) {
  AddContacts(10);
  const auto rows = db_.OpenSnapshot("select * from Log order by DataQso");
  const auto before = db_.Counters().rowsStepped;
  db_.Execute("Insert into ContestWWL values ('JN65')");
  EXPECT_EQ(db_.Counters().rowsStepped, before);
  EXPECT_EQ(Texts(*rows, "Call").size(), 10U);
}

TEST_F(SnapshotTest, ItHoldsNoLockOnceItIsReadOrClosed) {
  AddContacts(3);
  auto read = db_.OpenSnapshot("select * from Log order by DataQso");
  while (!read->EOF_()) read->MoveNext();
  auto closed = db_.OpenSnapshot("select * from Log order by DataQso");
  closed->Close();
  // A checkpoint that empties the journal goes through only when nobody reads.
  scratch_.Sql("PRAGMA busy_timeout=0; PRAGMA wal_checkpoint(TRUNCATE);");
  EXPECT_EQ(std::filesystem::file_size(scratch_.File().string() + "-wal"), 0U);
}

TEST_F(SnapshotTest, ABookmarkLeadsBackToItsRow) {
  AddContacts(3);
  const auto rows = db_.OpenSnapshot("select * from Log order by DataQso");
  rows->MoveNext();
  const engine::Bookmark bookmark = rows->GetBookmark();
  rows->MoveLast();
  rows->SetBookmark(bookmark);
  EXPECT_EQ(rows->Field("QsoNr").Integer(), 2);
}

TEST_F(SnapshotTest, EachKindOfColumnReadsAsItsKind) {
  Add(db_, "Log",
      {{"DataQso", base::DateTime::Of(2001, 2, 3, 4, 5)},
       {"Call", "I1AAA"},
       {"Qrb", 77},
       {"Frequenza", 144.0},
       {"QslInviata", true}});
  const auto rows = db_.OpenSnapshot(
      "select QsoNr,DataQso,Call,Qra,Qrb,Frequenza,QslInviata,max(DataQso),count(*) from Log "
      "group by QsoNr,DataQso,Call,Qra,Qrb,Frequenza,QslInviata");
  EXPECT_EQ(rows->Field(0), engine::Value(1));
  EXPECT_EQ(rows->Field("dataqso"), engine::Value(base::DateTime::Of(2001, 2, 3, 4, 5)));
  EXPECT_EQ(rows->Field("CALL"), engine::Value("I1AAA"));
  EXPECT_EQ(rows->Field("Qra"), engine::Value());
  EXPECT_EQ(rows->Field("Qrb"), engine::Value(77));
  EXPECT_EQ(rows->Field("Frequenza"), engine::Value(144.0));
  EXPECT_EQ(rows->Field("QslInviata"), engine::Value(true));
  EXPECT_EQ(rows->Field(7), engine::Value(base::DateTime::Of(2001, 2, 3, 4, 5)));
  EXPECT_EQ(rows->Field(8), engine::Value(1));
}

TEST_F(SnapshotTest, ColumnsAreNamedAsInTheTableOrByTheirAlias) {
  const auto rows = db_.OpenSnapshot(
      "select [zona cq], left(Locator,4) as Square, count(*) from Log "
      "group by [ZONA CQ], left(Locator,4)");
  EXPECT_THAT(rows->Columns(), ElementsAre("Zona CQ", "Square", "Expr1002"));
}

TEST_F(SnapshotTest, AFailureShowsAtOpening) {
  AddContact(db_, 1, "I1AAA");
  Add(db_, "Log", {{"Call", "I1BBB"}, {"Note", "non una data"}});
  EXPECT_EQ(ErrorOf([&] { db_.OpenSnapshot("select * from Log where DateValue(Call)=1"); }), 3464);
  EXPECT_EQ(ErrorOf([&] {
              db_.OpenSnapshot("select * from Log where DateValue(Note)=DateValue('01/01/2001')");
            }),
            3464);
}

TEST_F(SnapshotTest, AFailureFurtherOnIsToldToTheReaderAndNotToAWriter) {
  for (const char* note : {"01/01/2001", "02/01/2001", "non una data"}) {
    Add(db_, "Log", {{"Note", note}});
  }
  const auto rows =
      db_.OpenSnapshot("select * from Log where DateValue(Note)>DateValue('01/01/2000')");
  const auto keys =
      db_.OpenDynaset("select * from Log where DateValue(Note)>DateValue('01/01/2000')");
  EXPECT_EQ(db_.Execute("UPDATE Log SET Call='X'"), 3);
  rows->MoveNext();
  EXPECT_EQ(rows->Field("QsoNr").Integer(), 2);
  EXPECT_EQ(ErrorOf([&] { rows->MoveNext(); }), 3464);
  EXPECT_EQ(ErrorOf([&] { rows->MoveLast(); }), 3464);
  keys->MoveNext();
  EXPECT_EQ(keys->Field("QsoNr").Integer(), 2);
  EXPECT_EQ(ErrorOf([&] { keys->MoveLast(); }), 3464);
}

TEST_F(SnapshotTest, AWriteIsOnDiskWhileAnotherResultIsStillOpen) {
  AddContacts(5);
  const auto rows = db_.OpenSnapshot("select * from Log order by DataQso");
  Add(db_, "Modi", {{"Codice", 1}, {"Modo", "CW"}});
  engine::Database other = scratch_.Open();
  EXPECT_THAT(Select(other, "select Modo from Modi"), ElementsAre("CW"));
}

TEST_F(SnapshotTest, AClosedSnapshotAnswersWithAnError) {
  AddContacts(1);
  const auto rows = db_.OpenSnapshot("select * from Log");
  rows->Close();
  EXPECT_EQ(ErrorOf([&] { rows->EOF_(); }), 3420);
  EXPECT_EQ(ErrorOf([&] { rows->Field("Call"); }), 3420);
}

}  // namespace
}  // namespace brenvo::file
