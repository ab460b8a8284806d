#include "print/stampa_qsl.h"

#include "print/qsl_update.h"
#include "tests/support/station.h"

namespace brenvo {
namespace {

using Texts = std::vector<std::string>;

class StampaQslTest : public StationTest {
 protected:
  StampaQslTest() { Know<StampaQsl>("StampaQsl"); }
  StampaQsl& OpenScreen() { return Open<StampaQsl>("StampaQsl"); }
  void Owe(std::string_view call, std::string_view day = "05") {
    session.Db.Execute("insert into Log (DataQso,Call,Banda,Modo,QrkDato,Frequenza,QslDaInviare) "
                       "values ('" + std::string(day) + "/01/2001 10:00','" + std::string(call) +
                       "','  2 m','SSB','59',144.3,True)");
  }
  // What was printed: of labels only the first text and its place, and what is no text at all.
  Texts Outline() {
    Texts outline;
    for (const std::string& line : Lines()) {
      if (line.find("\"From Radio\"") != std::string::npos) outline.push_back("S" + Place(line));
      if (line.find("\"To Radio\"") != std::string::npos) outline.push_back("Q" + Place(line));
      if (line == "print newpage" || line == "print end") outline.push_back(line);
    }
    return outline;
  }
  static std::string Place(const std::string& line) {
    const std::size_t begin = std::string("print text").size();
    return line.substr(begin, line.find(" left") - begin);
  }
};

TEST_F(StampaQslTest, OpensWithTheSmallestLabelWhenNothingIsStored) {
  StampaQsl& screen = OpenScreen();
  EXPECT_EQ(screen.VAltezzaEtichetta.Text(), "33.9");
  EXPECT_EQ(screen.VLarghezzaEtichetta.Text(), "80.0");
  for (Label* label : {&screen.VSpazOrizzontale, &screen.VSpazVerticale, &screen.VMargineSuperiore,
                       &screen.VMargineSinistro}) {
    EXPECT_EQ(label->Text(), "0.0") << label->Name();
  }
  EXPECT_EQ(screen.VEtichXFila.Text(), "1");
}

TEST_F(StampaQslTest, ASettingBelowTheMinimumShowsTheMinimum) {
  session.SaveSetting("StampaQsl", "AltezzaEtichette", "100");
  session.SaveSetting("StampaQsl", "LarghezzaEtichette", "1050");
  StampaQsl& screen = OpenScreen();
  EXPECT_EQ(screen.AltezzaEtichetta.Value(), 339);
  EXPECT_EQ(screen.VLarghezzaEtichetta.Text(), "105.0");
}

TEST_F(StampaQslTest, UpdateStoresTheGeometryUnderItsOwnKeysAndNothingElse) {
  Owe("IK3ABC");
  StampaQsl& screen = OpenScreen();
  screen.AltezzaEtichetta.SetValue(370);
  screen.EtichXFila.SetValue(2);
  Event([&] { screen.CmUpdate.Press(); });
  EXPECT_EQ(session.GetSetting("StampaQsl", "AltezzaEtichette", ""), "370");
  EXPECT_EQ(session.GetSetting("StampaQsl", "LarghezzaEtichette", ""), "800");
  for (const char* key : {"SpaziaturaOrizzontale", "SpaziaturaVerticale", "MargineSuperiore",
                          "MargineSinistro"}) {
    EXPECT_EQ(session.GetSetting("StampaQsl", key, ""), "0") << key;
  }
  EXPECT_EQ(session.GetSetting("StampaQsl", "EtichettePerFila", ""), "2");
  EXPECT_EQ(Rows("select QslInviata,QslDaInviare from Log"), Texts{"0|-1"});
}

TEST_F(StampaQslTest, AStoredMeasureBeyondAllMeasureIsTheNearestEnd) {
  for (const auto& [stored, value] :
       {std::pair("1E300", 700), std::pair("-1E300", 339), std::pair("99999999999", 700),
        std::pair("-99999999999", 339), std::pair("abc", 339), std::pair("", 339)}) {
    session.SaveSetting("StampaQsl", "AltezzaEtichette", stored);
    StampaQsl& screen = OpenScreen();
    EXPECT_EQ(screen.AltezzaEtichetta.Value(), value) << stored;
    Event([&] { screen.Close(); });
  }
}

TEST_F(StampaQslTest, WithoutAKindThereIsOnlyTheMessage) {
  StampaQsl& screen = OpenScreen();
  const auto before = session.Db.Counters().statements;
  Event([&] { screen.CmPrint.Press(); });
  EXPECT_EQ(Lines(), Texts{"message none \"\" \"Selezionare il tipo di stampa\""});
  EXPECT_EQ(session.Db.Counters().statements, before);
}

TEST_F(StampaQslTest, WithoutContactsTheDocumentIsEmpty) {
  StampaQsl& screen = OpenScreen();
  screen.DatiQso.SetOn(true);
  Event([&] { screen.CmPrint.Press(); });
  EXPECT_EQ(Lines(), Texts{"print end"});
}

TEST_F(StampaQslTest, BothKindsFillARowWithThePairOfEachContact) {
  Owe("IK3ABC");
  Owe("IK3XYZ");
  StampaQsl& screen = OpenScreen();
  screen.DatiQso.SetOn(true);
  screen.DatiStazione.SetOn(true);
  screen.EtichXFila.SetValue(2);
  Event([&] { screen.CmPrint.Press(); });
  EXPECT_EQ(Outline(), (Texts{"S 1 2", "Q 81 2", "S 1 35.9", "Q 81 35.9", "print end"}));
}

TEST_F(StampaQslTest, WithThreeARowThePairsRunAcrossRowEnds) {
  Owe("IK3ABC");
  Owe("IK3XYZ");
  StampaQsl& screen = OpenScreen();
  screen.DatiQso.SetOn(true);
  screen.DatiStazione.SetOn(true);
  screen.EtichXFila.SetValue(3);
  Event([&] { screen.CmPrint.Press(); });
  EXPECT_EQ(Outline(), (Texts{"S 1 2", "Q 81 2", "S 161 2", "Q 1 35.9", "print end"}));
}

TEST_F(StampaQslTest, OneKindPrintsOneLabelAContact) {
  Owe("IK3ABC");
  Owe("IK3XYZ");
  StampaQsl& screen = OpenScreen();
  screen.DatiStazione.SetOn(true);
  Event([&] { screen.CmPrint.Press(); });
  EXPECT_EQ(Outline(), (Texts{"S 1 2", "S 1 35.9", "print end"}));
  screen.DatiStazione.SetOn(false);
  screen.DatiQso.SetOn(true);
  Event([&] { screen.CmPrint.Press(); });
  EXPECT_EQ(Outline(), (Texts{"Q 1 2", "Q 1 35.9", "print end"}));
}

TEST_F(StampaQslTest, APageEndsWhenTheNextRowWouldBeginBelowIt) {
  for (int i = 0; i < 10; ++i) Owe("IK3AB" + std::string(1, static_cast<char>('A' + i)));
  StampaQsl& screen = OpenScreen();
  screen.DatiQso.SetOn(true);
  Event([&] { screen.CmPrint.Press(); });
  const Texts outline = Outline();
  ASSERT_EQ(outline.size(), 12u);
  EXPECT_EQ(outline[8], "Q 1 273.2");
  EXPECT_EQ(outline[9], "print newpage");
  EXPECT_EQ(outline[10], "Q 1 2");
}

TEST_F(StampaQslTest, CardsReceivedAndNotAnsweredAreOwedToo) {
  session.Db.Execute("insert into Log (DataQso,Call,QslRicevuta) values ('05/01/2001','A',True)");
  session.Db.Execute(
      "insert into Log (DataQso,Call,QslRicevuta,QslInviata) values ('05/01/2001','B',True,True)");
  session.Db.Execute("insert into Log (DataQso,Call) values ('05/01/2001','C')");
  StampaQsl& screen = OpenScreen();
  screen.DatiQso.SetOn(true);
  Event([&] { screen.CmPrint.Press(); });
  EXPECT_EQ(Outline(), (Texts{"Q 1 2", "print end"}));
}

TEST_F(StampaQslTest, ANullNoteOfASatelliteContactFails) {
  session.Db.Execute(
      "insert into Log (DataQso,Call,Modo,QslDaInviare) values ('05/01/2001','A','Satellite',True)");
  StampaQsl& screen = OpenScreen();
  screen.DatiQso.SetOn(true);
  Event([&] { screen.CmPrint.Press(); });
  const Texts lines = Lines();
  ASSERT_EQ(lines.size(), 1u);
  EXPECT_TRUE(lines[0].starts_with("error \"")) << lines[0];
}

TEST_F(StampaQslTest, APrinterThatFailsIsToldAndTheLogStays) {
  Owe("IK3ABC");
  StampaQsl& screen = OpenScreen();
  screen.DatiQso.SetOn(true);
  machine.GetPrinter().FailNext();
  Event([&] { screen.CmPrint.Press(); });
  EXPECT_TRUE(Lines().at(0).starts_with("error \""));
  EXPECT_EQ(Rows("select QslDaInviare from Log"), Texts{"-1"});
}

TEST_F(StampaQslTest, HelpHasNoActionAndExitCloses) {
  StampaQsl& screen = OpenScreen();
  Event([&] { screen.CmHelp.Press(); });
  EXPECT_TRUE(Lines().empty());
  Event([&] { screen.CmExit.Press(); });
  EXPECT_EQ(session.Windows.Find("StampaQsl"), nullptr);
}

TEST_F(StampaQslTest, TheUpdateMarksOwedCardsAsSentAndReceivedOnesAsAnswered) {
  session.Db.Execute("insert into Log (DataQso,Call,QslDaInviare,QslRicevuta) values "
                     "('05/01/2001','BOTH',True,True)");
  session.Db.Execute("insert into Log (DataQso,Call,QslDaInviare) values ('05/01/2001','OWED',True)");
  session.Db.Execute("insert into Log (DataQso,Call,QslRicevuta) values ('05/01/2001','RCVD',True)");
  session.Db.Execute("insert into Log (DataQso,Call) values ('05/01/2001','NONE')");
  const char* const marks = "select Call,QslDaInviare,QslRicevuta,QslInviata from Log order by QsoNr";
  const Texts after = {"BOTH|0|-1|-1", "OWED|0|0|-1", "RCVD|0|-1|-1", "NONE|0|0|0"};
  machine.Messages().QueueAnswer(true);
  Event([&] { UpdateLogForQsl(session); });
  EXPECT_EQ(Lines(),
            Texts{"question \"Aggiornamento Log per Qsl\" \"Confermi l'operazione ?\" yes"});
  EXPECT_EQ(Rows(marks), after);
  machine.Messages().QueueAnswer(true);
  Event([&] { UpdateLogForQsl(session); });
  EXPECT_EQ(Rows(marks), after);
}

TEST_F(StampaQslTest, TheUpdateAnsweredNoLeavesTheLog) {
  Owe("IK3ABC");
  machine.Messages().QueueAnswer(false);
  Event([&] { UpdateLogForQsl(session); });
  EXPECT_EQ(Rows("select QslDaInviare,QslInviata from Log"), Texts{"-1|0"});
}

}  // namespace
}  // namespace brenvo
