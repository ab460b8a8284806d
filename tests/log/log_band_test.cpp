#include "log/propagation_batch.h"
#include "tests/log/log_station.h"

namespace brenvo::log {
namespace {

using BandTest = LogStation;

TEST_F(BandTest, ChoosingABandFillsWhatTheStationUsesOnIt) {
  LogForm& log = OpenLog();
  Pick(log.Banda, "  2 m");
  // The number's text leads with a blank.
  EXPECT_EQ(log.Frequenza.Text(), " 144.3");
  EXPECT_EQ(log.QrkDato.Text(), "59");
  EXPECT_EQ(log.Potenza.Text(), " 50");
  EXPECT_EQ(log.Modo.Text(), "SSB");
  EXPECT_EQ(log.PrevBanda, "  2 m");
}

TEST_F(BandTest, ChoosingTheSameBandAgainKeepsWhatWasChanged) {
  LogForm& log = OpenLog();
  Pick(log.Banda, "  2 m");
  Type(log.Frequenza, "144.05");
  Pick(log.Modo, "CW");
  const int index = log.Banda.ListIndex();
  Event([&] { log.Banda.Pick(index); });
  EXPECT_EQ(log.Frequenza.Text(), "144.05");
  EXPECT_EQ(log.Modo.Text(), "CW");
}

TEST_F(BandTest, ABandShownWithItsContactOverwritesNothing) {
  Store("IK3ABC", "  2 m", ",Frequenza,Potenza,Modo,QrkDato", ",144.05,5,'CW','579'");
  LogForm& log = OpenLog();
  EXPECT_EQ(log.Banda.Text(), "  2 m");
  EXPECT_EQ(log.Frequenza.Text(), "144.050");
  EXPECT_EQ(log.Potenza.Text(), "5");
  EXPECT_EQ(log.Modo.Text(), "CW");
  EXPECT_EQ(log.QrkDato.Text(), "579");
}

TEST_F(BandTest, ABandWithoutAModeLeavesTheModeOnNoEntry) {
  Exec("update UserRTX set Modo='' where Banda='  2 m'");
  LogForm& log = OpenLog();
  Pick(log.Modo, "CW");
  Pick(log.Banda, "  2 m");
  EXPECT_EQ(log.Modo.ListIndex(), -1);
  EXPECT_EQ(log.Modo.Text(), "");
}

TEST_F(BandTest, AModeIsComparedWhole) {
  Exec("update UserRTX set Modo='SS' where Banda='  2 m'");
  LogForm& log = OpenLog();
  Pick(log.Banda, "  2 m");
  EXPECT_EQ(log.Modo.Text(), "");
}

TEST_F(BandTest, ABandThatIsNoLongerInTheTableFillsNothingAndSaysNothing) {
  LogForm& log = OpenLog();
  Type(log.Frequenza, "1.5");
  Exec("delete * from UserRTX where Banda='  2 m'");
  Pick(log.Banda, "  2 m");
  EXPECT_EQ(log.Frequenza.Text(), "1.5");
  EXPECT_EQ(log.PrevBanda, "  2 m");
  EXPECT_TRUE(Lines().empty());
}

TEST_F(BandTest, TheFrequencyTakesNumbersOnlyAndSelectsAllOnComing) {
  LogForm& log = OpenLog();
  Type(log.Frequenza, "14x4.3a,5-");
  EXPECT_EQ(log.Frequenza.Text(), "144.3,5-");
  Event([&] { log.Frequenza.Focus(); });
  EXPECT_EQ(log.Frequenza.SelStart(), 0u);
  EXPECT_EQ(log.Frequenza.SelText(), "144.3,5-");
}

class PropagationBatchTest : public LogStation {
 protected:
  void Note(std::string_view call, std::string_view note, std::string_view propagation = "") {
    Store(call, "  2 m", ",Note,Propagazione",
          ",'" + std::string(note) + "','" + std::string(propagation) + "'");
  }
  Texts Notes() { return Rows("select Call,Propagazione,Note from Log order by QsoNr"); }
};

TEST_F(PropagationBatchTest, EachTokenBecomesItsPropagation) {
  Note("A1A", "[E.S.]");
  Note("B1B", "ciao [F2]");
  Note("C1C", "[M.S.] sciame");
  Note("D1D", "prima [T.E.P.] dopo");
  AssignPropagations(session);
  EXPECT_EQ(Notes(), (Texts{"A1A|E sporadico|", "B1B|F2|ciao", "C1C|Meteor Scatter|sciame",
                            "D1D|TEP|prima  dopo"}));
  EXPECT_FALSE(machine.Host().Busy());
}

TEST_F(PropagationBatchTest, OneTokenARunAndTheSecondRunOverwritesTheFirst) {
  Note("A1A", "[E.S.] [F2] nice");
  AssignPropagations(session);
  EXPECT_EQ(Notes(), Texts{"A1A|E sporadico|[F2] nice"});
  AssignPropagations(session);
  EXPECT_EQ(Notes(), Texts{"A1A|F2|nice"});
}

TEST_F(PropagationBatchTest, TheOrderOfTheTableDecidesAndNotThePlaceInTheNote) {
  Note("A1A", "[T.E.P.] [F2]");
  AssignPropagations(session);
  EXPECT_EQ(Notes(), Texts{"A1A|F2|[T.E.P.]"});
}

TEST_F(PropagationBatchTest, ANoteWithoutATokenIsNotTouched) {
  Note("A1A", "  [e.s.] tropo ", "Tropo");
  Store("B1B", "  2 m", ",Propagazione", ",'Aurora'");
  AssignPropagations(session);
  EXPECT_EQ(Notes(), (Texts{"A1A|Tropo|  [e.s.] tropo ", "B1B|Aurora|"}));
  EXPECT_EQ(Rows("select Call from Log where Note is null"), Texts{"B1B"});
}

TEST_F(PropagationBatchTest, AnEmptyLogIsNothingToDo) {
  AssignPropagations(session);
  EXPECT_TRUE(Notes().empty());
}

}  // namespace
}  // namespace brenvo::log
