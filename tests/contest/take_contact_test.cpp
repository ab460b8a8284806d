#include "contest/take_contact.h"

#include "geo/locator.h"
#include "tests/contest/contest_station.h"

namespace brenvo::contest {
namespace {

class Taken : public ContestStation {
 protected:
  core::ToldContact told{base::DateTime::Of(2024, 9, 7, 14, 3, 15),
                         "DL1ABC",
                         "JO31NF",
                         std::string(kBand),
                         "FT8",
                         "54",
                         "57",
                         12,
                         34};
  bool Take() {
    bool taken = false;
    Event([&] { taken = TakeContact(session, told); });
    return taken;
  }
  Texts Stored() {
    return Rows(
        "select ProgrDato,ProgrRicevuto,Giorno,Qtr,Call,QrkDato,QrkRicevuto,Locator,Modo,Qrb,Punti,"
        "Note,InLog from [Contest Qso] order by ProgrDato");
  }
};

TEST_F(Taken, StandsInTheOpenLogWithItsSerialsAndPoints) {
  ContestQso& log = OpenLog();
  EXPECT_TRUE(Take());
  const std::string km = std::to_string(geo::QrbKm("JN65AA", "JO31NF"));
  EXPECT_EQ(Stored(), (Texts{"12|34|7|14:03:00|DL1ABC|54|57|JO31NF|FT8|" + km + "|" + km + "||0"}));
  EXPECT_EQ(log.QC.Rows(), 2);
}

TEST_F(Taken, IsNotStoredTwice) {
  OpenLog();
  EXPECT_TRUE(Take());
  EXPECT_TRUE(Take());
  EXPECT_EQ(Stored().size(), 1u);
}

TEST_F(Taken, AStationThatWasWorkedIsADoubleWithoutPoints) {
  OpenLog();
  EXPECT_TRUE(Take());
  told.serialSent = 13;
  EXPECT_TRUE(Take());
  EXPECT_EQ(Rows("select Punti,Note from [Contest Qso] where ProgrDato=13"),
            (Texts{"0|Qso doppio (12) "}));
}

TEST_F(Taken, AnotherBandDayOrNoSerialIsNotOfTheContest) {
  OpenLog();
  const core::ToldContact whole = told;
  told.banda = " 70cm";
  EXPECT_FALSE(Take());
  told = whole;
  told.time = base::DateTime::Of(2024, 9, 9);
  EXPECT_FALSE(Take());
  told = whole;
  told.serialReceived = 0;
  EXPECT_FALSE(Take());
  told = whole;
  told.locator = "JO31";
  EXPECT_FALSE(Take());
  EXPECT_EQ(Stored().size(), 0u);
}

TEST_F(Taken, ASerialOfAnotherStationIsNotOverwritten) {
  OpenLog();
  EXPECT_TRUE(Take());
  told.call = "DL2ABC";
  EXPECT_FALSE(Take());
  EXPECT_EQ(Stored().size(), 1u);
}

TEST_F(Taken, WithoutAnOpenLogItIsNotTaken) { EXPECT_FALSE(Take()); }

}  // namespace
}  // namespace brenvo::contest
