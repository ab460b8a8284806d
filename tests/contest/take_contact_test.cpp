#include "contest/take_contact.h"

#include "geo/locator.h"
#include "tests/contest/contest_station.h"

namespace brenvo::contest {
namespace {

class Taken : public ContestLogStation {
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

TEST_F(Taken, ARowThatIsBeingChangedStaysTheOneThatIsChanged) {
  Add(1, "IK3ABC");
  Add(2, "IK3DEF");
  ContestQso& log = OpenLog();
  InRow(log, 1, [this](ContestNewQso& entry) {
    EXPECT_TRUE(Take());
    entry.Note.SetText("corretto");
    Press(entry, "cmInsertE");
  });
  EXPECT_EQ(Rows("select ProgrDato,Call,Note from [Contest Qso] order by ProgrDato"),
            (Texts{"1|IK3ABC|corretto", "2|IK3DEF|", "12|DL1ABC|"}));
}

TEST_F(Taken, AnOpenEntryGivesItsSerialAwayAndTakesTheNext) {
  ContestQso& log = OpenLog();
  told.serialSent = 1;
  InEntry(log, [this](ContestNewQso& entry) {
    EXPECT_EQ(entry.ProgrD.Text(), "1");
    entry.CallQso.SetText("IK3ABC");
    EXPECT_TRUE(Take());
    EXPECT_EQ(entry.ProgrD.Text(), "2");
    EXPECT_EQ(entry.CallQso.Text(), "IK3ABC");
    EXPECT_EQ(entry.Avviso.Text(), "Il progressivo 1 è andato a DL1ABC: questo Qso ha il 2");
    told.call = "DL2ABC";
    told.serialSent = 3;
    EXPECT_TRUE(Take());
    EXPECT_EQ(entry.ProgrD.Text(), "2");
    Type(entry, "IK3ABC", "1", "JN65AB");
    Press(entry, "cmInsertR");
    EXPECT_EQ(entry.ProgrD.Text(), "4");
    Type(entry, "IK3DEF", "2", "JN65AB");
    Press(entry, "cmInsertE");
  });
  EXPECT_EQ(Rows("select ProgrDato,Call from [Contest Qso] order by ProgrDato"),
            (Texts{"1|DL1ABC", "2|IK3ABC", "3|DL2ABC", "4|IK3DEF"}));
  Lines();
}

TEST_F(Taken, ASerialThatTheOperatorHasTypedStaysHis) {
  ContestQso& log = OpenLog();
  told.serialSent = 5;
  InEntry(log, [this](ContestNewQso& entry) {
    entry.ProgrD.SetText("5");
    EXPECT_TRUE(Take());
    EXPECT_EQ(entry.ProgrD.Text(), "5");
  });
}

TEST_F(Taken, ToldOnceMoreWithoutItsSerialsItIsTheSame) {
  OpenLog();
  EXPECT_TRUE(Take());
  told.serialSent = told.serialReceived = 0;
  EXPECT_TRUE(Take());
  told.time = told.time.Later(60);
  EXPECT_TRUE(Take());
  told.time = told.time.Later(120);
  EXPECT_FALSE(Take());
  EXPECT_EQ(Stored().size(), 1u);
}

TEST_F(Taken, WithoutAnOpenLogItIsNotTaken) { EXPECT_FALSE(Take()); }

}  // namespace
}  // namespace brenvo::contest
