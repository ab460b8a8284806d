#include "print/gestione_qsl.h"

#include <gmock/gmock.h>

#include <fstream>

#include "print/card_list.h"
#include "tests/support/golden.h"
#include "tests/support/station.h"

namespace brenvo::print {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using Texts = std::vector<std::string>;

class GestioneQslTest : public StationTest {
 protected:
  GestioneQslTest() {
    Know<GestioneQsl>("GestioneQsl");
    Exec("update [User] set Call='IK3AAA'");
    Store("DL1ABC", "DL", "SSB");                                  // 1: the first of its country
    Store("DL1ABC", "DL", "SSB");                                  // 2: another like it
    Store("EA1ABC", "EA", "CW", "QslInviata", "-1");               // 3: sent, nobody knows how
    Store("F1ABC", "F", "CW", "QslRicevuta", "-1");                // 4: to be answered
    Store("G3XYZ", "G", "CW", "QslInviata,QslRicevuta", "-1,-1");  // 5: both
    Exec("insert into LogQsl (QsoNr,Verso,Via,Data) values (5,'I','B','2001-01-15')");
    Exec("insert into LogQsl (QsoNr,Verso,Via,Data) values (5,'R','D','2001-01-20')");
  }
  void Store(const std::string& call, const std::string& country, const std::string& mode,
             const std::string& flags = "QslInviata", const std::string& values = "0") {
    Exec("insert into Log (DataQso,Call,Country,Banda,Modo," + flags + ") values ('2001-01-0" +
         std::to_string(++stored_) + " 10:00:00','" + call + "','" + country + "',' 20 m','" +
         mode + "'," + values + ")");
  }
  GestioneQsl& OpenWindow() { return Open<GestioneQsl>("GestioneQsl"); }
  // A column from above.
  static Texts Column(GestioneQsl& window, std::string_view heading = "Call") {
    Texts cells;
    for (int column = 0; column < window.Tabella.Columns(); ++column) {
      if (window.Tabella.ColumnsOf()[static_cast<std::size_t>(column)].heading != heading) continue;
      for (std::int64_t row = 1; row < window.Tabella.Rows(); ++row) {
        cells.push_back(window.Tabella.Cell(row, column));
      }
    }
    return cells;
  }
  void Show(GestioneQsl& window, int view) {
    Event([&] { window.Mostra.Pick(view); });
  }

