#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/file/contacts.h"

namespace brenvo::file {
namespace {

using ::testing::ElementsAre;

class DynasetTest : public ::testing::Test {
 protected:
  ScratchDatabase scratch_;
  engine::Database db_ = scratch_.Open();
};

TEST_F(DynasetTest, AnEmptyOneStandsOnBothMarks) {
  const auto rows = db_.OpenDynaset("SELECT * FROM Log ORDER By DataQso,QsoNr");
  EXPECT_TRUE(rows->BOF());
  EXPECT_TRUE(rows->EOF_());
  EXPECT_EQ(rows->RecordCount(), 0);
  EXPECT_EQ(rows->TotalRows(), 0);
  rows->MoveFirst();
  rows->MoveLast();
  EXPECT_EQ(ErrorOf([&] { rows->MoveNext(); }), 3021);
  EXPECT_EQ(ErrorOf([&] { rows->Field("Call"); }), 3021);
}

TEST_F(DynasetTest, ItStandsOnItsFirstRowAfterOpening) {
  AddContact(db_, 2, "I1BBB");
  AddContact(db_, 1, "I1AAA");
  const auto rows = db_.OpenDynaset("SELECT * FROM Log ORDER By DataQso,QsoNr");
  EXPECT_EQ(rows->Field("Call").Text(), "I1AAA");
  EXPECT_FALSE(rows->BOF());
  EXPECT_FALSE(rows->EOF_());
}

TEST_F(DynasetTest, OneOrderCanFallWhileTheNextOneRises) {
  AddContact(db_, 1, "FIRST");
  AddContact(db_, 2, "SECOND");
  AddContact(db_, 2, "THIRD");
  const auto rows = db_.OpenDynaset("SELECT * FROM Log ORDER By DataQso DESC ,QsoNr");
  EXPECT_THAT(Texts(*rows, "Call"), ElementsAre("SECOND", "THIRD", "FIRST"));
}

TEST_F(DynasetTest, WithoutAnOrderRowsComeAsTheyWereEntered) {
  for (const char* call : {"ZZ", "AA", "MM"}) AddContact(db_, call[0], call);
  const auto rows = db_.OpenDynaset("select * from Log where Call like '*'");
  EXPECT_THAT(Texts(*rows, "Call"), ElementsAre("ZZ", "AA", "MM"));
}

TEST_F(DynasetTest, TheCountGrowsWithTheRowsReached) {
  for (int minute = 0; minute < 600; ++minute) AddContact(db_, minute, "I1AAA");
  const auto rows = db_.OpenDynaset("select * from Log order by DataQso");
  EXPECT_EQ(rows->RecordCount(), 1);
  rows->MoveNext();
  EXPECT_EQ(rows->RecordCount(), 2);
  rows->MoveLast();
  EXPECT_EQ(rows->RecordCount(), 600);
  rows->MoveFirst();
  EXPECT_EQ(rows->RecordCount(), 600);
}

TEST_F(DynasetTest, OpeningReadsOneKey) {
  for (int minute = 0; minute < 50; ++minute) AddContact(db_, minute, "I1AAA");
  const auto before = db_.Counters().rowsStepped;
  const auto rows = db_.OpenDynaset("select * from Log order by DataQso");
  EXPECT_EQ(db_.Counters().rowsStepped - before, 1);
}

TEST_F(DynasetTest, MovesStopOnTheMarks) {
  AddContact(db_, 1, "I1AAA");
  const auto rows = db_.OpenDynaset("select * from Log");
  rows->MovePrevious();
  EXPECT_TRUE(rows->BOF());
  EXPECT_EQ(ErrorOf([&] { rows->MovePrevious(); }), 3021);
  rows->MoveNext();
  EXPECT_EQ(rows->Field("Call").Text(), "I1AAA");
  rows->MoveNext();
  EXPECT_TRUE(rows->EOF_());
  EXPECT_EQ(ErrorOf([&] { rows->MoveNext(); }), 3021);
  rows->MovePrevious();
  EXPECT_EQ(rows->Field("Call").Text(), "I1AAA");
}

TEST_F(DynasetTest, RowsAddedThroughItStandAtItsEnd) {
  AddContact(db_, 5, "I1AAA");
  AddContact(db_, 9, "I1BBB");
  const auto rows = db_.OpenDynaset("select * from Log order by DataQso");
  rows->AddNew();
  rows->Set("DataQso", base::DateTime::Of(2001, 2, 3));
  rows->Set("Call", "I1CCC");
  rows->Update();
  EXPECT_EQ(rows->Field("Call").Text(), "I1AAA");
  rows->MoveLast();
  EXPECT_EQ(rows->Field("Call").Text(), "I1CCC");
  EXPECT_EQ(rows->RecordCount(), 3);
  rows->MoveFirst();
  rows->SetBookmark(rows->LastModified());
  EXPECT_EQ(rows->Field("Call").Text(), "I1CCC");
  rows->Requery();
  EXPECT_EQ(rows->Field("Call").Text(), "I1CCC");
}

TEST_F(DynasetTest, TheFirstRowAddedToAnEmptyOneIsReachedByItsBookmark) {
  const auto rows = db_.OpenDynaset("select * from SLog");
  rows->AddNew();
  rows->Set("Call", "I1CCC");
  rows->Update();
  EXPECT_TRUE(rows->EOF_());
  EXPECT_FALSE(rows->BOF());
  rows->SetBookmark(rows->LastModified());
  EXPECT_EQ(rows->Field("Call").Text(), "I1CCC");
}

TEST_F(DynasetTest, RowsAddedByOthersAreSeenAfterRequery) {
  AddContact(db_, 1, "I1AAA");
  const auto rows = db_.OpenDynaset("select * from Log order by DataQso");
  AddContact(db_, 2, "I1BBB");
  EXPECT_EQ(rows->TotalRows(), 1);
  rows->Requery();
  EXPECT_EQ(rows->TotalRows(), 2);
}

TEST_F(DynasetTest, KeysReadLateAreStillThoseOfTheOpening) {
  for (int minute = 0; minute < 10; ++minute) AddContact(db_, minute, "I1AAA");
  const auto rows = db_.OpenDynaset("select * from Log order by DataQso");
  AddContact(db_, 20, "I1BBB");
  db_.Execute("UPDATE Log SET DataQso=DateValue('01/01/1999') WHERE QsoNr=5");
  EXPECT_THAT(Texts(*rows, "QsoNr"),
              ElementsAre("1", "2", "3", "4", "5", "6", "7", "8", "9", "10"));
}

TEST_F(DynasetTest, RowsAreReadWhenTheyAreAskedFor) {
  AddContact(db_, 1, "I1AAA");
  const auto rows = db_.OpenDynaset("select * from Log");
  EXPECT_EQ(rows->Field("Call").Text(), "I1AAA");
  db_.Execute("UPDATE Log SET Call='I1ZZZ'");
  EXPECT_EQ(rows->Field("Call").Text(), "I1ZZZ");
}

TEST_F(DynasetTest, ARowThatIsRolledBackReadsAsItWas) {
  AddContact(db_, 1, "I1AAA");
  const auto rows = db_.OpenDynaset("select * from Log");
  db_.BeginTrans();
  rows->Edit();
  rows->Set("Call", "I1ZZZ");
  rows->Update();
  EXPECT_EQ(rows->Field("Call").Text(), "I1ZZZ");
  db_.Rollback();
  EXPECT_EQ(rows->Field("Call").Text(), "I1AAA");
}

TEST_F(DynasetTest, ARowDeletedByAnotherIsAnErrorOnReading) {
  AddContact(db_, 1, "I1AAA");
  AddContact(db_, 2, "I1BBB");
  const auto rows = db_.OpenDynaset("select * from Log");
  db_.Execute("DELETE FROM Log WHERE QsoNr=1");
  EXPECT_EQ(ErrorOf([&] { rows->Field("Call"); }), 3167);
  EXPECT_EQ(ErrorOf([&] { rows->Edit(); }), 3167);
  EXPECT_EQ(ErrorOf([&] { rows->Delete(); }), 3167);
  rows->MoveNext();
  EXPECT_EQ(rows->Field("Call").Text(), "I1BBB");
}

TEST_F(DynasetTest, DeletingStaysOnTheGap) {
  for (int minute : {1, 2, 3}) AddContact(db_, minute, "I1AAA");
  const auto rows = db_.OpenDynaset("select * from Log order by DataQso");
  rows->MoveNext();
  rows->Delete();
  EXPECT_EQ(ErrorOf([&] { rows->Field("Call"); }), 3167);
  EXPECT_FALSE(rows->BOF());
  EXPECT_FALSE(rows->EOF_());
  rows->MoveNext();
  EXPECT_EQ(rows->Field("QsoNr").Integer(), 3);
  rows->MovePrevious();
  EXPECT_EQ(rows->Field("QsoNr").Integer(), 1);
  EXPECT_EQ(rows->TotalRows(), 2);
}

TEST_F(DynasetTest, DeletingTheLastRowLeadsToTheEndMark) {
  AddContact(db_, 1, "I1AAA");
  AddContact(db_, 2, "I1BBB");
  const auto rows = db_.OpenDynaset("select * from Log order by DataQso");
  rows->MoveLast();
  rows->Delete();
  rows->MoveNext();
  EXPECT_TRUE(rows->EOF_());
  rows->MoveLast();
  EXPECT_EQ(rows->Field("Call").Text(), "I1AAA");
}

TEST_F(DynasetTest, DeletingTheOnlyRowStandsOnBothMarks) {
  AddContact(db_, 1, "I1AAA");
  const auto rows = db_.OpenDynaset("select * from Log");
  rows->Delete();
  EXPECT_TRUE(rows->BOF());
  EXPECT_TRUE(rows->EOF_());
  EXPECT_EQ(rows->RecordCount(), 0);
  rows->MoveNext();
  EXPECT_TRUE(rows->EOF_());
}

TEST_F(DynasetTest, ThinningWalksOnOverDeletedRows) {
  for (const char* square : {"JN65", "JN65", "JN66", "JN66", "JN67"}) {
    Add(db_, "SLog", {{"Locator", square}});
  }
  const auto rows = db_.OpenDynaset("SELECT * FROM SLog ORDER BY Locator,QslRicevuta");
  std::string previous;
  for (; !rows->EOF_(); rows->MoveNext()) {
    const std::string key = rows->Field("Locator").Text();
    if (key == previous) rows->Delete();
    previous = key;
  }
  EXPECT_THAT(Select(db_, "select Locator from SLog"), ElementsAre("JN65", "JN66", "JN67"));
}

TEST_F(DynasetTest, AMoveDropsTheRecordBeingWritten) {
  AddContact(db_, 1, "I1AAA");
  AddContact(db_, 2, "I1BBB");
  const auto rows = db_.OpenDynaset("select * from Log");
  rows->Edit();
  rows->Set("Call", "I1ZZZ");
  rows->MoveNext();
  EXPECT_EQ(ErrorOf([&] { rows->Update(); }), 3020);
  rows->MoveFirst();
  EXPECT_EQ(rows->Field("Call").Text(), "I1AAA");
}

TEST_F(DynasetTest, ARecordThatIsGivenUpIsNotWritten) {
  AddContact(db_, 1, "I1AAA");
  const auto table = db_.OpenTable("Log");
  const auto rows = db_.OpenDynaset("select * from Log");
  for (engine::EditableRecordset* each : {static_cast<engine::EditableRecordset*>(table.get()),
                                          static_cast<engine::EditableRecordset*>(rows.get())}) {
    each->Edit();
    each->Set("Call", "I1ZZZ");
    each->CancelUpdate();
    EXPECT_EQ(ErrorOf([&] { each->Update(); }), 3020);
    EXPECT_EQ(ErrorOf([&] { each->Set("Call", "I1ZZZ"); }), 3020);
    EXPECT_EQ(each->Field("Call").Text(), "I1AAA");
  }
}

TEST_F(DynasetTest, ARepeatedKeyIsToldAndTheSetStaysAsItWas) {
  AddContact(db_, 1, "I1AAA");
  const auto rows = db_.OpenDynaset("select * from Log");
  rows->AddNew();
  rows->Set("DataQso", base::DateTime::Of(2001, 2, 3, 0, 1));
  rows->Set("Call", "I1AAA");
  rows->Set("Banda", "  2 m");
  EXPECT_EQ(ErrorOf([&] { rows->Update(); }), 3022);
  EXPECT_EQ(rows->TotalRows(), 1);
  EXPECT_EQ(rows->Field("Call").Text(), "I1AAA");
}

TEST_F(DynasetTest, WorkedOutColumnsAreReadAndNotWritten) {
  Add(db_, "Country", {{"Country", "I"}, {"Descrizione", "Italy"}});
  const auto rows =
      db_.OpenDynaset("select left(Country+space(5),5)+Descrizione as Campo from Country");
  EXPECT_EQ(rows->Field("Campo").Text(), "I    Italy");
  rows->Edit();
  EXPECT_EQ(ErrorOf([&] { rows->Set("Campo", "X"); }), 3219);
  EXPECT_EQ(ErrorOf([&] { rows->Set("Descrizione", "X"); }), 3265);
}

TEST_F(DynasetTest, OnlyRowsOfOneTableCanBeWritten) {
  EXPECT_EQ(ErrorOf([&] { db_.OpenDynaset("select count(*) from Log"); }), 3219);
  EXPECT_EQ(ErrorOf([&] { db_.OpenDynaset("select Call from Log group by Call"); }), 3219);
  EXPECT_EQ(ErrorOf([&] { db_.OpenDynaset("select * from Log, Modi"); }), 3219);
  EXPECT_EQ(ErrorOf([&] { db_.OpenDynaset("DELETE FROM Log"); }), 3219);
}

TEST_F(DynasetTest, FindFirstStandsOnTheFirstRowInItsOrder) {
  AddContact(db_, 9, "I1AAA");
  AddContact(db_, 5, "I1AAA");
  AddContact(db_, 7, "I1BBB");
  const auto rows = db_.OpenDynaset("SELECT * FROM Log ORDER By DataQso DESC ,QsoNr");
  rows->FindFirst("Call='i1aaa' and Locator='JN65FR'");
  ASSERT_FALSE(rows->NoMatch());
  EXPECT_EQ(rows->Field("QsoNr").Integer(), 1);
  rows->FindFirst("QsoNr=3");
  EXPECT_EQ(rows->Field("Call").Text(), "I1BBB");
  rows->MoveNext();
  EXPECT_EQ(rows->Field("QsoNr").Integer(), 2);
}

TEST_F(DynasetTest, FindFirstWithoutAMatchStaysWhereItWas) {
  AddContact(db_, 1, "I1AAA");
  AddContact(db_, 2, "I1BBB");
  const auto rows = db_.OpenDynaset("select * from Log order by DataQso");
  rows->MoveLast();
  rows->FindFirst("Call='NESSUNO'");
  EXPECT_TRUE(rows->NoMatch());
  EXPECT_EQ(rows->Field("Call").Text(), "I1BBB");
}

TEST_F(DynasetTest, FindFirstLooksOnlyAmongItsRows) {
  AddContact(db_, 1, "I1AAA");
  AddContact(db_, 2, "I1BBB");
  const auto rows = db_.OpenDynaset("select * from Log where Call='I1AAA' or Call='I1CCC'");
  rows->FindFirst("QsoNr=2");
  EXPECT_TRUE(rows->NoMatch());
  rows->FindFirst("QsoNr=1 or QsoNr=2");
  EXPECT_FALSE(rows->NoMatch());
}

TEST_F(DynasetTest, FindFirstFindsRowsAddedThroughIt) {
  AddContact(db_, 5, "I1AAA");
  const auto rows = db_.OpenDynaset("select * from Log order by DataQso");
  rows->AddNew();
  rows->Set("DataQso", base::DateTime::Of(2001, 2, 3));
  rows->Set("Call", "I1AAA");
  rows->Update();
  rows->FindFirst("Call='I1AAA'");
  EXPECT_EQ(rows->Field("QsoNr").Integer(), 1);
  rows->FindFirst("QsoNr=2");
  EXPECT_EQ(rows->Field("QsoNr").Integer(), 2);
  AddContact(db_, 30, "I1ZZZ");
  rows->FindFirst("Call='I1ZZZ'");
  EXPECT_TRUE(rows->NoMatch());
}

TEST_F(DynasetTest, FindFirstPassesOverWhatAnotherProgramHasAddedBeforeIt) {
  AddContact(db_, 5, "I1AAA");
  AddContact(db_, 9, "I1AAA");
  const auto rows = db_.OpenDynaset("select * from Log order by DataQso");
  rows->MoveLast();
  engine::Database other = scratch_.Open();
  AddContact(other, 1, "I1AAA");
  rows->FindFirst("Call='I1AAA'");
  ASSERT_FALSE(rows->NoMatch());
  EXPECT_EQ(rows->Field("QsoNr").Integer(), 1);
  AddContact(other, 2, "I1NEW");
  rows->FindFirst("Call='I1NEW'");
  EXPECT_TRUE(rows->NoMatch());
  EXPECT_EQ(rows->Field("QsoNr").Integer(), 1);
}

TEST_F(DynasetTest, FindFirstTellsOfAConditionThatIsNone) {
  AddContact(db_, 1, "I1AAA");
  const auto rows = db_.OpenDynaset("select * from Log");
  EXPECT_EQ(ErrorOf([&] { rows->FindFirst("Call='O'HARA'"); }), 3075);
  EXPECT_EQ(ErrorOf([&] { rows->FindFirst("Nome='X'"); }), 3061);
  EXPECT_EQ(ErrorOf([&] { rows->FindFirst("QsoNr="); }), 3075);
  EXPECT_EQ(ErrorOf([&] { rows->FindFirst("1=1; delete from Log"); }), 3075);
  EXPECT_EQ(rows->Field("Call").Text(), "I1AAA");
}

TEST_F(DynasetTest, ABookmarkLeadsBackToItsRow) {
  for (int minute = 0; minute < 500; ++minute) AddContact(db_, minute, "I1AAA");
  const auto rows = db_.OpenDynaset("select * from Log order by DataQso");
  rows->SetBookmark({400});
  EXPECT_EQ(rows->Field("QsoNr").Integer(), 400);
  const engine::Bookmark bookmark = rows->GetBookmark();
  rows->MoveFirst();
  rows->SetBookmark(bookmark);
  EXPECT_EQ(rows->Field("QsoNr").Integer(), 400);
  EXPECT_EQ(ErrorOf([&] { rows->SetBookmark({501}); }), 3167);
}

TEST_F(DynasetTest, AGridReadsTheRowsOnScreenAlone) {
  for (int minute = 0; minute < 500; ++minute) AddContact(db_, minute, "I1AAA");
  const auto rows = db_.OpenDynaset("select QsoNr,Call from Log order by DataQso");
  EXPECT_EQ(rows->TotalRows(), 500);
  const auto before = db_.Counters().rowsStepped;
  EXPECT_EQ(rows->RowAt(300), (std::vector<engine::Value>{301, "I1AAA"}));
  EXPECT_EQ(db_.Counters().rowsStepped - before, 1);
  EXPECT_EQ(rows->BookmarkAt(300).key, 301);
  EXPECT_TRUE(rows->RowAt(500).empty());
  EXPECT_EQ(ErrorOf([&] { rows->BookmarkAt(500); }), 3021);
  EXPECT_EQ(rows->Field("QsoNr").Integer(), 1);
}

TEST_F(DynasetTest, AClosedDynasetAnswersWithAnError) {
  AddContact(db_, 1, "I1AAA");
  const auto rows = db_.OpenDynaset("select * from Log");
  rows->Close();
  EXPECT_EQ(ErrorOf([&] { rows->Field("Call"); }), 3420);
  EXPECT_EQ(ErrorOf([&] { rows->Requery(); }), 3420);
}

// A walk through a log of 500, and what it costs in statements.
class WalkTest : public DynasetTest {
 protected:
  WalkTest() {
    db_.BeginTrans();
    for (int minute = 0; minute < kContacts; ++minute) AddContact(db_, minute, "I1AAA");
    db_.CommitTrans();
  }
  std::unique_ptr<engine::Dynaset> Opened() {
    return db_.OpenDynaset("select * from Log order by DataQso");
  }

