#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <random>

#include "tests/file/contacts.h"

namespace brenvo::file {
namespace {

constexpr std::int64_t kOfALongLog = 9000;

// A log whose days, three contacts each and out of the order of entry, are the same again and
// again.
class HeldKeysTest : public ::testing::Test {
 protected:
  HeldKeysTest() {
    scratch_.Sql(
        "WITH RECURSIVE n(i) AS (SELECT 0 UNION ALL SELECT i+1 FROM n WHERE i<" +
        std::to_string(kOfALongLog - 1) +
        ") INSERT INTO Log (DataQso, Call, Banda, QslDaInviare, QslRicevuta, QslInviata) "
        "SELECT date('2001-01-01', '+' || (i*7919 % 3000) || ' days') || ' 10:00:00', 'I' || i, "
        "'  2 m', 0, 0, 0 FROM n");
    db_ = scratch_.Open();
  }

  std::int64_t Stepped() { return db_.Counters().rowsStepped; }
  std::int64_t NrHere(engine::Dynaset& rows) { return rows.Field("QsoNr").Integer(); }
  // All its keys as a snapshot of the same statement gives them.
  std::vector<std::int64_t> InOrder(const std::string& select) {
    std::vector<std::int64_t> numbers;
    const auto rows = db_.OpenSnapshot(select);
    for (; !rows->EOF_(); rows->MoveNext()) numbers.push_back(rows->Field("QsoNr").Integer());
    return numbers;
  }

  ScratchDatabase scratch_;
  engine::Database db_;
};

constexpr const char* kOrders[] = {"SELECT * FROM Log ORDER By DataQso,QsoNr",
                                   "SELECT * FROM Log ORDER By DataQso DESC ,QsoNr",
                                   "SELECT * FROM Log ORDER By DataQso", "SELECT * FROM Log"};

TEST_F(HeldKeysTest, TheLastOfManyIsReachedWithoutReadingThemAll) {
  const auto rows = db_.OpenDynaset(kOrders[0]);
  const std::int64_t before = Stepped();
  rows->MoveLast();
  EXPECT_EQ(rows->RecordCount(), kOfALongLog);
  EXPECT_EQ(NrHere(*rows), InOrder(kOrders[0]).back());
  EXPECT_EQ(rows->TotalRows(), kOfALongLog);
  EXPECT_LT(Stepped() - before, kOfALongLog + 3000);  // of which kOfALongLog are the snapshot's
}

TEST_F(HeldKeysTest, BackwardsFromTheEndIsTheSameOrder) {
  for (const char* const order : kOrders) {
    SCOPED_TRACE(order);
    const std::vector<std::int64_t> all = InOrder(order);
    const auto rows = db_.OpenDynaset(order);
    rows->MoveLast();
    for (std::int64_t place = kOfALongLog; place-- > 0; rows->MovePrevious()) {
      ASSERT_EQ(rows->GetBookmark().key, all[static_cast<std::size_t>(place)]) << place;
    }
    EXPECT_TRUE(rows->BOF());
  }
}

TEST_F(HeldKeysTest, AnyPlaceIsTheSameWhateverWasReadBefore) {
  std::mt19937 random(1);
  const auto below = [&](std::int64_t n) { return static_cast<std::int64_t>(random()) % n; };
  for (int time = 0; time < 12; ++time) {
    const char* const order = kOrders[time % 4];
    const std::vector<std::int64_t> all = InOrder(order);
    const auto rows = db_.OpenDynaset(order);
    ASSERT_EQ(rows->TotalRows(), kOfALongLog);
    for (int i = 0; i < 40; ++i) {
      const std::int64_t place = below(kOfALongLog);
      const std::int64_t key = all[static_cast<std::size_t>(place)];
      switch (below(4)) {
        case 0:
          ASSERT_EQ(rows->BookmarkAt(place).key, key);
          break;
        case 1:
          ASSERT_EQ(rows->RowAt(place).front().Integer(), key);
          break;
        case 2:
          rows->SetBookmark({key});
          ASSERT_EQ(NrHere(*rows), key);
          break;
        default:
          db_.ReadOn(below(200));
      }
    }
    EXPECT_TRUE(rows->RowAt(kOfALongLog).empty());
    EXPECT_EQ(ErrorOf([&] { rows->BookmarkAt(kOfALongLog); }), 3021);
  }
}

TEST_F(HeldKeysTest, WhatIsReadLaterIsWhatWasThereAtTheOpening) {
  const std::vector<std::int64_t> all = InOrder(kOrders[1]);
  const auto rows = db_.OpenDynaset(kOrders[1]);
  rows->MoveLast();
  db_.Execute("UPDATE Log SET DataQso=DateValue('01/01/1999') WHERE QsoNr<=100");
  AddContact(db_, 1, "IK9NEW");
  EXPECT_EQ(rows->TotalRows(), kOfALongLog);
  for (std::int64_t place = 0; place < kOfALongLog; ++place) {
    ASSERT_EQ(rows->BookmarkAt(place).key, all[static_cast<std::size_t>(place)]);
  }
}

TEST_F(HeldKeysTest, RowsComeAndGoAtTheEndAsInAFewOnes) {
  const auto rows = db_.OpenDynaset(kOrders[0]);
  rows->MoveLast();
  const std::int64_t last = NrHere(*rows);
  rows->AddNew();
  rows->Set("DataQso", base::DateTime::Of(2001, 2, 3));
  rows->Set("Call", "I1CCC");
  rows->Update();
  EXPECT_EQ(NrHere(*rows), last);
  rows->SetBookmark(rows->LastModified());
  EXPECT_EQ(rows->Field("Call").Text(), "I1CCC");
  rows->Delete();
  rows->MovePrevious();
  EXPECT_EQ(NrHere(*rows), last);
  EXPECT_EQ(rows->TotalRows(), kOfALongLog);
}

TEST_F(HeldKeysTest, WhoeverHasTimeIsToldAndReadsTheRest) {
  int told = 0;
  db_.WhenUnread([&] { ++told; });
  const auto few = db_.OpenDynaset("SELECT * FROM Log WHERE QsoNr<100");
  few->MoveLast();
  const auto rows = db_.OpenDynaset(kOrders[0]);
  EXPECT_EQ(told, 0);
  EXPECT_FALSE(db_.ReadOn(1000));
  rows->MoveLast();
  EXPECT_EQ(told, 1);
  int times = 1;
  for (; db_.ReadOn(1000); ++times) ASSERT_LT(times, 10);
  EXPECT_GT(times, 5);
  const std::int64_t before = Stepped();
  AddContact(db_, 1, "IK9NEW");
  EXPECT_LT(Stepped() - before, 10);
}

TEST_F(HeldKeysTest, AClosedDatabaseHasNothingToReadOn) {
  const auto rows = db_.OpenDynaset(kOrders[0]);
  rows->MoveLast();
  db_.Close();
  EXPECT_FALSE(db_.ReadOn(1000));
  EXPECT_EQ(ErrorOf([&] { rows->MovePrevious(); }), 3420);
}

}  // namespace
}  // namespace brenvo::file
