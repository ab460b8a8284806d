#include "log/log_form.h"

#include "core/help_topics.h"
#include "tests/support/station.h"

namespace brenvo::log {
namespace {

using Texts = std::vector<std::string>;

class LogFormTest : public StationTest {
 protected:
  LogFormTest() { Know<LogForm>("LogForm"); }

  LogForm& OpenLog() { return Open<LogForm>("LogForm"); }
  // Empties the fields, types a contact and stores it.
  void Store(LogForm& log, std::string_view call, std::string_view band = "  2 m",
             std::string_view time = "10:30") {
    Press(log, "cmClear");
    Event([&] { log.CallQso.SetText(call); });
    Event([&] { log.Banda.SetText(band); });
    log.Qtr.SetText(time);
    Press(log, "cmInsert");
  }
};

TEST_F(LogFormTest, AnEmptyLogOpensWithEmptyFieldsAndOnlyInsertWorks) {
  LogForm& log = OpenLog();
  EXPECT_EQ(log.CallQso.Text(), "");
  EXPECT_EQ(log.DataQso.Text(), "03/02/2001");
  EXPECT_EQ(log.Qtr.Text(), "04:05");
  EXPECT_EQ(log.Qrb.Text(), "0");
  for (const forms::Command* key :
       {&log.cmNext, &log.cmPrevious, &log.cmUpdate, &log.cmDelete, &log.cmMappa}) {
    EXPECT_FALSE(key->Enabled()) << key->Name();
  }
  EXPECT_TRUE(log.cmInsert.Enabled());
  Store(log, "IK3ABC");
  EXPECT_EQ(Rows("select Call from Log"), Texts{"IK3ABC"});
  EXPECT_TRUE(log.cmUpdate.Enabled());
}

TEST_F(LogFormTest, OpeningShowsTheNewestContactAndSetsTheSession) {
  session.Db.Execute("insert into Log (DataQso,Call) values ('05/01/2001','NEWER')");
  session.Db.Execute("insert into Log (DataQso,Call) values ('04/01/2001','OLDER')");
  LogForm& log = OpenLog();
  EXPECT_EQ(log.CallQso.Text(), "NEWER");
  EXPECT_EQ(log.QsoTotali.Text(), "2");
  EXPECT_TRUE(session.Opened.LogOpen);
  EXPECT_EQ(session.Opened.CurrentLogForm, &log);
  log.Close();
  EXPECT_FALSE(session.Opened.LogOpen);
}

TEST_F(LogFormTest, EveryColumnIsWrittenAsItsFieldSays) {
  LogForm& log = OpenLog();
  Press(log, "cmClear");
  Event([&] { log.CallQso.SetText("IK3ABC"); });
  Event([&] { log.Banda.SetText("  2 m"); });
  log.Manager.SetText("I2MGR");
  log.Qra.SetText("GIOVANNI");
  log.Qth.SetText("CANTÙ");
  log.Prefisso.SetText("IK3  XX");
  log.ZonaCQ.SetText("15");
  log.ZonaITU.SetText("28");
  log.Continente.SetText("EU");
  Event([&] { log.Country.SetText("I    Italia"); });
  log.Provincia.SetText("VE  Venezia");
  Event([&] { log.Locator.SetText("JN65AB"); });
  log.Frequenza.SetText("144.300");
  log.Potenza.SetText("100");
  log.Modo.SetText("SSB");
  log.Propagazione.SetText("Tropo");
  log.QrkDato.SetText("59");
  log.QrkRicevuto.SetText("57");
  log.QslDaInviare.SetOn(true);
  log.QslInviata.SetOn(true);
  log.Note.SetText("prima nota");
  Press(log, "cmInsert");
  EXPECT_EQ(
      Rows("select Call,Manager,Qra,Qth,Prefisso,[Zona CQ],[Zona ITU],Continente,Country,Provincia,"
           "Locator,Qrb,Banda,Frequenza,Potenza,Modo,Propagazione,QrkDato,QrkRicevuto,"
           "QslDaInviare,QslRicevuta,QslInviata,Note,DataQso from Log"),
      Texts{"IK3ABC|I2MGR|GIOVANNI|CANTÙ|IK3|15|28|EU|I|VE|JN65AB|5|  2 m|144.3|100|SSB|Tropo|59|"
            "57|-1|0|-1|prima nota|03/02/2001 04:05:00"});
}

TEST_F(LogFormTest, EveryColumnIsShownInItsField) {
  session.Db.Execute(
      "insert into Log (DataQso,Call,Manager,Qra,Qth,Prefisso,[Zona CQ],[Zona ITU],Continente,"
      "Country,Provincia,Locator,Qrb,Banda,Frequenza,Potenza,Modo,Propagazione,QrkDato,QrkRicevuto,"
      "QslDaInviare,QslRicevuta,QslInviata,Note) values ('05/01/2001 10:30','IK3ABC','I2MGR',"
      "'GIOVANNI','CANTÙ','IK3',15,28,'EU','I','VE','JN65AB',77,'  2 m',144.3,100,'SSB','Tropo',"
      "'59','57',true,false,true,'prima nota')");
  LogForm& log = OpenLog();
  const std::pair<forms::TextField*, std::string> texts[] = {{&log.QsoNr, "1"},
                                                             {&log.QsoTotali, "1"},
                                                             {&log.DataQso, "05/01/2001"},
                                                             {&log.Qtr, "10:30"},
                                                             {&log.CallQso, "IK3ABC"},
                                                             {&log.Manager, "I2MGR"},
                                                             {&log.Qra, "GIOVANNI"},
                                                             {&log.Qth, "CANTÙ"},
                                                             {&log.Prefisso, "IK3  "},
                                                             {&log.ZonaCQ, "15"},
                                                             {&log.ZonaITU, "28"},
                                                             {&log.Continente, "EU"},
                                                             {&log.Country, "I    Italia"},
                                                             {&log.Provincia, "VE  Venezia"},
                                                             {&log.Locator, "JN65AB"},
                                                             {&log.Qrb, "77"},
                                                             {&log.Banda, "  2 m"},
                                                             {&log.Frequenza, "144.300"},
                                                             {&log.Potenza, "100"},
                                                             {&log.Modo, "SSB"},
                                                             {&log.Propagazione, "Tropo"},
                                                             {&log.QrkDato, "59"},
                                                             {&log.QrkRicevuto, "57"},
                                                             {&log.Note, "prima nota"}};
  for (const auto& [field, text] : texts) EXPECT_EQ(field->Text(), text) << field->Name();
  EXPECT_TRUE(log.QslDaInviare.IsOn());
  EXPECT_FALSE(log.QslRicevuta.IsOn());
  EXPECT_TRUE(log.QslInviata.IsOn());
}

TEST_F(LogFormTest, MovingPastEitherEndStaysOnTheLastAndTheFirst) {
  LogForm& log = OpenLog();
  Store(log, "FIRST", "  2 m", "10:01");
  Store(log, "LAST", "  2 m", "10:02");
  Press(log, "cmLast");
  Press(log, "cmNext");
  EXPECT_EQ(log.CallQso.Text(), "LAST");
  Press(log, "cmPrevious");
  EXPECT_EQ(log.CallQso.Text(), "FIRST");
  Press(log, "cmPrevious");
  EXPECT_EQ(log.CallQso.Text(), "FIRST");
  Press(log, "cmNext");
  EXPECT_EQ(log.CallQso.Text(), "LAST");
  Press(log, "cmFirst");
  EXPECT_EQ(log.CallQso.Text(), "FIRST");
}

TEST_F(LogFormTest, DeletingTheLastShowsTheNewLastAndDeletingTheOnlyOneClears) {
  LogForm& log = OpenLog();
  Store(log, "FIRST", "  2 m", "10:01");
  Store(log, "LAST", "  2 m", "10:02");
  Press(log, "cmLast");
  machine.Messages().QueueAnswer(true);
  Press(log, "cmDelete");
  EXPECT_EQ(log.CallQso.Text(), "FIRST");
  machine.Messages().QueueAnswer(true);
  Press(log, "cmDelete");
  EXPECT_EQ(log.CallQso.Text(), "");
  EXPECT_FALSE(log.cmDelete.Enabled());
  EXPECT_TRUE(Rows("select Call from Log").empty());
}

TEST_F(LogFormTest, DeletingAsksFirst) {
  LogForm& log = OpenLog();
  Store(log, "IK3ABC");
  Lines();
  machine.Messages().QueueAnswer(false);
  Press(log, "cmDelete");
  EXPECT_EQ(Lines(), Texts{"question \"Cancellazione Qso\" \"Confermi l'operazione ?\" no"});
  EXPECT_EQ(Rows("select Call from Log"), Texts{"IK3ABC"});
}

TEST_F(LogFormTest, DeletingInTheMiddleShowsTheNext) {
  LogForm& log = OpenLog();
  Store(log, "A1A", "  2 m", "10:01");
  Store(log, "B1B", "  2 m", "10:02");
  Store(log, "C1C", "  2 m", "10:03");
  Press(log, "cmFirst");
  Press(log, "cmNext");
  machine.Messages().QueueAnswer(true);
  Press(log, "cmDelete");
  EXPECT_EQ(log.CallQso.Text(), "C1C");
}

TEST_F(LogFormTest, UpdateWithAnEmptyCallDoesNothingAndSaysNothing) {
  LogForm& log = OpenLog();
  Store(log, "IK3ABC");
  Lines();
  Event([&] { log.CallQso.SetText(""); });
  Press(log, "cmUpdate");
  EXPECT_TRUE(Lines().empty());
  EXPECT_EQ(Rows("select Call from Log"), Texts{"IK3ABC"});
}

TEST_F(LogFormTest, AnUpdateKeepsTheStoredSecondsUntilTheTimeIsChanged) {
  session.Db.Execute(
      "insert into Log (DataQso,Call,Banda) values ('01/01/2001 10:15:42','IK3ABC','  2 m')");
  const auto stored = [&] { return Rows("select DataQso from Log order by QsoNr"); };
  LogForm& log = OpenLog();
  Press(log, "cmFirst");
  EXPECT_EQ(log.Qtr.Text(), "10:15");
  log.Note.SetText("bel segnale");
  Press(log, "cmUpdate");
  EXPECT_EQ(stored(), Texts{"01/01/2001 10:15:42"});
  log.DataQso.SetText("02/01/2001");
  Press(log, "cmUpdate");
  EXPECT_EQ(stored(), Texts{"02/01/2001 10:15:42"}) << "another day, the same time";
  log.Qtr.SetText("10:16");
  Press(log, "cmUpdate");
  EXPECT_EQ(stored(), Texts{"02/01/2001 10:16:00"});
}

TEST_F(LogFormTest, AnInsertStoresTheTimeAsItIsTyped) {
  session.Db.Execute(
      "insert into Log (DataQso,Call,Banda) values ('01/01/2001 10:15:42','IK3ABC','  2 m')");
  LogForm& log = OpenLog();
  Press(log, "cmFirst");
  log.CallQso.SetText("IK3XYZ");
  Press(log, "cmInsert");
  EXPECT_EQ(Rows("select DataQso from Log where Call='IK3XYZ'"), Texts{"01/01/2001 10:15:00"});
}

TEST_F(LogFormTest, UpdateChangesTheRecordInItsPlace) {
  LogForm& log = OpenLog();
  Store(log, "IK3ABC", "  2 m", "10:01");
  Store(log, "IK3XYZ", "  2 m", "10:02");
  Press(log, "cmFirst");
  log.DataQso.SetText("09/09/2009");
  log.Note.SetText("spostato");
  Press(log, "cmUpdate");
  EXPECT_EQ(log.CallQso.Text(), "IK3ABC");
  Press(log, "cmNext");
  EXPECT_EQ(log.CallQso.Text(), "IK3XYZ");
  EXPECT_EQ(Rows("select Note from Log where Call='IK3ABC'"), Texts{"spostato"});
}

TEST_F(LogFormTest, AContactAtMidnightIsRefusedInSilenceAndAMinuteLaterStored) {
  LogForm& log = OpenLog();
  Store(log, "IK3ABC", "  2 m", "00:00");
  EXPECT_TRUE(Lines().empty());
  EXPECT_TRUE(Rows("select Call from Log").empty());
  log.Qtr.SetText("00:01");
  Press(log, "cmInsert");
  EXPECT_EQ(Rows("select DataQso from Log"), Texts{"03/02/2001 00:01:00"});
}

TEST_F(LogFormTest, AMidnightContactFromElsewhereShowsAsMidnight) {
  session.Db.Execute("insert into Log (DataQso,Call) values ('05/01/2001','IK3ABC')");
  EXPECT_EQ(OpenLog().Qtr.Text(), "00:00");
}

TEST_F(LogFormTest, ATextThatIsNoTimeIsRefusedInSilence) {
  LogForm& log = OpenLog();
  Store(log, "IK3ABC", "  2 m", "2_:__");
  EXPECT_TRUE(Lines().empty());
  EXPECT_TRUE(Rows("select Call from Log").empty());
}

TEST_F(LogFormTest, ABadDateIsTold) {
  LogForm& log = OpenLog();
  Press(log, "cmClear");
  Event([&] { log.CallQso.SetText("IK3ABC"); });
  log.DataQso.SetText("31/02/2001");
  Press(log, "cmInsert");
  EXPECT_EQ(Lines(), Texts{"message exclamation \"\" \"Data errata\""});
  EXPECT_TRUE(Rows("select Call from Log").empty());
}

TEST_F(LogFormTest, ANumberThatAColumnCannotHoldIsRefusedInWordsAndStaysAsTyped) {
  const std::string digits(19, '9');
  LogForm& log = OpenLog();
  Press(log, "cmClear");
  Event([&] { log.CallQso.SetText("IK3ABC"); });
  const std::pair<forms::TextField*, std::string> numbers[] = {
      {&log.Potenza, "Potenza"}, {&log.ZonaCQ, "Zona CQ"}, {&log.ZonaITU, "Zona ITU"}};
  for (const auto& [field, column] : numbers) {
    Type(*field, digits);
    const Texts refusal{"message exclamation \"\" \"Il valore '" + digits +
                        "' non è adatto alla colonna '" + column + "'\""};
    Press(log, "cmInsert");
    EXPECT_EQ(Lines(), refusal);
    EXPECT_EQ(field->Text(), digits);
    EXPECT_EQ(log.CallQso.Text(), "IK3ABC");
    EXPECT_TRUE(Rows("select Call from Log").empty());
    // Nine digits are never too many.
    Type(*field, "999999999");
  }
  Press(log, "cmInsert");
  EXPECT_EQ(Rows("select Potenza,[Zona CQ],[Zona ITU] from Log"),
            Texts{"999999999|999999999|999999999"});
  // An update likewise; the contact stays as it was stored.
  Lines();
  Event([&] { log.Note.SetText("altra"); });
  Type(log.Potenza, digits);
  Press(log, "cmUpdate");
  EXPECT_EQ(Lines().size(), 1u);
  EXPECT_EQ(log.Note.Text(), "altra");
  EXPECT_EQ(log.DsLog->Field("Note").Text(), "");
}

TEST_F(LogFormTest, ABadLocatorIsToldAndAnEmptyOnePasses) {
  LogForm& log = OpenLog();
  Press(log, "cmClear");
  Event([&] { log.CallQso.SetText("IK3ABC"); });
  Event([&] { log.Locator.SetText("JN6"); });
  Press(log, "cmInsert");
  EXPECT_EQ(Lines(), Texts{"message exclamation \"\" \"Locator non valido\""});
  Event([&] { log.Locator.SetText(""); });
  Press(log, "cmInsert");
  EXPECT_EQ(Rows("select Call from Log"), Texts{"IK3ABC"});
}

TEST_F(LogFormTest, ARepeatedContactIsToldAndTheBufferDropped) {
  LogForm& log = OpenLog();
  Store(log, "IK3ABC");
  Lines();
  Press(log, "cmInsert");
  EXPECT_EQ(Lines(), Texts{"message critical \"\" \"Qso gia' caricato\""});
  EXPECT_EQ(Rows("select Call from Log"), Texts{"IK3ABC"});
  // The other band within the same minute is another contact.
  Event([&] { log.Banda.SetText(" 70cm"); });
  Press(log, "cmInsert");
  EXPECT_EQ(Rows("select Call from Log").size(), 2u);
}

TEST_F(LogFormTest, AnUpdateThatWouldRepeatAContactIsTold) {
  LogForm& log = OpenLog();
  Store(log, "IK3ABC", "  2 m", "10:01");
  Store(log, "IK3ABC", "  2 m", "10:02");
  Lines();
  log.Qtr.SetText("10:01");
  Press(log, "cmUpdate");
  EXPECT_EQ(Lines(), Texts{"message critical \"\" \"Qso gia' caricato\""});
  EXPECT_EQ(Rows("select DataQso from Log order by DataQso"),
            (Texts{"03/02/2001 10:01:00", "03/02/2001 10:02:00"}));
}

TEST_F(LogFormTest, FrequencyIsStoredAsANumberAndShownWithThreeDecimals) {
  LogForm& log = OpenLog();
  Press(log, "cmClear");
  Event([&] { log.CallQso.SetText("IK3ABC"); });
  log.Frequenza.SetText("144.300");
  Press(log, "cmInsert");
  EXPECT_EQ(Rows("select Frequenza from Log"), Texts{"144.3"});
  Press(log, "cmLast");
  EXPECT_EQ(log.Frequenza.Text(), "144.300");
  log.Frequenza.SetText("144,5");
  Press(log, "cmUpdate");
  EXPECT_EQ(Rows("select Frequenza from Log"), Texts{"144"});
}

TEST_F(LogFormTest, ClearingKeepsTheNumberOfTheRecordShownLast) {
  LogForm& log = OpenLog();
  Store(log, "IK3ABC");
  Press(log, "cmLast");
  EXPECT_EQ(log.QsoNr.Text(), "1");
  Press(log, "cmClear");
  EXPECT_EQ(log.QsoNr.Text(), "1");
  // The contact of that number does not count against what is typed.
  Event([&] { log.Banda.SetText("  2 m"); });
  Event([&] { log.CallQso.SetText("IK3ABC"); });
  EXPECT_EQ(log.StatusBar1.Panel(2), "New Call");
}

TEST_F(LogFormTest, AMissingPrefixStaysAsItWasRead) {
  session.Db.Execute(
      "insert into Log (DataQso,Call,Prefisso,[Zona CQ],[Zona ITU],Continente) values "
      "('05/01/2001 10:00','Q9Q','Q9',1,2,'XX')");
  LogForm& log = OpenLog();
  EXPECT_EQ(log.Prefisso.Text(), "Q9   ");
  EXPECT_EQ(log.ZonaCQ.Text(), "1");
  EXPECT_EQ(log.Continente.Text(), "XX");
}

TEST_F(LogFormTest, AnUnknownCountryOrProvinceShowsEmpty) {
  session.Db.Execute(
      "insert into Log (DataQso,Call,Country,Provincia) values ('05/01/2001 10:00','A','I','QQ')");
  session.Db.Execute(
      "insert into Log (DataQso,Call,Country,Provincia) values ('06/01/2001 10:00','B','QQ','MI')");
  LogForm& log = OpenLog();
  EXPECT_EQ(log.Country.Text(), "");
  EXPECT_EQ(log.Provincia.Text(), "");
  Press(log, "cmPrevious");
  EXPECT_EQ(log.Country.Text(), "I    Italia");
  EXPECT_EQ(log.Provincia.Text(), "");
  EXPECT_EQ(log.PrevCountry, "I    Italia");
}

TEST_F(LogFormTest, NullColumnsShowAsEmptyTextsAndAreStoredAsEmptyTexts) {
  session.Db.Execute("insert into Log (DataQso,Call) values ('05/01/2001 10:00','IK3ABC')");
  LogForm& log = OpenLog();
  EXPECT_EQ(log.Qra.Text(), "");
  Press(log, "cmUpdate");
  EXPECT_EQ(Rows("select Call from Log where Qra=''"), Texts{"IK3ABC"});
}

TEST_F(LogFormTest, TheGridViewWidensTheWindowAndLeavesOneKey) {
  LogForm& log = OpenLog();
  Store(log, "IK3ABC");
  const forms::Bounds before = log.GetBounds();
  Press(log, "cmVista");
  EXPECT_TRUE(log.PanelGriglia.Visible());
  EXPECT_EQ(log.Width(), session.Host().ScreenWidth());
  EXPECT_FALSE(log.cmInsert.Enabled());
  EXPECT_FALSE(log.cmExit.Enabled());
  EXPECT_TRUE(log.cmVista.Enabled());
  EXPECT_EQ(log.StatusBar1.MinimumWidth(1), log.Width() - base::Twips(4500));
  Press(log, "cmVista");
  EXPECT_FALSE(log.PanelGriglia.Visible());
  EXPECT_EQ(log.GetBounds(), before);
  EXPECT_TRUE(log.cmInsert.Enabled());
  EXPECT_TRUE(log.cmExit.Enabled());
}

TEST_F(LogFormTest, TheGridShowsTheColumnsOfTheLogNewestFirst) {
  LogForm& log = OpenLog();
  Store(log, "OLD", "  2 m", "10:01");
  Store(log, "NEW", "  2 m", "10:02");
  Press(log, "cmVista");
  EXPECT_EQ(log.DataGrid1.Columns(), 25);
  EXPECT_EQ(log.DataGrid1.Cell(0, 0), "QsoNr");
  EXPECT_EQ(log.DataGrid1.Cell(0, 7), "Zona CQ");
  EXPECT_EQ(log.DataGrid1.Rows(), 3);
  EXPECT_EQ(log.DataGrid1.Cell(1, 2), "NEW");
  EXPECT_EQ(log.DataGrid1.Cell(2, 2), "OLD");
  EXPECT_EQ(log.DataGrid1.Cell(2, 22), "No");
}

TEST_F(LogFormTest, ADoubleClickInTheGridShowsThatContact) {
  LogForm& log = OpenLog();
  Store(log, "OLD", "  2 m", "10:01");
  Store(log, "NEW", "  2 m", "10:02");
  Press(log, "cmVista");
  Event([&] { log.DataGrid1.DoubleClickCell(2, 0); });
  EXPECT_EQ(log.CallQso.Text(), "OLD");
  EXPECT_FALSE(log.cmVista.Down());
  EXPECT_FALSE(log.PanelGriglia.Visible());
}

TEST_F(LogFormTest, AContactPickedInTheGridCanBeWorkedOnAlsoAfterTheFieldsWereCleared) {
  LogForm& log = OpenLog();
  Store(log, "IK3ABC");
  Press(log, "cmClear");
  Press(log, "cmVista");
  Press(log, "cmVista");
  EXPECT_FALSE(log.cmUpdate.Enabled());
  Press(log, "cmVista");
  Event([&] { log.DataGrid1.DoubleClickCell(1, 0); });
  EXPECT_EQ(log.CallQso.Text(), "IK3ABC");
  for (const forms::Command* key :
       {&log.cmNext, &log.cmPrevious, &log.cmUpdate, &log.cmDelete, &log.cmMappa}) {
    EXPECT_TRUE(key->Enabled()) << key->Name();
  }
}

TEST_F(LogFormTest, ASelectionThatComesIntoTheGridViewDecidesTheRecordCommandsAfterIt) {
  LogForm& log = OpenLog();
  Store(log, "IK3ABC");
  Press(log, "cmVista");
  Event([&] { session.ShowInLog("Select * from Log where QsoNr=1"); });
  EXPECT_EQ(log.DataGrid1.Rows(), 2);
  EXPECT_FALSE(log.cmUpdate.Enabled());
  machine.Advance(1000);
  Event([&] { session.ShowInLog("Select * from Log where QsoNr=99"); });
  EXPECT_EQ(log.DataGrid1.Rows(), 1);
  Press(log, "cmVista");
  EXPECT_FALSE(log.cmUpdate.Enabled());
  EXPECT_FALSE(log.cmDelete.Enabled());
  EXPECT_TRUE(log.cmInsert.Enabled());
}

TEST_F(LogFormTest, TheSizeOfTheGridViewIsNotSaved) {
  LogForm& log = OpenLog();
  Press(log, "cmVista");
  log.Close();
  EXPECT_EQ(session.GetSetting("Log", "W", "none"), "none");
  OpenLog().Close();
  EXPECT_EQ(session.GetSetting("Log", "W", "none"), "13500");
}

TEST_F(LogFormTest, ASelectionFromAnotherWindowIsShown) {
  LogForm& log = OpenLog();
  Store(log, "IK3ABC", "  2 m", "10:01");
  Store(log, "IK3XYZ", "  2 m", "10:02");
  Event([&] { session.ShowInLog("Select * from Log where QsoNr=1"); });
  EXPECT_EQ(log.CallQso.Text(), "IK3ABC");
  EXPECT_EQ(log.QsoTotali.Text(), "1");
  EXPECT_TRUE(log.cmSearch.Down());
  Press(log, "cmSearch");
  EXPECT_EQ(log.CallQso.Text(), "IK3XYZ");
  EXPECT_EQ(log.QsoTotali.Text(), "2");
}

TEST_F(LogFormTest, ASelectionWithinTheSameSecondIsNoneTheSecondTime) {
  LogForm& log = OpenLog();
  Store(log, "IK3ABC", "  2 m", "10:01");
  Store(log, "IK3XYZ", "  2 m", "10:02");
  Event([&] { session.ShowInLog("Select * from Log where QsoNr=1"); });
  EXPECT_EQ(log.Query.Text(), base::DateTimeText(session.Now()));
  Event([&] { session.ShowInLog("Select * from Log where QsoNr=2"); });
  EXPECT_EQ(log.CallQso.Text(), "IK3ABC");
  machine.Advance(1000);
  Event([&] { session.ShowInLog("Select * from Log where QsoNr=2"); });
  EXPECT_EQ(log.CallQso.Text(), "IK3XYZ");
  // Written by hand, any other text shows it too.
  session.Handed.QueryText = "Select * from Log where QsoNr=1";
  Event([&] { log.Query.SetText("again"); });
  EXPECT_EQ(log.CallQso.Text(), "IK3ABC");
}

TEST_F(LogFormTest, ASelectionThatFailsLeavesTheOneInForce) {
  LogForm& log = OpenLog();
  Store(log, "IK3ABC");
  Lines();
  Event([&] { session.ShowInLog("Select * from Nothing"); });
  ASSERT_EQ(Lines().size(), 1u);
  EXPECT_EQ(log.CallQso.Text(), "IK3ABC");
  Press(log, "cmLast");
  EXPECT_EQ(log.CallQso.Text(), "IK3ABC");
}

TEST_F(LogFormTest, APositionByCallAndLocatorNeedsItsModeValue) {
  LogForm& log = OpenLog();
  session.Db.Execute(
      "insert into Log (DataQso,Call,Locator) values ('05/01/2001 10:00','IK3ABC','JN65AA')");
  session.Db.Execute(
      "insert into Log (DataQso,Call,Locator) values ('06/01/2001 10:00','IK3XYZ','JN65AA')");
  Press(log, "cmSearch");  // nothing to open: comes up again
  EXPECT_FALSE(log.cmSearch.Down());
  Event([&] { log.DsLog->Requery(); });
  Press(log, "cmFirst");
  log.CallQso.SetText("IK3XYZ");
  log.Posiziona.SetText("1");
  EXPECT_EQ(log.QsoNr.Text(), "1");
  session.Handed.ModoPosiziona = 1;
  log.Posiziona.SetText("2");
  EXPECT_EQ(log.QsoNr.Text(), "2");
  log.CallQso.SetText("NOBODY");
  log.Posiziona.SetText("3");
  EXPECT_EQ(log.CallQso.Text(), "");
}

TEST_F(LogFormTest, TwoLogWindowsKeepTheirOwnPlaces) {
  LogForm& first = OpenLog();
  LogForm& second = OpenLog();
  Store(first, "IK3ABC");
  EXPECT_EQ(second.CallQso.Text(), "");
  Press(second, "cmLast");
  EXPECT_EQ(second.CallQso.Text(), "");
  Event([&] { second.DsLog->Requery(); });
  Press(second, "cmLast");
  EXPECT_EQ(second.CallQso.Text(), "IK3ABC");
  EXPECT_EQ(session.Opened.CurrentLogForm, &second);
}

TEST_F(LogFormTest, TheTimeKeySetsTheClocksTimeAndTellsSo) {
  LogForm& log = OpenLog();
  machine.SetNow(base::DateTime::Of(2001, 2, 3, 14, 7, 0));
  EXPECT_EQ(log.Qtr.Text(), "04:05");
  Press(log, "cmQtr");
  EXPECT_EQ(log.Qtr.Text(), "14:07");
  Event([&] { log.cmQtr.Hover(); });
  EXPECT_EQ(log.StatusBar1.Panel(1), "Imposta l'ora attuale");
  Event([&] { log.Panel3D1.Hover(); });
  EXPECT_EQ(log.StatusBar1.Panel(1), "");
}

TEST_F(LogFormTest, TogglesAreKeptInTheSettings) {
  LogForm& log = OpenLog();
  Store(log, "IK3ABC");
  Press(log, "cmWorked");
  Press(log, "cmMappa");
  EXPECT_EQ(session.GetSetting("Log", "LookupWorked", ""), "Y");
  EXPECT_EQ(session.GetSetting("Log", "DisplayMappa", ""), "Y");
  log.Close();
  LogForm& again = OpenLog();
  EXPECT_TRUE(again.cmWorked.Down());
  EXPECT_TRUE(again.cmMappa.Down());
  Press(again, "cmWorked");
  EXPECT_EQ(session.GetSetting("Log", "LookupWorked", ""), "N");
}

TEST_F(LogFormTest, HelpOpensItsTopicAndExitCloses) {
  LogForm& log = OpenLog();
  Press(log, "cmHelp");
  EXPECT_EQ(Lines(), Texts{"open \"Brenvo.HLP\""});
  EXPECT_EQ(machine.OpenedTopic(), core::kHelpLog);
  Press(log, "cmExit");
  EXPECT_EQ(session.Windows.Find("LogForm"), nullptr);
}

TEST_F(LogFormTest, AWriteThatFailsOtherwiseEndsTheProgram) {
  LogForm& log = OpenLog();
  Store(log, "IK3ABC");
  session.Db.Close();
  Lines();
  EXPECT_THROW(Press(log, "cmInsert"), forms::ProgramEnded);
  const Texts lines = Lines();
  ASSERT_EQ(lines.size(), 2u);
  EXPECT_TRUE(lines[0].starts_with("message critical \"Insert Qso\" \" 3420 - ")) << lines[0];
  EXPECT_EQ(lines[1], "end-program");
  EXPECT_THROW(Press(log, "cmUpdate"), forms::ProgramEnded);
  EXPECT_TRUE(Lines().at(0).starts_with("message critical \"Update Qso\""));
  machine.Messages().QueueAnswer(true);
  EXPECT_THROW(Press(log, "cmDelete"), forms::ProgramEnded);
  EXPECT_TRUE(Lines().at(1).starts_with("message critical \"Delete Qso\""));
}

TEST_F(LogFormTest, AStoredQuoteInACallIsToldAndTheRecordStillShown) {
  LogForm& log = OpenLog();
  log.DsLog->AddNew();
  log.DsLog->Set("DataQso", base::DateTime::Of(2001, 1, 1, 10, 0));
  log.DsLog->Set("Call", "IK3'ABC");
  log.DsLog->Set("Note", "nota");
  log.DsLog->Update();
  Press(log, "cmLast");
  const Texts lines = Lines();
  ASSERT_EQ(lines.size(), 1u);
  EXPECT_TRUE(lines[0].starts_with("error \"")) << lines[0];
  EXPECT_EQ(log.CallQso.Text(), "IK3'ABC");
  EXPECT_EQ(log.Note.Text(), "nota");
}

}  // namespace
}  // namespace brenvo::log
