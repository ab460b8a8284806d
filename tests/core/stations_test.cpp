#include "core/stations.h"

#include <gmock/gmock.h>

#include "core/contact_origin.h"
#include "core/own_values.h"
#include "tests/support/station.h"

namespace brenvo::core {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::StartsWith;

class StationsTest : public StationTest {
 protected:
  StationsTest() { Exec("UPDATE [User] SET Call='IK3ABC',Provincia='VE'"); }
  std::int64_t Add(const std::string& call) {
    session.Contacts.Add(ContactTable::kLog, *session.Tables.TbLog,
                         [&](engine::EditableRecordset& row) {
                           row.Set(column::kDataQso, session.Now());
                           row.Set(column::kCall, call);
                         });
    return session.Tables.TbLog->LastModified().key;
  }
  std::int64_t StationOf(std::int64_t qsoNr) { return OriginOf(session.Db, qsoNr)->station; }
  StationRow Current() { return *FindStation(session.Db, CurrentStation(session.Db)); }
  void StoreProfile(const std::string& columns) {
    Exec("UPDATE [User] SET " + columns);
    Event([this] { session.Station.ProfileStored(); });
  }
};

TEST_F(StationsTest, TheFirstStationIsTheProfiles) {
  EXPECT_EQ(TitleOf(CurrentStationRow(session.Db)), "Casa IK3ABC JN65AA");
  EXPECT_THAT(Rows("select * from Stazioni"), IsEmpty());
  const StationRow station = Current();
  EXPECT_EQ(station.Call, "IK3ABC");
  EXPECT_EQ(station.Provincia, "VE");
  EXPECT_EQ(station.Country, "I");
  EXPECT_EQ(CurrentStation(session.Db), station.Stazione);
}

TEST_F(StationsTest, ANewContactBelongsToTheCurrentStation) {
  const std::int64_t home = StationOf(Add("DL1ABC"));
  const std::int64_t hill = StoreStation(session.Db, {0, "Monte Grappa", "Portatile", "IK3ABC/P"});
  SetCurrentStation(session.Db, hill);
  session.Contacts.StationChanged();
  EXPECT_EQ(StationOf(Add("DL2ABC")), hill);
  EXPECT_NE(home, hill);
}

TEST_F(StationsTest, AStationIsReadAsItWasStored) {
  StationRow station{0, "Club", "Club", "IQ3AB", "IK3ABC", "JN65AB", "PD", "I", "IC-9700", "Yagi"};
  station.Altezza = 1775;
  station.Dal = base::DateTime::Of(2001, 2, 3);
  station.Stazione = StoreStation(session.Db, station);
  EXPECT_EQ(FindStation(session.Db, station.Stazione), station);
  station.Al = base::DateTime::Of(2001, 2, 4);
  EXPECT_EQ(StoreStation(session.Db, station), station.Stazione);
  EXPECT_EQ(FindStation(session.Db, station.Stazione), station);
  EXPECT_FALSE(FindStation(session.Db, 99));
}

TEST_F(StationsTest, AnEqualStationIsFoundWhateverItsNameAndDays) {
  StationRow station{0, "Casa", "Casa", "IK3ABC", "", "JN65AA"};
  const std::int64_t number = FindOrStoreStation(session.Db, station);
  station.Nome = "Da file";
  station.Locator = "jn65aa";
  EXPECT_EQ(FindOrStoreStation(session.Db, station), number);
  station.Locator = "JN65AB";
  EXPECT_NE(FindOrStoreStation(session.Db, station), number);
}

TEST_F(StationsTest, ADayBelongsToTheStationThatHoldsIt) {
  const std::int64_t home = CurrentStation(session.Db);
  StationRow hill{0, "Monte", "Portatile", "IK3ABC/P"};
  hill.Dal = base::DateTime::Of(2001, 7, 1);
  hill.Al = base::DateTime::Of(2001, 7, 31);
  const std::int64_t number = StoreStation(session.Db, hill);
  EXPECT_EQ(StationAt(session.Db, base::DateTime::Of(2001, 6, 30, 23, 59)), home);
  EXPECT_EQ(StationAt(session.Db, base::DateTime::Of(2001, 7, 1)), number);
  EXPECT_EQ(StationAt(session.Db, base::DateTime::Of(2001, 7, 31, 23, 59)), number);
  EXPECT_EQ(StationAt(session.Db, base::DateTime::Of(2001, 8, 1)), home);
}

TEST_F(StationsTest, AProfileWithANewLocatorLeavesOldContactsWhereTheyWereMade) {
  const std::int64_t old = StationOf(Add("DL1ABC"));
  StoreProfile("Locator='JN55XX'");
  EXPECT_EQ(frame->Stazione.Text(), "Casa IK3ABC JN55XX");
  EXPECT_THAT(frame->StatusBar1.Panel(1), StartsWith("I contatti fatti finora restano"));
  EXPECT_EQ(FindStation(session.Db, old)->Locator, "JN65AA");
  EXPECT_EQ(FindStation(session.Db, old)->Al, base::DateTime::Of(2001, 2, 3));
  const std::int64_t current = StationOf(Add("DL2ABC"));
  EXPECT_NE(current, old);
  EXPECT_EQ(FindStation(session.Db, current)->Dal, base::DateTime::Of(2001, 2, 3));
}

TEST_F(StationsTest, AProfileThatIsCorrectedBeforeTheFirstContactCorrectsItsStation) {
  const std::int64_t number = CurrentStation(session.Db);
  StoreProfile("Locator='JN55XX'");
  EXPECT_EQ(CurrentStation(session.Db), number);
  EXPECT_EQ(Current().Locator, "JN55XX");
  EXPECT_EQ(frame->StatusBar1.Panel(1), "");
}

TEST_F(StationsTest, AProfileThatSaysTheSameChangesNothing) {
  Add("DL1ABC");
  StoreProfile("Qth='Venezia'");
  EXPECT_THAT(Rows("select Count(*) from Stazioni"), ElementsAre("1"));
}

TEST_F(StationsTest, APortableStationDoesNotFollowTheProfile) {
  const std::int64_t hill = StoreStation(session.Db, {0, "Monte", "Portatile", "IK3ABC/P"});
  SetCurrentStation(session.Db, hill);
  StoreProfile("Locator='JN55XX'");
  EXPECT_EQ(Current().Call, "IK3ABC/P");
  EXPECT_EQ(Current().Locator, "");
}

TEST_F(StationsTest, TheDeliveredCallIsNobodys) {
  Exec("UPDATE [User] SET Call='I0XXX'");
  Add("DL1ABC");
  EXPECT_EQ(Current().Call, "");
  StoreProfile("Call='IK3ABC'");
  EXPECT_EQ(FindStation(session.Db, StationOf(1))->Call, "IK3ABC");
}

TEST_F(StationsTest, AStationThatIsGoneIsNotCurrent) {
  StoreOwnValue(session.Db, "Stazione", "99");
  EXPECT_EQ(Current().Call, "IK3ABC");
}

}  // namespace
}  // namespace brenvo::core
