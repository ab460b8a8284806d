#include "log/corrispondente.h"

#include <fmt/format.h>
#include <gmock/gmock.h>

#include "core/station_notes.h"
#include "log/log_form.h"
#include "tests/support/grid_rows.h"
#include "tests/support/station.h"

namespace brenvo::log {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

class CorrispondenteTest : public StationTest {
 protected:
  CorrispondenteTest() {
    Know<LogForm>("LogForm");
    Know<Corrispondente>("Corrispondente");
  }
  void Add(std::string_view values) {
    Exec("insert into Log (DataQso,Call,Banda,Modo,Qra,Qth,Locator,QslRicevuta) values (" +
         std::string(values) + ")");
  }
  Corrispondente& OpenPage() { return Open<Corrispondente>("Corrispondente"); }
  // Until the log has answered.
  void Wait() {
    // An answer that is passed over is waited for, and then the pause begins anew.
    for (int i = 0; i < 3; ++i) {
      machine.Advance(Corrispondente::kPause);
      machine.Advance(Corrispondente::kBetweenLooks);
    }
  }
  void Ask(Corrispondente& page, std::string_view call) {
    Event([&] { page.CallQso.SetText(call); });
    Wait();
  }
};

TEST_F(CorrispondenteTest, ShowsAllContactsWithAStationHoweverItSigned) {
  Add("'05/01/2001 10:00:00','IK3ABC','  2 m','SSB','MARIO','PADOVA','JN55WJ',False");
  Add("'06/01/2001 11:30:00','F/IK3ABC/P',' 20 m','CW','MARIO','NIZZA','JN33OQ',True");
  Add("'07/01/2001 12:00:00','IK3ABCD','  2 m','SSB','ALTRO','','',False");
  Add("'08/01/2001 12:00:00','DL1ABC','  2 m','SSB','','','',False");
  Corrispondente& page = OpenPage();
  Ask(page, "IK3ABC/M");
  EXPECT_THAT(RowsOf(page.Tabella),
              ElementsAre("06/01/2001|11:30|F/IK3ABC/P|20 m|CW|||MARIO|NIZZA|JN33OQ|Sì",
                          "05/01/2001|10:00|IK3ABC|2 m|SSB|||MARIO|PADOVA|JN55WJ|"));
  EXPECT_EQ(page.Avviso.Text(), "IK3ABC: 2 Qso");
  EXPECT_EQ(page.Nomi.Text(), "MARIO");
  EXPECT_EQ(page.Luoghi.Text(), "NIZZA, PADOVA");
  EXPECT_EQ(page.Locatori.Text(), "JN33OQ (06/01/2001), JN55WJ (05/01/2001)");
}

TEST_F(CorrispondenteTest, TheMatrixSaysWhatIsWorkedAndConfirmedByBandAndGroupOfModes) {
  Add("'05/01/2001','IK3ABC','  2 m','SSB','','','',False");
  Add("'06/01/2001','IK3ABC','  2 m','FM','','','',True");
  Add("'07/01/2001','IK3ABC','160 m','CW','','','',False");
  Add("'08/01/2001','IK3ABC',' 70 cm','Strano','','','',False");
  Exec("insert into LogAdif (QsoNr,Campo,Valore) values (3,'LOTW_QSL_RCVD','Y')");
  Corrispondente& page = OpenPage();
  Ask(page, "IK3ABC");
  std::vector<std::string> headings;
  for (int i = 0; i < page.Matrice.Columns(); ++i) headings.push_back(page.Matrice.Cell(0, i));
  EXPECT_THAT(headings, ElementsAre("Banda", "CW", "Fonia", "Digitale", "Immagine", "Altri"));
  EXPECT_THAT(RowsOf(page.Matrice),
              ElementsAre("160 m|Conf||||", "2 m||Conf|||", "70 cm|||||Worked"));
}

TEST_F(CorrispondenteTest, ALocatorStandsWithTheDaysOnWhichItWasGiven) {
  Add("'05/01/2001','IK3ABC','  2 m','SSB','','','JN55WJ',False");
  Add("'06/02/2001','IK3ABC','  2 m','SSB','','','JN55WJ',False");
  Corrispondente& page = OpenPage();
  Ask(page, "IK3ABC");
  EXPECT_EQ(page.Locatori.Text(), "JN55WJ (05/01/2001 - 06/02/2001)");
}

TEST_F(CorrispondenteTest, WhereTheLogKnowsNoLocatorThoseOfOthersStand) {
  core::LearnCalls(session, {{"IK3ABC",
                              {{"JN55WJ", base::DateTime::Of(2000, 7, 1), 2}, {"JN65AA", {}, 1}},
                              core::kFromContestLog}});
  Add("'05/01/2001','IK3ABC','  2 m','SSB','','','',False");
  Corrispondente& page = OpenPage();
  Ask(page, "IK3ABC/P");
  EXPECT_EQ(page.Locatori.Text(), "JN55WJ (da altri, 01/07/2000), JN65AA (da altri)");
  EXPECT_THAT(page.Direzione.Text(), testing::StartsWith("JN55WJ"));
  Add("'06/01/2001','IK3ABC','  2 m','SSB','','','JN56AA',False");
  Ask(page, "");
  Ask(page, "IK3ABC");
  EXPECT_EQ(page.Locatori.Text(), "JN56AA (06/01/2001)");
}

TEST_F(CorrispondenteTest, FollowsTheCallThatIsTypedInTheLogAMomentLater) {
  Add("'05/01/2001','IK3ABC','  2 m','SSB','MARIO','','',False");
  LogForm& log = Open<LogForm>("LogForm");
  Corrispondente& page = OpenPage();
  Wait();
  EXPECT_EQ(page.Avviso.Text(), "IK3ABC: 1 Qso");
  Press(log, "cmClear");
  Wait();
  EXPECT_EQ(page.Avviso.Text(), "");
  EXPECT_THAT(RowsOf(page.Tabella), ElementsAre());
  Event([&] { log.CallQso.SetText("IK3ABC"); });
  EXPECT_EQ(page.CallQso.Text(), "IK3ABC");
  EXPECT_THAT(RowsOf(page.Tabella), ElementsAre());
  Wait();
  EXPECT_EQ(page.Tabella.Rows(), 2);
}

TEST_F(CorrispondenteTest, AContactThatIsStoredMeanwhileIsShown) {
  LogForm& log = Open<LogForm>("LogForm");
  Corrispondente& page = OpenPage();
  Event([&] { log.CallQso.SetText("IK3ABC"); });
  Wait();
  EXPECT_EQ(page.Avviso.Text(), "IK3ABC: nessun Qso");
  Press(log, "cmInsert");
  Wait();
  EXPECT_EQ(page.Avviso.Text(), "IK3ABC: 1 Qso");
}

TEST_F(CorrispondenteTest, TheDirectionGoesToTheLocatorTypedElseTheLastKnownElseTheCountrys) {
  Add("'05/01/2001','IK3ABC','  2 m','SSB','','','JN61GV',False");
  LogForm& log = Open<LogForm>("LogForm");
  Press(log, "cmClear");
  Corrispondente& page = OpenPage();
  Event([&] { log.CallQso.SetText("DL1ABC"); });
  Wait();
  const std::string country = page.Direzione.Text();
  EXPECT_THAT(country, HasSubstr("SP "));
  EXPECT_THAT(page.Sole.Text(), testing::MatchesRegex("qui ..:..-..:..   là ..:..-..:.."));
  Event([&] { log.CallQso.SetText("IK3ABC"); });
  Wait();
  EXPECT_THAT(page.Direzione.Text(), testing::StartsWith("JN61GV   SP "));
  Event([&] { log.Locator.SetText("JO62QM"); });
  Wait();
  EXPECT_THAT(page.Direzione.Text(), testing::StartsWith("JO62QM   SP "));
}

TEST_F(CorrispondenteTest, ANoteIsKeptAndShowsAtTheNextContact) {
  LogForm& log = Open<LogForm>("LogForm");
  Corrispondente& page = OpenPage();
  EXPECT_FALSE(page.cmUpdate.Enabled());
  Ask(page, "IK3ABC");
  page.Nota.SetText("parla piano");
  Press(page, "cmUpdate");
  EXPECT_EQ(page.Avviso.Text(), "Nota salvata: IK3ABC");
  Press(log, "cmClear");
  Event([&] { log.CallQso.SetText("IK3ABC/P"); });
  Event([&] { log.CallQso.Leave(); });
  EXPECT_EQ(log.Avviso.Text(), "Nota su IK3ABC: parla piano");
  Wait();
  EXPECT_EQ(page.Nota.Text(), "parla piano");
  page.Nota.SetText("");
  Press(page, "cmUpdate");
  EXPECT_EQ(page.Avviso.Text(), "Nota tolta: IK3ABC");
  EXPECT_EQ(core::StationNote(session.Db, "IK3ABC"), "");
}

TEST_F(CorrispondenteTest, ANoteThatIsBeingWrittenStaysWhileContactsAreStored) {
  LogForm& log = Open<LogForm>("LogForm");
  Corrispondente& page = OpenPage();
  Event([&] { log.CallQso.SetText("IK3ABC"); });
  Wait();
  page.Nota.SetText("a metà");
  Press(log, "cmInsert");
  Wait();
  EXPECT_EQ(page.Avviso.Text(), "IK3ABC: 1 Qso");
  EXPECT_EQ(page.Nota.Text(), "a metà");
}

TEST_F(CorrispondenteTest, ARowIsShownInTheLog) {
  Add("'05/01/2001','IK3ABC','  2 m','SSB','','','',False");
  Add("'06/01/2001','DL1ABC','  2 m','SSB','','','',False");
  LogForm& log = Open<LogForm>("LogForm");
  Corrispondente& page = OpenPage();
  Ask(page, "IK3ABC");
  Press(page, "cmApri");
  EXPECT_EQ(log.CallQso.Text(), "IK3ABC");
}

TEST_F(CorrispondenteTest, ACallWithAQuoteOrAPatternIsAskedForAsItStands) {
  Add("'05/01/2001','IK3ABC','  2 m','SSB','','','',False");
  Corrispondente& page = OpenPage();
  for (const char* call : {"I'K", "I*", "[", "?K3ABC", "#"}) {
    Ask(page, call);
    EXPECT_THAT(page.Avviso.Text(), HasSubstr("nessun Qso")) << call;
  }
}

TEST_F(CorrispondenteTest, ACallTypedWhileTheLogIsAskedIsTheOneThatIsAnswered) {
  Add("'05/01/2001','IK3ABC','  2 m','SSB','','','',False");
  Add("'06/01/2001','DL1ABC','  2 m','SSB','','','',False");
  Corrispondente& page = OpenPage();
  Event([&] { page.CallQso.SetText("IK3ABC"); });
  machine.Advance(Corrispondente::kPause);
  Event([&] { page.CallQso.SetText("DL1ABC"); });
  machine.Advance(Corrispondente::kBetweenLooks);
  EXPECT_THAT(RowsOf(page.Tabella), ElementsAre());
  Wait();
  EXPECT_EQ(page.Avviso.Text(), "DL1ABC: 1 Qso");
}

TEST_F(CorrispondenteTest, ALocatorThatIsTypedAsksTheLogNothing) {
  Add("'05/01/2001','IK3ABC','  2 m','SSB','','','JN61GV',False");
  LogForm& log = Open<LogForm>("LogForm");
  Corrispondente& page = OpenPage();
  Wait();
  Event([&] { log.Locator.SetText("JO62QM"); });
  EXPECT_THAT(page.Direzione.Text(), testing::StartsWith("JO62QM   SP "));
  Event([&] { log.Locator.SetText("JO62Q"); });
  EXPECT_THAT(page.Direzione.Text(), testing::StartsWith("JO62QM   SP "));
}

TEST_F(CorrispondenteTest, TheDatabaseIsClosedWhileItAsks) {
  Add("'05/01/2001','IK3ABC','  2 m','SSB','','','',False");
  Corrispondente& page = OpenPage();
  Event([&] { page.CallQso.SetText("IK3ABC"); });
  machine.Advance(Corrispondente::kPause);
  session.CloseTables();
  machine.Advance(1000);
  EXPECT_THAT(RowsOf(page.Tabella), ElementsAre());
}

TEST_F(CorrispondenteTest, SaysWhyTheMarkedContactHasItsCountryAndElseWhoTheCallIsToday) {
  machine.SetNow(base::DateTime::Of(2024, 6, 10, 12));
  for (const char* day : {"10/05/2024", "10/06/2024"}) {
    Exec(
        fmt::format("insert into Log (DataQso,Call,Banda,Country) values ('{} 12:00','GB6WW',"
                    "'  2 m','GM')",
                    day));
  }
  Exec("insert into EntitaQso (QsoNr,Dxcc) values (2,279)");
  Corrispondente& page = OpenPage();
  Ask(page, "GB6WW");
  EXPECT_EQ(page.Entita.Text(), "Country detto da un file di log: Scozia");
  Event([&] { page.Tabella.ClickCell(2, 0); });
  EXPECT_EQ(page.Entita.Text(),
            "GB6WW: Scozia dal 01/05 al 28/05/2024 (regola GB6WW di Entita.csv)");
  Ask(page, "GB6XX");
  EXPECT_EQ(page.Entita.Text(), "GB6XX: Inghilterra");
}

}  // namespace
}  // namespace brenvo::log