  static constexpr int kContacts = 500;
};

TEST_F(WalkTest, RowsAreFetchedManyAtATime) {
  const auto rows = Opened();
  const auto before = db_.Counters().statements;
  for (int nr = 1; nr <= kContacts; ++nr, rows->MoveNext()) {
    ASSERT_EQ(rows->Field("QsoNr").Integer(), nr);
  }
  EXPECT_TRUE(rows->EOF_());
  EXPECT_LE(db_.Counters().statements - before, 14);  // 1, 2, 4 ... 64 rows, then 64 each
}

TEST_F(WalkTest, OneRowAskedForIsOneRowFetched) {
  const auto rows = Opened();
  rows->MoveLast();
  const auto before = db_.Counters().rowsStepped;
  EXPECT_EQ(rows->Field("QsoNr").Integer(), kContacts);
  rows->SetBookmark({100});
  EXPECT_EQ(rows->Field("QsoNr").Integer(), 100);
  rows->MovePrevious();
  EXPECT_EQ(rows->Field("QsoNr").Integer(), 99);
  EXPECT_EQ(db_.Counters().rowsStepped - before, 3);
}

TEST_F(WalkTest, TheRowThatIsLookedAtFirstIsFetchedWithAllItsColumns) {
  const auto rows = Opened();
  rows->MoveLast();
  const auto before = db_.Counters().statements;
  for (const std::string& column : rows->Columns()) rows->Field(column);
  EXPECT_EQ(db_.Counters().statements - before, 1);
}

TEST_F(WalkTest, AllColumnsThatAreAskedOfEachRowAreFetchedAhead) {
  const auto rows = Opened();
  const auto before = db_.Counters().statements;
  for (int nr = 1; nr <= kContacts; ++nr, rows->MoveNext()) {
    ASSERT_EQ(rows->Field("QsoNr").Integer(), nr);
    ASSERT_EQ(rows->Field("Call").Text(), "I1AAA");
    ASSERT_EQ(rows->Field("Banda").Text(), "  2 m");
  }
  EXPECT_LE(db_.Counters().statements - before, 20);
}

TEST_F(WalkTest, RunningTheSelectAgainCompilesNothing) {
  const auto rows = Opened();
  rows->MoveNext();
  const auto before = db_.Counters().prepared;
  rows->Requery();
  EXPECT_EQ(rows->RecordCount(), 1);
  EXPECT_EQ(db_.Counters().prepared, before);
}

TEST_F(WalkTest, AWalkThatWritesReadsFewRowsTwice) {
  const auto rows = Opened();
  rows->MoveLast();
  rows->MoveFirst();
  const auto before = db_.Counters().rowsStepped;
  for (int nr = 1; nr <= kContacts; ++nr, rows->MoveNext()) {
    ASSERT_EQ(rows->Field("Call").Text(), "I1AAA");
    if (nr % 4 != 0) continue;
    rows->Edit();
    rows->Set("Call", "I1ZZZ");
    rows->Update();
    ASSERT_EQ(rows->Field("Call").Text(), "I1ZZZ");
  }
  EXPECT_LE(db_.Counters().rowsStepped - before, 2 * kContacts);
}

TEST_F(WalkTest, WhatIsChangedAheadIsSeen) {
  const auto rows = Opened();
  for (int nr = 1; nr < 100; ++nr, rows->MoveNext()) {
    ASSERT_EQ(rows->Field("Call").Text(), "I1AAA");
  }
  db_.BeginTrans();
  db_.Execute("UPDATE Log SET Call='I1ZZZ' WHERE QsoNr>=100");
  EXPECT_EQ(rows->Field("Call").Text(), "I1ZZZ");
  rows->MoveNext();
  EXPECT_EQ(rows->Field("Call").Text(), "I1ZZZ");
  db_.Rollback();
  EXPECT_EQ(rows->Field("Call").Text(), "I1AAA");
}

TEST_F(WalkTest, WhatIsDeletedAheadIsAnErrorOnReading) {
  db_.Execute("DELETE FROM Log WHERE QsoNr=2");
  const auto rows = Opened();
  rows->MoveLast();
  db_.Execute("DELETE FROM Log WHERE QsoNr=100 or QsoNr=101");
  std::vector<std::int64_t> deleted;
  rows->MoveFirst();
  for (; !rows->EOF_(); rows->MoveNext()) {
    const int error = ErrorOf([&] { rows->Field("Call"); });
    if (error == 3167) deleted.push_back(rows->RecordCount());
    EXPECT_EQ(ErrorOf([&] { rows->Edit(); }), error);
  }
  EXPECT_EQ(deleted.size(), 2u);
}

TEST_F(WalkTest, AColumnAskedForOnTheWayIsThere) {
  const auto rows = Opened();
  for (int nr = 1; nr <= kContacts; ++nr, rows->MoveNext()) {
    ASSERT_EQ(rows->Field("Call").Text(), "I1AAA");
    if (nr % 3 == 0) {
      ASSERT_EQ(rows->Field("QsoNr").Integer(), nr);
    }
    if (nr == 200) {
      ASSERT_EQ(rows->Field("Locator").Text(), "JN65FR");
    }
  }
}

TEST_F(WalkTest, WorkedOutColumnsAreReadOneRowAtATime) {
  const auto rows = db_.OpenDynaset("select QsoNr, Left(Call,2)+Locator as Both from Log");
  for (int nr = 1; nr <= kContacts; ++nr, rows->MoveNext()) {
    ASSERT_EQ(rows->Field("Both").Text(), "I1JN65FR");
    ASSERT_EQ(rows->Field("QsoNr").Integer(), nr);
  }
}

TEST_F(WalkTest, ARecordEditedBeforeItIsLookedAtIsRead) {
  const auto rows = Opened();
  rows->MoveNext();
  rows->Edit();
  rows->Set("Call", "I1ZZZ");
  EXPECT_EQ(rows->Field("QsoNr").Integer(), 2);
  rows->Update();
  EXPECT_EQ(rows->Field("Call").Text(), "I1ZZZ");
}

}  // namespace
}  // namespace brenvo::file
