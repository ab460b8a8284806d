#include "core/qsl_cards.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <set>

#include "core/history.h"
#include "tests/core/core_station.h"
#include "tests/support/recorded_files.h"

namespace brenvo::core {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

const base::DateTime kDay = base::DateTime::Of(2001, 2, 3);

TEST(QslCards, AreATextThatGivesThemBack) {
  const QslCards cards = {
      {CardWay::kUnknown, kDay}, {CardWay::kBureau, std::nullopt}, {CardWay::kOqrs, kDay}};
  EXPECT_EQ(TextOfCards(cards), "- 2001-02-03; B; O 2001-02-03");
  EXPECT_EQ(CardsOfText(TextOfCards(cards)), cards);
  EXPECT_EQ(CardsOfText(""), QslCards());
  EXPECT_EQ(CardsOfText("b 2001-02-03"), (QslCards{{CardWay::kBureau, kDay}}));
}

TEST(QslCards, OfATextOfAnotherFormAreNone) {
  for (const char* text : {"X", ";", "B 2001-02-31", "B 2001-02-03 10:00:00", "D; B", "B; B",
                           "B 2001-02-03 2001-02-04", " ", "BD"}) {
    EXPECT_EQ(CardsOfText(text), std::nullopt) << text;
  }
}

TEST(QslCards, TheLatestIsTheOneOfTheLastDay) {
  EXPECT_EQ(LatestCard({}), nullptr);
  const QslCards cards = {{CardWay::kBureau, kDay.Later(86400)}, {CardWay::kDirect, kDay}};
  EXPECT_EQ(LatestCard(cards)->way, CardWay::kBureau);
  const QslCards undated = {{CardWay::kBureau, std::nullopt}, {CardWay::kDirect, std::nullopt}};
  EXPECT_EQ(LatestCard(undated)->way, CardWay::kDirect);
}

class QslCardsTest : public CoreStation {};

TEST_F(QslCardsTest, StandBesideTheContactInPlaceOfThoseOfTheSameSide) {
  StoreCards(session.Db, 7, CardSide::kSent, {{CardWay::kBureau, kDay}});
  StoreCards(session.Db, 7, CardSide::kReceived, {{CardWay::kUnknown, std::nullopt}});
  StoreCards(session.Db, 7, CardSide::kSent,
             {{CardWay::kDirect, kDay}, {CardWay::kManager, std::nullopt}});
  EXPECT_THAT(
      CardsOf(session.Db, 7, CardSide::kSent),
      ElementsAre(QslCard{CardWay::kDirect, kDay}, QslCard{CardWay::kManager, std::nullopt}));
  EXPECT_THAT(CardsOf(session.Db, 7, CardSide::kReceived), ElementsAre(QslCard{}));
  StoreCards(session.Db, 7, CardSide::kSent, {});
  EXPECT_THAT(CardsOf(session.Db, 7, CardSide::kSent), IsEmpty());
  EXPECT_THAT(CardsOf(session.Db, 8, CardSide::kReceived), IsEmpty());
}

TEST_F(QslCardsTest, OneThatWentOutIsNotToBeSentAnyMoreAndOneReceivedConfirms) {
  Exec(
      "insert into Log (DataQso,Call,Banda,QslDaInviare) values ('2001-02-03','DL1ABC','  2 m',"
      "True)");
  const QslCard card{CardWay::kBureau, kDay};
  EXPECT_TRUE(MarkCards(session, "Inviate", {1}, CardSide::kSent, card));
  EXPECT_THAT(Rows("select QslInviata,QslDaInviare,QslRicevuta from Log"), ElementsAre("-1|0|0"));
  EXPECT_TRUE(MarkCards(session, "Ricevute", {1}, CardSide::kReceived, card));
  EXPECT_THAT(Rows("select QslInviata,QslDaInviare,QslRicevuta from Log"), ElementsAre("-1|0|-1"));
  EXPECT_TRUE(ForgetCards(session, "Non ricevute", {1}, CardSide::kReceived));
  EXPECT_THAT(Rows("select QslInviata,QslDaInviare,QslRicevuta from Log"), ElementsAre("-1|0|0"));
  EXPECT_THAT(Rows("select Verso,Via from LogQsl"), ElementsAre("I|B"));
}

TEST_F(QslCardsTest, TheSameWayAgainTakesTheNewDay) {
  Exec("insert into Log (DataQso,Call,Banda) values ('2001-02-03','DL1ABC','  2 m')");
  MarkCards(session, "Inviate", {1}, CardSide::kSent, {CardWay::kBureau, kDay});
  MarkCards(session, "Inviate", {1}, CardSide::kSent, {CardWay::kBureau, kDay.Later(86400)});
  EXPECT_THAT(Rows("select Via,Data from LogQsl"), ElementsAre("B|04/02/2001"));
}

// From the n-th on nothing that is written reaches the disk, as for a program that was killed
// there.
TEST_F(QslCardsTest, CutShortAtAnyMomentAllAreMarkedOrNone) {
  constexpr int kContacts = 40;
  std::vector<std::int64_t> keys;
  for (int i = 1; i <= kContacts; ++i) {
    Exec("insert into Log (DataQso,Call,Banda) values ('2001-02-03 10:" + std::to_string(i + 10) +
         ":00','DL1ABC','  2 m')");
    keys.push_back(i);
  }
  session.CloseTables();
  const auto database = directory.Path() / "Brenvo.mdb", before = directory.Path() / "before";
  std::filesystem::copy_file(database, before);
  std::set<std::string> reached;
  for (int n = 0;; ++n) {
    SCOPED_TRACE(n);
    for (const char* suffix : {"", "-wal", "-shm"})
      std::filesystem::remove(database.string() + suffix);
    std::filesystem::copy_file(before, database);
    bool cut = false;
    {
      RecordedFiles files;
      session.Open();
      files.FailFrom(n, SQLITE_FULL);
      try {
        MarkCards(session, "Inviate", keys, CardSide::kSent, {CardWay::kBureau, kDay});
      } catch (const engine::DatabaseError&) {
        cut = true;
      }
      session.CloseTables();
    }
    session.Open();
    const std::string cards = Rows("select Count(*) from LogQsl")[0];
    EXPECT_EQ(Rows("select Count(*) from Log where QslInviata")[0], cards);
    EXPECT_EQ(Rows("select Count(*) from StoriaCampi")[0], cards);
    reached.insert(cards);
    session.CloseTables();
    if (!cut) break;
  }
  session.Open();
  EXPECT_THAT(reached, ElementsAre("0", std::to_string(kContacts)));
}

TEST_F(QslCardsTest, AContactThatIsGoneGetsNone) {
  EXPECT_TRUE(MarkCards(session, "Inviate", {1}, CardSide::kSent, {CardWay::kBureau, kDay}));
  EXPECT_THAT(Rows("select * from LogQsl"), IsEmpty());
  EXPECT_THAT(Rows("select * from StoriaCampi"), IsEmpty());
}

}  // namespace
}  // namespace brenvo::core
