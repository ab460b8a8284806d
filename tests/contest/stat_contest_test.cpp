#include <gmock/gmock.h>

#include "tests/contest/contest_station.h"

namespace brenvo::contest {
namespace {

using testing::ElementsAre;
using testing::StartsWith;

class StatContestTest : public ContestLogStation {
 protected:
  // What the statistics show, opened from the log.
  void InStatistics(ContestQso& log, const std::function<void(StatContest&)>& work) {
    InDialogs([&](forms::Window& window) {
      work(static_cast<StatContest&>(window));
      Press(window, "cmExit");
    });
    Press(log, "cmStatistiche");
  }
  ContestQso& OpenLogWith(bool square, bool country, bool exchange) {
    session.Handed.CurrentContest = {
        std::string(kDate), std::string(kBand), "", "JN65AA", square, country, exchange};
    return Open<ContestQso>("ContestQso");
  }
};

TEST_F(StatContestTest, AnEmptyLogIsAFailureAndTheWindowDoesNotStay) {
  session.Db.Execute("insert into ContestWWL values ('JN65')");
  ContestQso& log = OpenLog();
  Press(log, "cmStatistiche");
  EXPECT_THAT(Lines(), ElementsAre(StartsWith("error \"3021")));
  EXPECT_EQ(session.Windows.Find("StatContest"), nullptr);
  EXPECT_FALSE(machine.Host().Busy());
  EXPECT_EQ(Rows("select count(*) from ContestWWL"), Texts{"0"});
}

TEST_F(StatContestTest, WithoutASwitchTheCountsStayEmpty) {
  Add(1, "IK3ABC", "JN65AB", 100, "[Exc=VE]");
  Add(2, "DL1XYZ", "JO62QM", 901);
  InStatistics(OpenLogWith(false, false, false), [](StatContest& shown) {
    EXPECT_EQ(shown.Caption(), "Statistiche Contest");
    EXPECT_EQ(shown.TotaleQso.Text(), "2");
    EXPECT_EQ(shown.QrbTotale.Text(), "1001");
    EXPECT_EQ(shown.NrSquare.Text(), "");
    EXPECT_EQ(shown.NrCountry.Text(), "");
    EXPECT_EQ(shown.NrExch.Text(), "");
    EXPECT_EQ(shown.PunteggioTotale.Text(), "1001");
    EXPECT_EQ(shown.MediaPunti.Text(), "500");
    EXPECT_EQ(shown.QrbMax.Text(), "901");
    EXPECT_EQ(shown.QsoMaxQrb.Text(), "2");
  });
  // Counted all the same.
  EXPECT_EQ(Rows("select WWL from ContestWWL"), (Texts{"JN65", "JO62"}));
  EXPECT_EQ(Rows("select Exc from ContestExc"), Texts{"VE"});
}

TEST_F(StatContestTest, TheExchangeSwitchWithoutExchangesShowsNoneAndMultipliesByOne) {
  Add(1, "IK3ABC", "JN65AB", 100);
  InStatistics(OpenLogWith(false, false, true), [](StatContest& shown) {
    EXPECT_EQ(shown.NrExch.Text(), "0");
    EXPECT_EQ(shown.PunteggioTotale.Text(), "100");
  });
}

TEST_F(StatContestTest, ThreeContactsInTwoSquaresDoubleTheScore) {
  Add(1, "IK3ABC", "JN65AB", 100);
  Add(2, "IK3DEF", "JN65CD", 200);
  Add(3, "I5GHI", "JN53AA", 300);
  InStatistics(OpenLogWith(true, false, false), [](StatContest& shown) {
    EXPECT_EQ(shown.NrSquare.Text(), "2");
    EXPECT_EQ(shown.PunteggioTotale.Text(), "1200");
    EXPECT_EQ(shown.MediaPunti.Text(), "400");
  });
}

TEST_F(StatContestTest, AllSwitchesAddTheirCounts) {
  Add(1, "IK3ABC", "JN65AB", 100, "[Exc=VE]");
  Add(2, "DL1XYZ", "JO62QM", 200);
  InStatistics(OpenLogWith(true, true, true), [](StatContest& shown) {
    EXPECT_EQ(shown.NrSquare.Text(), "2");
    EXPECT_EQ(shown.NrCountry.Text(), "2");
    EXPECT_EQ(shown.NrExch.Text(), "1");
    EXPECT_EQ(shown.PunteggioTotale.Text(), "1500");
  });
}

TEST_F(StatContestTest, ADuplicateRaisesContactsAndDistanceAndLowersTheMean) {
  Add(1, "IK3ABC", "JN65AB", 300);
  Add(2, "IK3DEF", "JN65AB", 100);
  Add(3, "IK3ABC", "JN65AB", 300, "Qso doppio (1) ");
  InStatistics(OpenLogWith(true, false, false), [](StatContest& shown) {
    EXPECT_EQ(shown.TotaleQso.Text(), "3");
    EXPECT_EQ(shown.QrbTotale.Text(), "700");
    EXPECT_EQ(shown.PunteggioTotale.Text(), "400");
    EXPECT_EQ(shown.MediaPunti.Text(), "133");
  });
}

TEST_F(StatContestTest, AnApostropheInAnExchangeIsAFailure) {
  Add(1, "IK3ABC", "JN65AB", 300, "[Exc=L''AQ]");
  Press(OpenLog(), "cmStatistiche");
  EXPECT_THAT(Lines(), ElementsAre(StartsWith("error ")));
  EXPECT_EQ(session.Windows.Find("StatContest"), nullptr);
}

TEST_F(StatContestTest, ANullNoteIsAFailure) {
  Add(1, "IK3ABC");
  session.Db.Execute("UPDATE [Contest Qso] SET [Note]=Null");
  Press(OpenLog(), "cmStatistiche");
  EXPECT_THAT(Lines(), ElementsAre(StartsWith("error ")));
}

}  // namespace
}  // namespace brenvo::contest