 private:
  int stored_ = 0;
};

TEST_F(GestioneQslTest, ShowsWhatIsDueByTheRulesAndWhy) {
  GestioneQsl& window = OpenWindow();
  EXPECT_THAT(Column(window), ElementsAre("F1ABC", "DL1ABC"));
  EXPECT_THAT(Column(window, "Motivo"), ElementsAre("Chiesta da loro", "Nuovo country"));
  EXPECT_EQ(window.Avviso.Text(), "Da inviare: 2 Qso");
  EXPECT_FALSE(window.Via.Enabled());
}

TEST_F(GestioneQslTest, ShowsWhatWentOutCameAndIsAwaitedByWayAndDay) {
  GestioneQsl& window = OpenWindow();
  Show(window, 1);
  EXPECT_THAT(Column(window), ElementsAre("G3XYZ", "EA1ABC"));
  EXPECT_THAT(Column(window, "Inviata"), ElementsAre("bureau 15/01/2001", "sì"));
  Event([&] { window.Via.Pick(2); });
  EXPECT_EQ(window.Via.Text(), "bureau");
  EXPECT_THAT(Column(window), ElementsAre("G3XYZ"));
  Event([&] { window.Via.Pick(1); });
  EXPECT_EQ(window.Via.Text(), "Non nota");
  EXPECT_THAT(Column(window), ElementsAre("EA1ABC"));
  Show(window, 3);
  EXPECT_THAT(Column(window), ElementsAre("EA1ABC"));
  Event([&] { window.Via.Pick(0); });
  Show(window, 2);
  EXPECT_THAT(Column(window), ElementsAre("G3XYZ", "F1ABC"));
  EXPECT_THAT(Column(window, "Ricevuta"), ElementsAre("diretta 20/01/2001", "sì"));
  Event([&] { window.Dal.SetText("20/01/2001"); });
  EXPECT_THAT(Column(window), ElementsAre("G3XYZ"));
  Event([&] { window.Al.SetText("19/01/2001"); });
  EXPECT_THAT(Column(window), IsEmpty());
}

TEST_F(GestioneQslTest, MarkedContactsAreSentByThatWayOnThatDayAndCtrlZTakesItBack) {
  const Texts before = Rows("select QsoNr,QslInviata,QslRicevuta,QslDaInviare from Log");
  GestioneQsl& window = OpenWindow();
  Press(window, "cmSegnaTutti");
  Event([&] { window.ViaCartolina.Pick(2); });
  Event([&] { window.DataCartolina.SetText("01/02/2001"); });
  Press(window, "cmInviata");
  EXPECT_EQ(window.Avviso.Text(), "Qsl inviata diretta 01/02/2001: 2 contatti; Da inviare: 0 Qso");
  EXPECT_THAT(Rows("select QsoNr,Via,Data from LogQsl where Verso='I' order by QsoNr"),
              ElementsAre("1|D|01/02/2001", "4|D|01/02/2001", "5|B|15/01/2001"));
  EXPECT_THAT(Rows("select QsoNr from Log where QslInviata"), ElementsAre("1", "3", "4", "5"));
  Press(window, "cmAnnulla");
  EXPECT_THAT(window.Avviso.Text(), HasSubstr("Da inviare: 2 Qso"));
  EXPECT_EQ(Rows("select QsoNr,QslInviata,QslRicevuta,QslDaInviare from Log"), before);
  EXPECT_THAT(Rows("select QsoNr from LogQsl where Verso='I'"), ElementsAre("5"));
}

TEST_F(GestioneQslTest, ACardReceivedIsMarkedWithoutADayWhereNobodyKnowsIt) {
  GestioneQsl& window = OpenWindow();
  Show(window, 3);
  Event([&] { window.DataCartolina.SetText(""); });
  Press(window, "cmRicevuta");
  EXPECT_THAT(Rows("select QsoNr,Via,Data from LogQsl where Verso='R' order by QsoNr"),
              ElementsAre("3|B|", "5|D|20/01/2001"));
  EXPECT_THAT(Column(window), IsEmpty());
}

TEST_F(GestioneQslTest, CardsAreTakenAwayWithTheirWaysAndDays) {
  GestioneQsl& window = OpenWindow();
  Show(window, 2);
  Press(window, "cmSegnaTutti");
  Press(window, "cmTogliRicevuta");
  EXPECT_THAT(Rows("select QsoNr,Verso from LogQsl"), ElementsAre("5|I"));
  Show(window, 1);
  Press(window, "cmSegnaTutti");
  Press(window, "cmTogliInviata");
  EXPECT_THAT(Rows("select QsoNr,Verso from LogQsl"), IsEmpty());
  EXPECT_THAT(Rows("select QsoNr from Log where QslInviata or QslRicevuta"), IsEmpty());
}

TEST_F(GestioneQslTest, PrintedLabelsAreMarkedAsSentWhenTheOperatorSaysSo) {
  GestioneQsl& window = OpenWindow();
  machine.Messages().QueueAnswer(false);
  Press(window, "cmEtichette");
  EXPECT_EQ(window.Avviso.Text(), "Stampate 2 etichette per 2 contatti");
  EXPECT_THAT(Rows("select QsoNr from Log where QslInviata"), ElementsAre("3", "5"));
  Lines();
  machine.Messages().QueueAnswer(true);
  Press(window, "cmEtichette");
  const Texts lines = Lines();
  EXPECT_THAT(lines, Contains(HasSubstr("Segnare come inviate: bureau 03/02/2001?")));
  EXPECT_THAT(lines, Contains(HasSubstr("print end")));
  EXPECT_THAT(window.Avviso.Text(), HasSubstr("segnate come inviate; Da inviare: 0 Qso"));
  EXPECT_THAT(Rows("select QsoNr,Via,Data from LogQsl where Verso='I' order by QsoNr"),
              ElementsAre("1|B|03/02/2001", "4|B|03/02/2001", "5|B|15/01/2001"));
  EXPECT_THAT(Rows("select Titolo from Storia"),
              ElementsAre("Etichette Qsl inviate bureau 03/02/2001"));
}

TEST_F(GestioneQslTest, WithoutAPrinterNothingIsAskedNorMarked) {
  GestioneQsl& window = OpenWindow();
  machine.GetPrinter().FailNext();
  Press(window, "cmEtichette");
  EXPECT_THAT(Rows("select QsoNr from Log where QslInviata"), ElementsAre("3", "5"));
  EXPECT_THAT(Rows("select Titolo from Storia"), IsEmpty());
}

TEST_F(GestioneQslTest, SaysWhenTheLogHasChangedAndWhichRuleCannotBeUnderstood) {
  GestioneQsl& window = OpenWindow();
  session.Tables.TbLog->SetBookmark({2});
  Event([&] { session.Contacts.Delete(core::ContactTable::kLog, *session.Tables.TbLog); });
  EXPECT_EQ(window.Avviso.Text(), "Il log è cambiato: F5 lo legge di nuovo");
  std::ofstream(directory.Path() / "QslDaInviare proprie.csv") << "Regola\n";
  Press(window, "cmLeggi");
  EXPECT_THAT(window.Avviso.Text(),
              HasSubstr("Da inviare: 2 Qso; QslDaInviare proprie.csv, riga 1"));
}

TEST_F(GestioneQslTest, ACardThatCameElectronicallyIsNotAnswered) {
  Exec("insert into LogQsl (QsoNr,Verso,Via) values (4,'R','E')");
  GestioneQsl& window = OpenWindow();
  EXPECT_THAT(Column(window, "Motivo"), Not(Contains("Chiesta da loro")));
}

}  // namespace
}  // namespace brenvo::print
