#include "checks/verifica_entita.h"

#include <fmt/format.h>
#include <gmock/gmock.h>

#include <fstream>

#include "core/transaction.h"
#include "history/take_back.h"
#include "log/log_form.h"
#include "tests/support/entity_table.h"
#include "tests/support/station.h"
#include "upkeep/maintenance.h"

namespace brenvo::checks {
namespace {

using enum core::ContactTable;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
namespace column = core::column;

class VerificaEntitaTest : public StationTest {
 protected:
  VerificaEntitaTest() {
    Know<VerificaEntita>("VerificaEntita");
    Know<log::LogForm>("LogForm");
  }
  struct Place {
    std::string country;
    int cq = 0, itu = 0;
    std::string continent;
  };
  void Add(const std::string& call, base::DateTime when, const Place& place) {
    session.Contacts.Add(kLog, *session.Tables.TbLog, [&](engine::EditableRecordset& row) {
      row.Set(column::kDataQso, when);
      row.Set(column::kCall, call);
      row.Set(column::kBanda, " 20 m");
      row.Set(column::kCountry, place.country);
      if (place.cq != 0) row.Set(column::kZonaCQ, place.cq);
      if (place.itu != 0) row.Set(column::kZonaITU, place.itu);
      row.Set(column::kContinente, place.continent);
      row.Set(column::kProvincia, "XX");
    });
  }
  VerificaEntita& OpenChecked() {
    VerificaEntita& window = Open<VerificaEntita>("VerificaEntita");
    Press(window, "cmVerifica");
    return window;
  }
  static std::vector<std::string> Shown(VerificaEntita& window) {
    std::vector<std::string> rows;
    for (std::int64_t row = 1; row < window.Tabella.Rows(); ++row) {
      rows.push_back(window.Tabella.Cell(row, 0) + "|" + window.Tabella.Cell(row, 4) + "|" +
                     window.Tabella.Cell(row, 5));
    }
    return rows;
  }
  std::vector<std::string> Places() {
    return Rows(
        "select Call,Country,[Zona CQ],[Zona ITU],Continente,Provincia from Log order by "
        "QsoNr");
  }
  std::filesystem::path File(const std::string& name, std::string_view text) {
    const auto file = directory.Path() / name;
    std::ofstream(file, std::ios::binary) << text;
    return file;
  }
  void Load(VerificaEntita& window, const std::filesystem::path& file) {
    machine.Picks().Queue(file);
    Press(window, "cmCarica");
  }

