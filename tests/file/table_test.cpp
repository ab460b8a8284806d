#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/file/contacts.h"

namespace brenvo::file {
namespace {

using ::testing::ElementsAre;

class TableTest : public ::testing::Test {
 protected:
  void AddPrefix(const char* prefix, engine::Value cq, engine::Value itu, const char* continent,
                 const char* country) {
    Add(db_, "Prefissi",
        {{"Prefisso", prefix},
         {"Zona CQ", cq},
         {"Zona ITU", itu},
         {"Continente", continent},
         {"Country", country}});
  }

  ScratchDatabase scratch_;
  engine::Database db_ = scratch_.Open();
};

TEST_F(TableTest, AnEmptyTableStandsOnBothMarks) {
  const auto table = db_.OpenTable("Contest");
  EXPECT_TRUE(table->BOF());
  EXPECT_TRUE(table->EOF_());
  EXPECT_EQ(table->RecordCount(), 0);
  EXPECT_EQ(ErrorOf([&] { table->Field("Banda"); }), 3021);
  EXPECT_EQ(ErrorOf([&] { table->MoveNext(); }), 3021);
  EXPECT_EQ(ErrorOf([&] { table->MovePrevious(); }), 3021);
}

TEST_F(TableTest, MovingToEitherEndOfAnEmptyTableIsNoError) {
  const auto table = db_.OpenTable("Contest");
  table->MoveFirst();
  EXPECT_TRUE(table->BOF());
  table->MoveLast();
  EXPECT_TRUE(table->EOF_());
}

TEST_F(TableTest, WithoutAnIndexRowsComeInOrderOfEntry) {
  for (const char* call : {"ZZ1A", "AA1A", "MM1A"}) AddContact(db_, call[0], call);
  const auto table = db_.OpenTable("log");
  EXPECT_THAT(Texts(*table, "Call"), ElementsAre("ZZ1A", "AA1A", "MM1A"));
}

TEST_F(TableTest, AnIndexOrdersTheRowsWithoutRegardToCase) {
  int minute = 0;
  for (const char* call : {"zz1a", "AA1A", "mm1a", "AA1A"}) AddContact(db_, ++minute, call);
  const auto table = db_.OpenTable("Log");
  table->SetIndex("call");
  EXPECT_THAT(Texts(*table, "Call"), ElementsAre("AA1A", "AA1A", "mm1a", "zz1a"));
  table->MovePrevious();
  EXPECT_EQ(table->Field("Call").Text(), "zz1a");
  table->MovePrevious();
  table->MovePrevious();
  EXPECT_EQ(table->Field("QsoNr").Integer(), 4);
  table->MovePrevious();
  EXPECT_EQ(table->Field("QsoNr").Integer(), 2);
  table->MovePrevious();
  EXPECT_TRUE(table->BOF());
  table->MoveNext();
  EXPECT_EQ(table->Field("QsoNr").Integer(), 2);
}

TEST_F(TableTest, NullKeysStandBeforeAllOthers) {
  AddPrefix("I2", 15, 28, "EU", "I");
  AddPrefix("I2", engine::Value(), 28, "EU", "I");
  AddPrefix("I2", 14, engine::Value(), "EU", "I");
  AddPrefix("I1", engine::Value(), engine::Value(), "EU", "I");
  const auto table = db_.OpenTable("Prefissi");
  table->SetIndex("PrimaryKey");
  EXPECT_THAT(Texts(*table, "Zona CQ"), ElementsAre("", "", "14", "15"));
  std::vector<std::string> backwards;
  for (table->MoveLast(); !table->BOF(); table->MovePrevious()) {
    backwards.push_back(table->Field("Zona CQ").Text());
  }
  EXPECT_THAT(backwards, ElementsAre("15", "14", "", ""));
}

TEST_F(TableTest, MovingPastTheLastRowStandsOnTheEndMark) {
  AddContact(db_, 1, "I1AAA");
  const auto table = db_.OpenTable("Log");
  table->MoveNext();
  EXPECT_TRUE(table->EOF_());
  EXPECT_EQ(ErrorOf([&] { table->MoveNext(); }), 3021);
  EXPECT_EQ(ErrorOf([&] { table->Field("Call"); }), 3021);
  table->MovePrevious();
  EXPECT_EQ(table->Field("Call").Text(), "I1AAA");
}

TEST_F(TableTest, SeekFindsTheFirstOfEqualKeys) {
  AddContact(db_, 1, "I1AAA");
  AddContact(db_, 2, "I3BBB");
  AddContact(db_, 3, "I3BBB");
  const auto table = db_.OpenTable("Log");
  table->SetIndex("Call");
  table->Seek("=", {"i3bbb  "});
  ASSERT_FALSE(table->NoMatch());
  EXPECT_EQ(table->Field("QsoNr").Integer(), 2);
}

TEST_F(TableTest, SeekWithoutAMatchLeavesNoCurrentRecord) {
  AddContact(db_, 1, "I1AAA");
  const auto table = db_.OpenTable("Log");
  table->SetIndex("Call");
  table->Seek("=", {"I1A"});
  EXPECT_TRUE(table->NoMatch());
  EXPECT_EQ(ErrorOf([&] { table->Field("Call"); }), 3021);
  table->Seek("=", {"I1AAA"});
  EXPECT_FALSE(table->NoMatch());
}

TEST_F(TableTest, SeekOfAtLeastAKeyFindsTheRowThatSortsFirst) {
  AddPrefix("I2", 15, 28, "EU", "I");
  AddPrefix("I2", 14, 27, "EU", "I");
  AddPrefix("IS0", 15, 28, "EU", "IS0");
  const auto table = db_.OpenTable("Prefissi");
  table->SetIndex("PrimaryKey");
  table->Seek(">=", {"I2", 0, 0, ""});
  ASSERT_FALSE(table->NoMatch());
  EXPECT_EQ(table->Field("Zona CQ").Integer(), 14);
  table->Seek(">=", {"I2", 15, 28, "EV"});
  EXPECT_EQ(table->Field("Prefisso").Text(), "IS0");
  table->Seek(">=", {"I2", 14, 28, ""});
  EXPECT_EQ(table->Field("Zona CQ").Integer(), 15);
  table->Seek(">=", {"I3", 0, 0, ""});
  EXPECT_EQ(table->Field("Prefisso").Text(), "IS0");
  table->Seek(">=", {"IT9", 0, 0, ""});
  EXPECT_TRUE(table->NoMatch());
}

TEST_F(TableTest, SeekTakesALeadingPartOfTheKey) {
  AddPrefix("I2", 14, 28, "EU", "I");
  AddPrefix("K1", 5, 8, "NA", "K");
  const auto table = db_.OpenTable("Prefissi");
  table->SetIndex("PrimaryKey");
  table->Seek("=", {"K1", 5});
  ASSERT_FALSE(table->NoMatch());
  EXPECT_EQ(table->Field("Country").Text(), "K");
  table->Seek(">=", {"J"});
  EXPECT_EQ(table->Field("Prefisso").Text(), "K1");
}

TEST_F(TableTest, SeekLooksAtNoMoreValuesThanTheIndexHolds) {
  AddPrefix("I2", 14, 28, "EU", "I");
  const auto table = db_.OpenTable("Prefissi");
  table->SetIndex("PrimaryKey");
  table->Seek("=", {"I2", 14, 28, "EU", "XX"});
  EXPECT_FALSE(table->NoMatch());
}

TEST_F(TableTest, SeekConvertsTextsToTheKeysType) {
  AddPrefix("I2", 14, 28, "EU", "I");
  Add(db_, "Contest", {{"DataContest", base::DateTime::Of(2001, 6, 2)}, {"Banda", "  2 m"}});
  const auto prefixes = db_.OpenTable("Prefissi");
  prefixes->SetIndex("PrimaryKey");
  prefixes->Seek("=", {"I2", "14", " 28", "EU"});
  EXPECT_FALSE(prefixes->NoMatch());
  const auto contests = db_.OpenTable("Contest");
  contests->SetIndex("PrimaryKey");
  contests->Seek("=", {"02/06/2001", "  2 m"});
  EXPECT_FALSE(contests->NoMatch());
}

TEST_F(TableTest, SeekMeetsLettersOutsideAsciiWithoutRegardToCase) {
  Add(db_, "NoteHelp", {{"TipoNota", "Citta"}, {"Nota", "Cantù"}});
  const auto table = db_.OpenTable("NoteHelp");
  table->SetIndex("PrimaryKey");
  table->Seek("=", {"CITTA", "CANTÙ "});
  ASSERT_FALSE(table->NoMatch());
  EXPECT_EQ(table->Field("Nota").Text(), "Cantù");
}

TEST_F(TableTest, SeekNeedsAnIndex) {
  const auto table = db_.OpenTable("Log");
  EXPECT_EQ(ErrorOf([&] { table->Seek("=", {"I1AAA"}); }), 3219);
}

TEST_F(TableTest, AnUnknownIndexIsAnError) {
  const auto table = db_.OpenTable("Log");
  EXPECT_EQ(ErrorOf([&] { table->SetIndex("Nome"); }), 3015);
}

TEST_F(TableTest, AnUnknownTableIsAnError) {
  EXPECT_EQ(ErrorOf([&] { db_.OpenTable("Registro"); }), 3078);
  EXPECT_EQ(ErrorOf([&] { db_.OpenTable("sqlite_schema"); }), 3078);
}

TEST_F(TableTest, AnUnknownColumnIsAnError) {
  AddContact(db_, 1, "I1AAA");
  const auto table = db_.OpenTable("Log");
  EXPECT_EQ(ErrorOf([&] { table->Field("Nome"); }), 3265);
  EXPECT_EQ(ErrorOf([&] { table->Field(std::size_t{99}); }), 3265);
}

TEST_F(TableTest, ANewRecordIsNullAndNo) {
  Add(db_, "Log", {{"Call", "I1AAA"}});
  const auto table = db_.OpenTable("Log");
  EXPECT_TRUE(table->Field("Qra").IsNull());
  EXPECT_TRUE(table->Field("DataQso").IsNull());
  EXPECT_EQ(table->Field("QslInviata"), engine::Value(false));
}

TEST_F(TableTest, AnEmptyTextIsStoredAsAnEmptyText) {
  Add(db_, "Log", {{"Call", "I1AAA"}, {"Qra", ""}});
  const auto table = db_.OpenTable("Log");
  EXPECT_EQ(table->Field("Qra"), engine::Value(""));
}

TEST_F(TableTest, TextsKeepTheirBlanks) {
  AddContact(db_, 1, "I1AAA ", "  2 m");
  const auto table = db_.OpenTable("Log");
  EXPECT_EQ(table->Field("Call").Text(), "I1AAA ");
  EXPECT_EQ(table->Field("Banda").Text(), "  2 m");
}

TEST_F(TableTest, NothingIsWrittenBeforeUpdate) {
  const auto table = db_.OpenTable("Log");
  table->AddNew();
  table->Set("Call", "I1AAA");
  EXPECT_EQ(table->RecordCount(), 0);
  table->MoveFirst();
  EXPECT_EQ(ErrorOf([&] { table->Update(); }), 3020);
  EXPECT_EQ(table->RecordCount(), 0);
}

TEST_F(TableTest, FieldsOfARecordBeingWrittenReadAsSet) {
  AddContact(db_, 1, "I1AAA");
  const auto table = db_.OpenTable("Log");
  table->Edit();
  table->Set("Call", "I1BBB");
  EXPECT_EQ(table->Field("Call").Text(), "I1BBB");
  EXPECT_EQ(table->Field("Banda").Text(), "  2 m");
  table->CancelUpdate();
  EXPECT_EQ(table->Field("Call").Text(), "I1AAA");
}

TEST_F(TableTest, SettingOutsideOfARecordIsAnError) {
  AddContact(db_, 1, "I1AAA");
  const auto table = db_.OpenTable("Log");
  EXPECT_EQ(ErrorOf([&] { table->Set("Call", "I1BBB"); }), 3020);
}

TEST_F(TableTest, AfterAddNewTheRecordBeforeItStaysCurrent) {
  AddContact(db_, 1, "I1AAA");
  const auto table = db_.OpenTable("Log");
  table->AddNew();
  table->Set("Call", "I1BBB");
  table->Update();
  EXPECT_EQ(table->Field("Call").Text(), "I1AAA");
  table->SetBookmark(table->LastModified());
  EXPECT_EQ(table->Field("Call").Text(), "I1BBB");
}

TEST_F(TableTest, EditChangesWhatIsSetAndNothingElse) {
  AddContact(db_, 1, "I1AAA");
  const auto table = db_.OpenTable("Log");
  table->Edit();
  table->Set("Zona CQ", 15);
  table->Update();
  EXPECT_EQ(table->Field("Zona CQ").Integer(), 15);
  EXPECT_EQ(table->Field("Call").Text(), "I1AAA");
  EXPECT_EQ(table->LastModified(), table->GetBookmark());
}

TEST_F(TableTest, AHandleShowsWhatAnotherOneWrote) {
  AddContact(db_, 1, "I1AAA");
  const auto reader = db_.OpenTable("Log");
  EXPECT_EQ(reader->Field("Call").Text(), "I1AAA");
  db_.Execute("UPDATE Log SET Call='I1CCC'");
  EXPECT_EQ(reader->Field("Call").Text(), "I1CCC");
  EXPECT_EQ(reader->RecordCount(), 1);
  db_.Execute("DELETE FROM Log");
  EXPECT_EQ(ErrorOf([&] { reader->Field("Call"); }), 3167);
  EXPECT_EQ(reader->RecordCount(), 0);
}

TEST_F(TableTest, DeletingLeavesAGapThatMovesLeadOutOf) {
  for (int minute : {1, 2, 3}) AddContact(db_, minute, "I1AAA");
  const auto table = db_.OpenTable("Log");
  table->SetIndex("DataQso");
  table->MoveNext();
  table->Delete();
  EXPECT_EQ(ErrorOf([&] { table->Field("Call"); }), 3167);
  EXPECT_FALSE(table->EOF_());
  table->MoveNext();
  EXPECT_EQ(table->Field("QsoNr").Integer(), 3);
  table->Delete();
  table->MovePrevious();
  EXPECT_EQ(table->Field("QsoNr").Integer(), 1);
}

TEST_F(TableTest, DeletingTheOnlyRowStandsOnBothMarks) {
  AddContact(db_, 1, "I1AAA");
  const auto table = db_.OpenTable("Log");
  table->Delete();
  EXPECT_TRUE(table->BOF());
  EXPECT_TRUE(table->EOF_());
  EXPECT_EQ(table->RecordCount(), 0);
  table->MoveNext();
  EXPECT_TRUE(table->EOF_());
}

TEST_F(TableTest, ABookmarkOfADeletedRowIsAnError) {
  const engine::Bookmark bookmark = AddContact(db_, 1, "I1AAA");
  const auto table = db_.OpenTable("Log");
  table->Delete();
  EXPECT_EQ(ErrorOf([&] { table->SetBookmark(bookmark); }), 3167);
}

TEST_F(TableTest, ARowMovedInTheIndexIsFollowedToItsNewPlace) {
  int minute = 0;
  for (const char* call : {"A", "B", "C"}) AddContact(db_, ++minute, call);
  const auto table = db_.OpenTable("Log");
  table->SetIndex("Call");
  table->Edit();
  table->Set("Call", "BB");
  table->Update();
  table->MoveNext();
  EXPECT_EQ(table->Field("Call").Text(), "C");
}

TEST_F(TableTest, EachKindOfColumnTakesWhatItCan) {
  const auto table = db_.OpenTable("Log");
  table->AddNew();
  table->Set("Call", 5);
  table->Set("Zona CQ", " 15 ");
  table->Set("Zona ITU", 27.5);
  table->Set("Frequenza", "144.050");
  table->Set("DataQso", "03/02/2001 04:05:06");
  table->Set("QslRicevuta", 1);
  table->Update();
  EXPECT_EQ(table->RecordCount(), 1);
  table->MoveFirst();
  EXPECT_EQ(table->Field("Call"), engine::Value("5"));
  EXPECT_EQ(table->Field("Zona CQ"), engine::Value(15));
  EXPECT_EQ(table->Field("Zona ITU"), engine::Value(28));
  EXPECT_EQ(table->Field("Frequenza"), engine::Value(144.05));
  EXPECT_EQ(table->Field("DataQso"), engine::Value(base::DateTime::Of(2001, 2, 3, 4, 5, 6)));
  EXPECT_EQ(table->Field("QslRicevuta"), engine::Value(true));
}

TEST_F(TableTest, ATextThatIsNoNumberIsNotWrittenToANumber) {
  const auto table = db_.OpenTable("Log");
  table->AddNew();
  for (const char* text : {"", "abc", "15x", "1.2.3", "-"}) {
    EXPECT_EQ(ErrorOf([&] { table->Set("Zona CQ", text); }), 3421) << text;
    EXPECT_EQ(ErrorOf([&] { table->Set("Frequenza", text); }), 3421) << text;
  }
  EXPECT_EQ(ErrorOf([&] { table->Set("DataQso", "31/02/2001"); }), 3421);
  EXPECT_EQ(ErrorOf([&] { table->Set("DataQso", 5); }), 3421);
  EXPECT_EQ(ErrorOf([&] { table->Set("QslRicevuta", "forse"); }), 3421);
}

TEST_F(TableTest, TheCounterIsNotWritten) {
  const auto table = db_.OpenTable("Log");
  table->AddNew();
  EXPECT_EQ(ErrorOf([&] { table->Set("QsoNr", 7); }), 3219);
}

TEST_F(TableTest, TheCounterNeverGivesANumberTwice) {
  AddContact(db_, 1, "I1AAA");
  AddContact(db_, 2, "I1BBB");
  db_.Execute("DELETE * FROM Log");
  db_.Close();
  db_ = scratch_.Open();
  EXPECT_EQ(AddContact(db_, 3, "I1CCC").key, 3);
}

TEST_F(TableTest, ARepeatedKeyIsToldAndTheRecordDropped) {
  AddContact(db_, 1, "I1AAA");
  const auto table = db_.OpenTable("Log");
  table->AddNew();
  table->Set("DataQso", base::DateTime::Of(2001, 2, 3, 0, 1));
  table->Set("Call", "i1aaa  ");
  table->Set("Banda", "  2 M");
  EXPECT_EQ(ErrorOf([&] { table->Update(); }), 3022);
  EXPECT_EQ(table->RecordCount(), 1);
  EXPECT_EQ(ErrorOf([&] { table->Update(); }), 3020);
  EXPECT_EQ(table->Field("Call").Text(), "I1AAA");
}

TEST_F(TableTest, AnEditThatRepeatsAKeyLeavesTheRowAsItWas) {
  AddContact(db_, 1, "I1AAA");
  AddContact(db_, 1, "I1BBB");
  const auto table = db_.OpenTable("Log");
  table->MoveLast();
  table->Edit();
  table->Set("Call", "I1AAA");
  EXPECT_EQ(ErrorOf([&] { table->Update(); }), 3022);
  EXPECT_EQ(table->Field("Call").Text(), "I1BBB");
}

TEST_F(TableTest, AClosedTableAnswersWithAnError) {
  AddContact(db_, 1, "I1AAA");
  const auto table = db_.OpenTable("Log");
  table->Close();
  EXPECT_EQ(ErrorOf([&] { table->Field("Call"); }), 3420);
  EXPECT_EQ(ErrorOf([&] { table->MoveFirst(); }), 3420);
}

}  // namespace
}  // namespace brenvo::file
