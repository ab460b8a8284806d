#include "print/stampa_qsl.h"

#include "print/qsl_update.h"
#include "tests/support/golden.h"
#include "tests/support/station.h"

namespace brenvo::print {
namespace {

using Texts = std::vector<std::string>;

class StampaQslTest : public StationTest {
 protected:
  StampaQslTest() { Know<StampaQsl>("StampaQsl"); }
  StampaQsl& OpenScreen() { return Open<StampaQsl>("StampaQsl"); }
  void Owe(std::string_view call, std::string_view day = "05") {
    session.Db.Execute(
        "insert into Log (DataQso,Call,Banda,Modo,QrkDato,Frequenza,QslDaInviare) "
        "values ('" +
        std::string(day) + "/01/2001 10:00','" + std::string(call) +
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
  for (forms::Label* label : {&screen.VSpazOrizzontale, &screen.VSpazVerticale,
                              &screen.VMargineSuperiore, &screen.VMargineSinistro}) {
    EXPECT_EQ(label->Text(), "0.0") << label->Name();
  }
  EXPECT_EQ(screen.VEtichXFila.Text(), "1");
}

TEST_F(StampaQslTest, SaysWhereLabelsRunOffTheSheet) {
  StampaQsl& screen = OpenScreen();
  EXPECT_EQ(screen.Avviso.Text(), "Attenzione: fuori dal foglio A4 in basso di 8.1 mm");
  screen.EtichXFila.SetValue(3);
  EXPECT_EQ(screen.Avviso.Text(),
            "Attenzione: fuori dal foglio A4 a destra di 30.0 mm e in basso di "
            "8.1 mm");
  screen.EtichXFila.SetValue(2);
  screen.AltezzaEtichetta.SetValue(380);
  EXPECT_EQ(screen.Avviso.Text(), "Attenzione: fuori dal foglio A4 in basso di 7.0 mm");
  screen.SpazVerticale.SetValue(50);
  EXPECT_EQ(screen.Avviso.Text(), "14 etichette intere su un foglio A4");
}

TEST_F(StampaQslTest, ASheetTakesThePlaceOfTheSliders) {
  for (int i = 0; i < 13; ++i) Owe("IK" + std::to_string(i) + "ABC");
  StampaQsl& screen = OpenScreen();
  screen.DatiQso.SetOn(true);
  Event([&] { screen.Foglio.Pick(5); });
  EXPECT_EQ(screen.Foglio.Text(), "105 x 48 mm, 12 per foglio");
  EXPECT_FALSE(screen.AltezzaEtichetta.Enabled());
  EXPECT_EQ(screen.Avviso.Text(), "12 etichette intere su un foglio A4");
  Lines();
  Event([&] { screen.Print(); });
  const Texts outline = Outline();
  ASSERT_EQ(outline.size(), 15u);
  EXPECT_EQ(outline[0], "Q 1 6.5");
  EXPECT_EQ(outline[1], "Q 106 6.5");
  EXPECT_EQ(outline[2], "Q 1 54.5");
  EXPECT_EQ(outline[11], "Q 106 246.5");
  EXPECT_EQ(outline[12], "print newpage");
  EXPECT_EQ(outline[13], "Q 1 6.5");
  Event([&] { screen.Foglio.Pick(0); });
  EXPECT_TRUE(screen.AltezzaEtichetta.Enabled());
}

TEST_F(StampaQslTest, OnNarrowLabelsTheDataAreMadeSmallerAndStayOnThem) {
  Owe("IK3ABC");
  StampaQsl& screen = OpenScreen();
  screen.DatiQso.SetOn(true);
  Event([&] { screen.Foglio.Pick(1); });
  EXPECT_EQ(screen.Avviso.Text(), "24 etichette intere su un foglio A4, dati ridotti al 88%");
  Lines();
  Event([&] { screen.Print(); });
  const Texts lines = Lines();
  EXPECT_NE(std::find(lines.begin(), lines.end(), "print box 32.38 2.25 68.69 19.75 empty"),
            lines.end())
      << testing::PrintToString(lines);
}

TEST_F(StampaQslTest, ASheetIsRememberedAndForgotten) {
  StampaQsl* screen = &OpenScreen();
  Event([&] { screen->Foglio.Pick(3); });
  Event([&] { screen->cmUpdate.Press(); });
  Event([&] { screen->Close(); });
  screen = &OpenScreen();
  EXPECT_EQ(screen->Foglio.ListIndex(), 3);
  Event([&] { screen->Foglio.Pick(0); });
  Event([&] { screen->cmUpdate.Press(); });
  Event([&] { screen->Close(); });
  EXPECT_EQ(OpenScreen().Foglio.ListIndex(), 0);
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
  Event([&] { screen.cmUpdate.Press(); });
  EXPECT_EQ(session.GetSetting("StampaQsl", "AltezzaEtichette", ""), "370");
  EXPECT_EQ(session.GetSetting("StampaQsl", "LarghezzaEtichette", ""), "800");
  for (const char* key :
       {"SpaziaturaOrizzontale", "SpaziaturaVerticale", "MargineSuperiore", "MargineSinistro"}) {
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
  Event([&] { screen.cmPrint.Press(); });
  EXPECT_EQ(Lines(), Texts{"message none \"\" \"Selezionare il tipo di stampa\""});
  EXPECT_EQ(session.Db.Counters().statements, before);
}

TEST_F(StampaQslTest, WithoutContactsTheDocumentIsEmpty) {
  StampaQsl& screen = OpenScreen();
  screen.DatiQso.SetOn(true);
  Event([&] { screen.cmPrint.Press(); });
  EXPECT_EQ(Lines(), Texts{"print end"});
}

TEST_F(StampaQslTest, BothKindsFillARowWithThePairOfEachContact) {
  Owe("IK3ABC");
  Owe("IK3XYZ");
  StampaQsl& screen = OpenScreen();
  screen.DatiQso.SetOn(true);
  screen.DatiStazione.SetOn(true);
  screen.EtichXFila.SetValue(2);
  Event([&] { screen.cmPrint.Press(); });
  EXPECT_EQ(Outline(), (Texts{"S 1 2", "Q 81 2", "S 1 35.9", "Q 81 35.9", "print end"}));
}

TEST_F(StampaQslTest, WithThreeARowThePairsRunAcrossRowEnds) {
  Owe("IK3ABC");
  Owe("IK3XYZ");
  StampaQsl& screen = OpenScreen();
  screen.DatiQso.SetOn(true);
  screen.DatiStazione.SetOn(true);
  screen.EtichXFila.SetValue(3);
  Event([&] { screen.cmPrint.Press(); });
  EXPECT_EQ(Outline(), (Texts{"S 1 2", "Q 81 2", "S 161 2", "Q 1 35.9", "print end"}));
}

TEST_F(StampaQslTest, OneKindPrintsOneLabelAContact) {
  Owe("IK3ABC");
  Owe("IK3XYZ");
  StampaQsl& screen = OpenScreen();
  screen.DatiStazione.SetOn(true);
  Event([&] { screen.cmPrint.Press(); });
  EXPECT_EQ(Outline(), (Texts{"S 1 2", "S 1 35.9", "print end"}));
  screen.DatiStazione.SetOn(false);
  screen.DatiQso.SetOn(true);
  Event([&] { screen.cmPrint.Press(); });
  EXPECT_EQ(Outline(), (Texts{"Q 1 2", "Q 1 35.9", "print end"}));
}

TEST_F(StampaQslTest, APageEndsWhenTheNextRowWouldBeginBelowIt) {
  for (int i = 0; i < 10; ++i) Owe("IK3AB" + std::string(1, static_cast<char>('A' + i)));
  StampaQsl& screen = OpenScreen();
  screen.DatiQso.SetOn(true);
  Event([&] { screen.cmPrint.Press(); });
  const Texts outline = Outline();
  ASSERT_EQ(outline.size(), 12u);
  EXPECT_EQ(outline[8], "Q 1 273.2");
  EXPECT_EQ(outline[9], "print newpage");
  EXPECT_EQ(outline[10], "Q 1 2");
}

class LabelPages : public StampaQslTest {
 protected:
  LabelPages() {
    session.Db.Execute(
        "UPDATE [User] SET Call='I4ABC',Qra='Mario Rossi',Locator='JN54IE',"
        "Indirizzo='Via Emilia 1',Qth='Parma',Provincia='PR'");
  }
  void Work(std::string_view call, std::string_view mode, std::string_view note, bool received) {
    session.Db.Execute(
        "insert into Log (DataQso,Call,Banda,Modo,QrkDato,Frequenza,[Note],QslDaInviare,"
        "QslRicevuta) values ('0" +
        std::to_string(++day_) + "/01/2001 10:30','" + std::string(call) + "','  2 m','" +
        std::string(mode) + "','59',144.3,'" + std::string(note) + "'," +
        (received ? "False,True)" : "True,False)"));
  }
  void ThreeContacts() {
    Work("IK3ABC", "SSB", "", false);
    Work("DL1XYZ", "CW", "ciao", true);
    Work("F5LEN/P", "Satellite", "[70cm/AO7/2m]", false);
  }
  // All that the printer was told.
  std::string Printed(StampaQsl& screen) {
    Event([&] { screen.cmPrint.Press(); });
    std::string text;
    for (const std::string& line : Lines()) text += line + "\n";
    return text;
  }
  int day_ = 0;
};

struct PagesCase {
  const char* name;
  bool station, contact;
  int perRow;
};
void PrintTo(const PagesCase& pages, std::ostream* out) { *out << pages.name; }

class EachLabelPages : public LabelPages, public testing::WithParamInterface<PagesCase> {};

TEST_P(EachLabelPages, AreDrawnOperationByOperation) {
  ThreeContacts();
  StampaQsl& screen = OpenScreen();
  screen.DatiStazione.SetOn(GetParam().station);
  screen.DatiQso.SetOn(GetParam().contact);
  screen.EtichXFila.SetValue(GetParam().perRow);
  screen.AltezzaEtichetta.SetValue(370);
  screen.SpazOrizzontale.SetValue(25);
  screen.SpazVerticale.SetValue(10);
  screen.MargineSuperiore.SetValue(85);
  screen.MargineSinistro.SetValue(43);
  ExpectGolden(std::string("print/golden/labels_") + GetParam().name + ".txt", Printed(screen));
}

INSTANTIATE_TEST_SUITE_P(
    Labels, EachLabelPages,
    testing::Values(PagesCase{"station_1", true, false, 1}, PagesCase{"station_3", true, false, 3},
                    PagesCase{"contact_1", false, true, 1}, PagesCase{"contact_2", false, true, 2},
                    PagesCase{"both_1", true, true, 1}, PagesCase{"both_2", true, true, 2},
                    PagesCase{"both_3", true, true, 3}),
    [](const auto& each) { return each.param.name; });

TEST_F(LabelPages, ARowAtExactlyThePagesHeightStaysAndTheNextTurnsThePage) {
  for (int i = 0; i < 8; ++i) Work("IK3AB" + std::string(1, char('A' + i)), "SSB", "", false);
  StampaQsl& screen = OpenScreen();
  screen.DatiQso.SetOn(true);
  screen.AltezzaEtichetta.SetValue(495);
  const std::string printed = Printed(screen);
  EXPECT_NE(printed.find("print text 1 299 left"), std::string::npos);
  ExpectGolden("print/golden/labels_page_break.txt", printed);
}

TEST_F(LabelPages, SatelliteTextsInEveryForm) {
  for (const char* note : {"[70cm/AO7/2m]", "senza", "[70cm]", "[70cm/2m]", "[/AO7/2m]",
                           "via [70cm/AO7/2m]", "[70cm/AO7/2m] ciao", "[1/2/3/4]"}) {
    Work("IK3ABC", "Satellite", note, false);
  }
  Work("IK3ABC", "SSB", "[70cm/AO7/2m]", false);
  StampaQsl& screen = OpenScreen();
  screen.DatiQso.SetOn(true);
  ExpectGolden("print/golden/labels_satellite.txt", Printed(screen));
}

TEST_F(LabelPages, ASecondRunBeginsInThePrintersOwnFontAgain) {
  Work("IK3ABC", "SSB", "", false);
  StampaQsl& screen = OpenScreen();
  screen.DatiQso.SetOn(true);
  screen.DatiStazione.SetOn(true);
  Printed(screen);
  screen.DatiStazione.SetOn(false);
  EXPECT_EQ(Printed(screen).find("print text 1 2 left \"Arial\" 10 bold \"To Radio\""), 0u);
}

TEST_F(StampaQslTest, CardsReceivedAndNotAnsweredAreOwedToo) {
  session.Db.Execute("insert into Log (DataQso,Call,QslRicevuta) values ('05/01/2001','A',True)");
  session.Db.Execute(
      "insert into Log (DataQso,Call,QslRicevuta,QslInviata) values ('05/01/2001','B',True,True)");
  session.Db.Execute("insert into Log (DataQso,Call) values ('05/01/2001','C')");
  StampaQsl& screen = OpenScreen();
  screen.DatiQso.SetOn(true);
  Event([&] { screen.cmPrint.Press(); });
  EXPECT_EQ(Outline(), (Texts{"Q 1 2", "print end"}));
}

TEST_F(StampaQslTest, ANullNoteOfASatelliteContactFails) {
  session.Db.Execute(
      "insert into Log (DataQso,Call,Modo,QslDaInviare) values "
      "('05/01/2001','A','Satellite',True)");
  StampaQsl& screen = OpenScreen();
  screen.DatiQso.SetOn(true);
  Event([&] { screen.cmPrint.Press(); });
  const Texts lines = Lines();
  ASSERT_EQ(lines.size(), 1u);
  EXPECT_TRUE(lines[0].starts_with("error \"")) << lines[0];
}

TEST_F(StampaQslTest, APrinterThatFailsIsToldAndTheLogStays) {
  Owe("IK3ABC");
  StampaQsl& screen = OpenScreen();
  screen.DatiQso.SetOn(true);
  machine.GetPrinter().FailNext();
  Event([&] { screen.cmPrint.Press(); });
  EXPECT_TRUE(Lines().at(0).starts_with("error \""));
  EXPECT_EQ(Rows("select QslDaInviare from Log"), Texts{"-1"});
}

TEST_F(StampaQslTest, HelpHasNoActionAndExitCloses) {
  StampaQsl& screen = OpenScreen();
  Event([&] { screen.cmHelp.Press(); });
  EXPECT_TRUE(Lines().empty());
  Event([&] { screen.cmExit.Press(); });
  EXPECT_EQ(session.Windows.Find("StampaQsl"), nullptr);
}

TEST_F(StampaQslTest, TheUpdateMarksOwedCardsAsSentAndReceivedOnesAsAnswered) {
  session.Db.Execute(
      "insert into Log (DataQso,Call,QslDaInviare,QslRicevuta) values "
      "('05/01/2001','BOTH',True,True)");
  session.Db.Execute(
      "insert into Log (DataQso,Call,QslDaInviare) values ('05/01/2001','OWED',True)");
  session.Db.Execute(
      "insert into Log (DataQso,Call,QslRicevuta) values ('05/01/2001','RCVD',True)");
  session.Db.Execute("insert into Log (DataQso,Call) values ('05/01/2001','NONE')");
  const char* const marks =
      "select Call,QslDaInviare,QslRicevuta,QslInviata from Log order by QsoNr";
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

TEST_F(StampaQslTest, TheUpdateGoesThroughTheLogOnce) {
  Owe("IK3ABC");
  machine.Messages().QueueAnswer(true);
  const auto before = session.Db.Counters().statements;
  Event([&] { UpdateLogForQsl(session); });
  EXPECT_EQ(session.Db.Counters().statements - before, 9)
      << "whether a service has ticked, the update, what the history keeps before it, and the "
         "transaction around both";
}

TEST_F(StampaQslTest, AnUpdateThatIsStoppedLeavesTheLogAndSaysSo) {
  FillLog(12);
  Exec("update Log set QslDaInviare=True");
  machine.StopProgressAt(0);
  machine.Messages().QueueAnswer(true);
  int announced = 0;
  const forms::Subscription subscription =
      session.Contacts.Subscribe([&](const core::ContactsChanged&) { ++announced; });
  Event([&] { UpdateLogForQsl(session); });
  EXPECT_EQ(
      Lines().back(),
      "message exclamation \"Aggiornamento Log per Qsl\" \"Aggiornamento interrotto: il log è "
      "rimasto com'era.\"");
  EXPECT_EQ(Rows("select count(*) from Log where QslDaInviare and not QslInviata"), Texts{"4096"});
  EXPECT_EQ(announced, 0);
  EXPECT_FALSE(machine.Host().Busy());
  EXPECT_FALSE(session.Db.InTransaction());
}

TEST_F(StampaQslTest, TheUpdateAnsweredNoLeavesTheLog) {
  Owe("IK3ABC");
  machine.Messages().QueueAnswer(false);
  Event([&] { UpdateLogForQsl(session); });
  EXPECT_EQ(Rows("select QslDaInviare,QslInviata from Log"), Texts{"-1|0"});
}

}  // namespace
}  // namespace brenvo::print