  const base::DateTime may = base::DateTime::Of(2024, 5, 10, 12),
                       june = base::DateTime::Of(2024, 6, 10, 12);
  const Place england{"G", 14, 27, "EU"};
};

TEST_F(VerificaEntitaTest, ShowsWhoIsNotTheOneOfItsDayWithTheRuleAndItsDays) {
  Add("GB6WW", may, england);
  Add("GB6WW", june, england);
  Add("IK0ABC", may, {"I", 15, 28, "EU"});
  VerificaEntita& window = OpenChecked();
  EXPECT_EQ(window.Avviso.Text(), "3 Qso verificati: un Qso non come la regola del giorno");
  EXPECT_THAT(Shown(window), ElementsAre("1|G 14/27 EU|GM 14/27 EU"));
  EXPECT_EQ(window.Spiegazione.Text(), "GB6WW: Scozia dal 01/05 al 28/05/2024");
  EXPECT_EQ(window.Tabella.Cell(1, 7), "GB6WW");
  EXPECT_EQ(window.Tabella.Cell(1, 8), "Entita.csv");
  EXPECT_EQ(window.Tabelle.Text(), "Tabelle: Entita.csv");
}

TEST_F(VerificaEntitaTest, TellsCountryZonesAndContinentApart) {
  Add("GB6WW", may, england);
  Add("IG9A", may, {"I", 15, 28, "EU"});
  Add("IK0ABC", may, {"I", 15, 28, "AF"});
  VerificaEntita& window = OpenChecked();
  EXPECT_THAT(Shown(window), ElementsAre("1|G 14/27 EU|GM 14/27 EU", "2|I 15/28 EU|I 33/37 AF",
                                         "3|I 15/28 AF|I 15/28 EU"));
  const auto shownFor = [&](std::string_view what) {
    Event([&] { window.CheCosa.SetText(what); });
    std::vector<std::string> numbers;
    for (std::int64_t row = 1; row < window.Tabella.Rows(); ++row) {
      numbers.push_back(window.Tabella.Cell(row, 0));
    }
    return numbers;
  };
  EXPECT_THAT(shownFor("Country"), ElementsAre("1"));
  EXPECT_THAT(shownFor("Zone"), ElementsAre("2"));
  EXPECT_THAT(shownFor("Continente"), ElementsAre("2", "3"));
}

TEST_F(VerificaEntitaTest, AtSeaCountsForNoCountryAndZonesAreTheOperatorsOwn) {
  Add("K0ABC/MM", may, {"K", 8, 11, "NA"});
  VerificaEntita& window = OpenChecked();
  EXPECT_THAT(Shown(window), ElementsAre("1|K 8/11 NA|nessun country 8/11 NA"));
}

TEST_F(VerificaEntitaTest, TakesTheRuleForOneForManyAndForAllAndGivesItBack) {
  Add("GB6WW", may, england);
  Add("OM3ABC", base::DateTime::Of(1985, 6, 1), {"OM", 15, 28, "EU"});
  Add("IG9A", may, {"I", 15, 28, "EU"});
  const std::vector<std::string> before = Places();
  VerificaEntita& window = OpenChecked();
  Press(window, "cmPrendi");
  EXPECT_EQ(window.Avviso.Text(), "La regola del giorno in un Qso");
  // A province is one of its country.
  EXPECT_EQ(Places().at(0), "GB6WW|GM|14|27|EU|");
  EXPECT_THAT(Shown(window), testing::SizeIs(2));
  Press(window, "cmSegnaTutti");
  Press(window, "cmPrendi");
  EXPECT_EQ(window.Avviso.Text(), "La regola del giorno in 2 Qso");
  EXPECT_THAT(Places(),
              ElementsAre("GB6WW|GM|14|27|EU|", "OM3ABC|OK/D|15|28|EU|", "IG9A|I|33|37|AF|XX"));
  EXPECT_THAT(Shown(window), IsEmpty());
  for (int works = 0; works < 2; ++works) {
    Event([&] {
      const auto work = history::LastWork(session);
      ASSERT_TRUE(work.has_value());
      history::TakeBack(session, *work);
    });
  }
  EXPECT_EQ(Places(), before);
}

TEST_F(VerificaEntitaTest, WhatTheOperatorKeepsIsMarkedAndLeft) {
  Add("GB6WW", may, england);
  VerificaEntita& window = OpenChecked();
  Press(window, "cmTieni");
  EXPECT_EQ(window.Avviso.Text(), "Tenuti come sono: un Qso");
  EXPECT_THAT(Shown(window), IsEmpty());
  Press(window, "cmVerifica");
  EXPECT_EQ(window.Avviso.Text(),
            "un Qso verificati: un Qso non come la regola del giorno, di cui 1 tenuti");
  Event([&] { window.AncheScelti.SetOn(true); });
  EXPECT_THAT(Shown(window), ElementsAre("1|G 14/27 EU|GM 14/27 EU"));
  EXPECT_EQ(window.Tabella.Cell(1, 9), "sì");
  EXPECT_FALSE(window.cmPrendi.Enabled());
  Press(window, "cmSegnaTutti");
  EXPECT_FALSE(window.cmPrendi.Enabled());
  Press(window, "cmRivedi");
  EXPECT_EQ(window.Avviso.Text(), "Da rivedere: un Qso");
  EXPECT_TRUE(window.cmPrendi.Enabled());
}

TEST_F(VerificaEntitaTest, WhatALogFileHasToldCountsBeforeTheRule) {
  Add("GB6WW", may, england);
  Add("IK0ABC", may, {"I", 15, 28, "EU"});
  Exec("insert into EntitaQso (QsoNr,Dxcc) values (1,223)");
  Exec("insert into EntitaQso (QsoNr,Dxcc) values (2,225)");
  VerificaEntita& window = OpenChecked();
  EXPECT_THAT(Shown(window), ElementsAre("2|I 15/28 EU|IS0 15/28 EU"));
  EXPECT_EQ(window.Spiegazione.Text(), "IK0ABC: Sardegna, detto da un file di log");
}

TEST_F(VerificaEntitaTest, ATableIsComparedThenUsedThenTakenBack) {
  Add("IK0ABC", may, {"I", 15, 28, "EU"});
  Add("IK0XYZ", may, {"I", 15, 28, "EU"});
  VerificaEntita& window = OpenChecked();
  EXPECT_THAT(Shown(window), IsEmpty());
  Load(window, File("prova.tbl", "=IK0ABC|x|EU|-1|0N|0E|28|15||R|2024/05/01-2024/05/28=225\n"));
  EXPECT_EQ(window.Avviso.Text(),
            "prova.tbl, 1 regole: cambierebbe la risposta di un Qso; F9 la usa");
  EXPECT_THAT(Shown(window), ElementsAre("1|I 15/28 EU|IS0 15/28 EU"));
  EXPECT_EQ(window.Spiegazione.Text(), "IK0ABC: Sardegna dal 01/05 al 28/05/2024");
  // What is only compared is not taken over.
  EXPECT_FALSE(window.cmPrendi.Enabled());
  EXPECT_EQ(session.ByDate.Of("IK0ABC", may).entity, 248);
  Press(window, "cmUsa");
  EXPECT_EQ(window.Avviso.Text(), "prova.tbl è in uso: F5 verifica il log");
  EXPECT_EQ(window.Tabelle.Text(), "Tabelle: Entita.csv, prova.tbl");
  EXPECT_EQ(session.ByDate.Of("IK0ABC", may).entity, 225);
  Press(window, "cmVerifica");
  EXPECT_THAT(Shown(window), ElementsAre("1|I 15/28 EU|IS0 15/28 EU"));
  Press(window, "cmPrecedente");
  EXPECT_EQ(window.Avviso.Text(), "prova.tbl non è più in uso: F5 verifica il log");
  EXPECT_EQ(session.ByDate.Of("IK0ABC", may).entity, 248);
  Press(window, "cmPrecedente");
  EXPECT_EQ(window.Avviso.Text(), "Nessuna tabella caricata è in uso");
}

TEST_F(VerificaEntitaTest, ATableThatIsLeftChangesNothing) {
  VerificaEntita& window = OpenChecked();
  Load(window, File("prova.tbl", "=IK0ABC|x|EU|-1|0N|0E|28|15||R|=225\n"));
  Press(window, "cmLascia");
  EXPECT_EQ(window.Avviso.Text(), "prova.tbl non è in uso");
  EXPECT_FALSE(window.cmUsa.Enabled());
  EXPECT_THAT(core::EntityLoads(session.Db), IsEmpty());
}

TEST_F(VerificaEntitaTest, ANewerFileTakesThePlaceOfItsLikeAndGivesItBack) {
  VerificaEntita& window = Open<VerificaEntita>("VerificaEntita");
  const auto use = [&](int country) {
    Load(window, File("prova.tbl", fmt::format("=IK0ABC|x|EU|-1|0N|0E|28|15||R|={}\n", country)));
    Press(window, "cmUsa");
  };
  use(225);
  use(230);
  EXPECT_EQ(session.ByDate.Of("IK0ABC", may).entity, 230);
  EXPECT_EQ(window.Tabelle.Text(), "Tabelle: Entita.csv, prova.tbl");
  Press(window, "cmPrecedente");
  EXPECT_EQ(session.ByDate.Of("IK0ABC", may).entity, 225);
  Press(window, "cmPrecedente");
  EXPECT_EQ(session.ByDate.Of("IK0ABC", may).entity, 248);
}

TEST_F(VerificaEntitaTest, WhatIsInUseStaysAfterAnotherStart) {
  VerificaEntita& window = Open<VerificaEntita>("VerificaEntita");
  Load(window, File("prova.tbl",
                    "=IK0ABC|x|EU|-1|0N|0E|28|15||R|2024/05/01-2024/05/28=225\n"
                    "=IK0XYZ|x|EU|-1|0N|0E|28|15||R|=0\n"));
  Press(window, "cmUsa");
  core::CountriesByDate again(session);
  EXPECT_EQ(again.Of("IK0ABC", may).entity, 225);
  EXPECT_EQ(again.Of("IK0ABC", june).entity, 248);
  EXPECT_EQ(again.Of("IK0XYZ", june).reason, entities::Reason::kInvalid);
  EXPECT_EQ(again.TablesText(), "Entita.csv, prova.tbl");
}

TEST_F(VerificaEntitaTest, OlderTablesStayUntilTheCompaction) {
  VerificaEntita& window = Open<VerificaEntita>("VerificaEntita");
  for (const int country : {225, 230}) {
    Load(window, File("prova.tbl", fmt::format("=IK0ABC|x|EU|-1|0N|0E|28|15||R|={}\n", country)));
    Press(window, "cmUsa");
  }
  EXPECT_THAT(core::EntityLoads(session.Db), testing::SizeIs(2));
  Exec("insert into EntitaQso (QsoNr,Dxcc) values (77,248)");  // of a contact that is gone
  Event([&] { upkeep::CompattaDatabase(session); });
  EXPECT_THAT(Rows("select QsoNr from EntitaQso"), IsEmpty());
  const auto left = core::EntityLoads(session.Db);
  ASSERT_THAT(left, testing::SizeIs(1));
  EXPECT_EQ(left[0].number, 2);
  EXPECT_EQ(left[0].replaces, 0);
  EXPECT_THAT(Rows("select Carico from EntitaRighe where Carico=1"), IsEmpty());
  EXPECT_EQ(session.ByDate.Of("IK0ABC", may).entity, 230);
}

TEST_F(VerificaEntitaTest, AFileThatIsNoTableIsRefusedAndNothingChanges) {
  Add("GB6WW", may, england);
  VerificaEntita& window = OpenChecked();
  Load(window, File("prova.dat", "Italy: 15: 28: EU: 1: 2: 3: I:\n  I,\n  =A(41);\n"));
  EXPECT_THAT(Lines(),
              testing::Contains(HasSubstr("prova.dat: riga 3: \\\"41\\\" non è una zona")));
  EXPECT_THAT(Shown(window), testing::SizeIs(1));
  EXPECT_FALSE(window.cmUsa.Enabled());
  EXPECT_THAT(core::EntityLoads(session.Db), IsEmpty());
}

TEST_F(VerificaEntitaTest, LinesThatWerePassedOverAreTold) {
  VerificaEntita& window = Open<VerificaEntita>("VerificaEntita");
  Load(window, File("prova.tbl", "=IK0ABC|x|EU|-1|0N|0E|28|15||R|=225\nrotta\n"));
  EXPECT_THAT(window.Avviso.Text(), HasSubstr("righe saltate 1 (riga 2: ha 1 colonne e non 11)"));
}

TEST_F(VerificaEntitaTest, AStoppedCheckLeavesTheList) {
  Add("GB6WW", may, england);
  VerificaEntita& window = OpenChecked();
  machine.StopProgressAt(0);
  Press(window, "cmVerifica");
  EXPECT_EQ(window.Avviso.Text(), "Verifica interrotta: l'elenco resta com'era");
  EXPECT_THAT(Shown(window), testing::SizeIs(1));
  machine.StopProgressAt(0);
  Load(window, File("prova.tbl", "=IK0ABC|x|EU|-1|0N|0E|28|15||R|=225\n"));
  EXPECT_EQ(window.Avviso.Text(), "Confronto interrotto: la tabella non è caricata");
  EXPECT_FALSE(window.cmUsa.Enabled());
}

TEST_F(VerificaEntitaTest, ACorrectedContactIsCheckedAgainAMomentLater) {
  Add("GB6WW", may, england);
  VerificaEntita& window = OpenChecked();
  session.Tables.TbLog->SetBookmark({1});
  session.Contacts.Change(kLog, *session.Tables.TbLog,
                          [&](engine::EditableRecordset& row) { row.Set(column::kCountry, "GM"); });
  machine.Advance(core::ContactsLater::kPause);
  EXPECT_EQ(window.Avviso.Text(), "Qso 1 verificato di nuovo: come la regola del giorno");
  EXPECT_THAT(Shown(window), IsEmpty());
  Add("GB6WW", may.Later(60), england);
  session.Windows.Show(window);  // whoever turns to it sees it as it is
  EXPECT_EQ(window.Avviso.Text(), "Qso 2 verificato di nuovo: non come la regola del giorno");
  EXPECT_THAT(Shown(window), testing::SizeIs(1));
  Event([&] {
    session.Tables.TbLog->SetBookmark({2});
    session.Contacts.Delete(kLog, *session.Tables.TbLog);
  });
  machine.Advance(core::ContactsLater::kPause);
  EXPECT_EQ(window.Avviso.Text(), "Qso 2 cancellato");
  EXPECT_THAT(Shown(window), IsEmpty());
}

TEST_F(VerificaEntitaTest, ALogInLocalTimeIsAskedAtItsUtc) {
  // Half past midnight of 29 May in Rome is the evening of the 28th.
  session.SaveSetting("Ora", "Zona", "Europe/Rome");
  core::StoreLogTime(session, core::LogTime::kLocal);
  Add("GB6WW", base::DateTime::Of(2024, 5, 29, 0, 30), england);
  Add("GB6WW", base::DateTime::Of(2024, 5, 29, 2, 30), england);
  VerificaEntita& window = OpenChecked();
  EXPECT_THAT(Shown(window), ElementsAre("1|G 14/27 EU|GM 14/27 EU"));
}

TEST_F(VerificaEntitaTest, WithoutTheDeliveredTableItSaysSo) {
  std::filesystem::remove(directory.Path() / "Entita.csv");
  Add("GB6WW", may, england);
  VerificaEntita& window = OpenChecked();
  EXPECT_THAT(Shown(window), IsEmpty());
  EXPECT_EQ(window.Tabelle.Text(), "Tabelle: nessuna; Entita.csv: non si apre");
}

TEST_F(VerificaEntitaTest, WhatWasTakenOverIsKeptWithItsRuleUntilTheCountryIsAnother) {
  Add("GB6WW", may, england);
  VerificaEntita& window = OpenChecked();
  Press(window, "cmPrendi");
  const std::string why = "GB6WW: Scozia dal 01/05 al 28/05/2024 (regola GB6WW di Entita.csv)";
  EXPECT_THAT(Rows("select QsoNr,Dxcc,Country,Motivo,Regola,Tabella from EntitaQso"),
              ElementsAre("1||GM|GB6WW: Scozia dal 01/05 al 28/05/2024|GB6WW|Entita.csv"));
  // Other rules hold by now: the contact has its country by the one that was taken over.
  Load(window, File("prova.tbl", "=GB6WW|x|EU|-1|0N|0E|27|14||R|=294\n"));
  Press(window, "cmUsa");
  EXPECT_EQ(core::WhyCountry(session, 1, "GB6WW", may, "GM"), why);
  EXPECT_EQ(core::WhyCountry(session, 1, "GB6WW", may, "G"),
            "La regola del giorno dice altro: " + why);
  Exec("update EntitaQso set Scelta=True");
  EXPECT_EQ(core::WhyCountry(session, 1, "GB6WW", may, "G"), "Country tenuto com'è dall'operatore");
}

TEST_F(VerificaEntitaTest, RulesThatChangeElsewhereAreToldAndTheTablesNamed) {
  Add("GB6WW", may, england);
  VerificaEntita& window = OpenChecked();
  const entities::Table table = TableOfCall("altra.csv", "IK0ABC", 225);
  Event([&] { session.ByDate.Apply(table); });
  EXPECT_EQ(window.Tabelle.Text(), "Tabelle: Entita.csv, altra.csv");
  EXPECT_EQ(window.Avviso.Text(), "Le regole sono cambiate: F5 verifica di nuovo il log");
}

TEST_F(VerificaEntitaTest, AFileOf200MegabytesIsRefusedInWordsAndNothingChanges) {
  Add("GB6WW", may, england);
  VerificaEntita& window = OpenChecked();
  const auto file = File("grande.tbl", "=IK0ABC|x|EU|-1|0N|0E|28|15||R|=225\n");
  std::filesystem::resize_file(file, 200 * 1024 * 1024);
  Load(window, file);
  EXPECT_THAT(Lines(), testing::Contains(HasSubstr("grande.tbl: è più grande di 64 MB")));
  EXPECT_THAT(Shown(window), testing::SizeIs(1));
  EXPECT_FALSE(window.cmUsa.Enabled());
  EXPECT_THAT(core::EntityLoads(session.Db), IsEmpty());
}

}  // namespace
}  // namespace brenvo::checks
