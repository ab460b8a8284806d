#include "checks/verifica_log.h"

#include <fmt/format.h>
#include <gmock/gmock.h>

#include "log/log_form.h"
#include "tests/support/station.h"

namespace brenvo::checks {
namespace {

using enum core::ContactTable;
using testing::ElementsAre;
using testing::IsEmpty;
namespace column = core::column;

class VerificaLogTest : public StationTest {
 protected:
  VerificaLogTest() {
    Know<VerificaLog>("VerificaLog");
    Know<log::LogForm>("LogForm");
  }
  void Add(const std::string& call, int minute, const std::string& country = "") {
    session.Contacts.Add(kLog, *session.Tables.TbLog, [&](engine::EditableRecordset& row) {
      row.Set(column::kDataQso, base::DateTime::Of(2001, 1, 1, 10, minute));
      row.Set(column::kCall, call);
      row.Set(column::kBanda, "  2 m");
      row.Set(column::kCountry, country);
    });
  }
  void Set(std::int64_t qsoNr, std::string_view name, const std::string& value) {
    session.Tables.TbLog->SetBookmark({qsoNr});
    session.Contacts.Change(kLog, *session.Tables.TbLog,
                            [&](engine::EditableRecordset& row) { row.Set(name, value); });
    machine.Advance(core::ContactsLater::kPause);
  }
  VerificaLog& OpenChecked() {
    VerificaLog& window = Open<VerificaLog>("VerificaLog");
    Press(window, "cmVerifica");
    return window;
  }
  static std::vector<std::string> Shown(VerificaLog& window) {
    std::vector<std::string> rows;
    for (std::int64_t row = 1; row < window.Tabella.Rows(); ++row) {
      rows.push_back(window.Tabella.Cell(row, 0) + "|" + window.Tabella.Cell(row, 4));
    }
    return rows;
  }
  static void Choose(VerificaLog& window, std::int64_t row) { window.Tabella.SetCurrent(row, 0); }
};

TEST_F(VerificaLogTest, ChecksNothingBeforeTheOperatorWantsIt) {
  Add("DL1ABC", 0, "I");
  VerificaLog& window = Open<VerificaLog>("VerificaLog");
  EXPECT_EQ(window.Avviso.Text(), "F5 verifica il log");
  Set(1, column::kQra, "Hans");
  EXPECT_EQ(window.Avviso.Text(), "F5 verifica il log");
  EXPECT_THAT(Shown(window), IsEmpty());
  Press(window, "cmVerifica");
  EXPECT_EQ(window.Avviso.Text(), "1 Qso verificati: un motivo");
  EXPECT_THAT(Shown(window), ElementsAre("1|Country"));
  EXPECT_EQ(window.Spiegazione.Text(),
            "Country: DL1ABC è un nominativo di DL Germania, non di I Italia");
}

TEST_F(VerificaLogTest, LeavesTheListAsItWasWhenTheOperatorStopsTheCheck) {
  Add("DL1ABC", 0, "I");
  VerificaLog& window = OpenChecked();
  machine.StopProgressAt(0);
  Press(window, "cmVerifica");
  EXPECT_EQ(window.Avviso.Text(), "Verifica interrotta: l'elenco resta com'era");
  EXPECT_THAT(Shown(window), ElementsAre("1|Country"));
}

TEST_F(VerificaLogTest, ChecksACorrectedContactAgainWithAllOfItsCall) {
  Add("IK3ABC", 0);
  Add("IK3ABC", 5);
  Add("DL1ABC", 0, "I");
  VerificaLog& window = OpenChecked();
  EXPECT_THAT(Shown(window), ElementsAre("2|Ripetuto", "3|Country"));
  // The finding is the second contact's, the correction the first one's.
  Set(1, column::kCall, "IK3ABD");
  EXPECT_EQ(window.Avviso.Text(), "Qso 1 verificato di nuovo: nessun motivo");
  EXPECT_THAT(Shown(window), ElementsAre("3|Country"));
  Set(2, column::kCall, "IK3ABD");
  EXPECT_EQ(window.Avviso.Text(), "Qso 2 verificato di nuovo: un motivo");
  EXPECT_THAT(Shown(window), ElementsAre("3|Country", "2|Ripetuto"));
  Event([&] {
    session.Tables.TbLog->SetBookmark({3});
    session.Contacts.Delete(kLog, *session.Tables.TbLog);
  });
  machine.Advance(core::ContactsLater::kPause);
  EXPECT_EQ(window.Avviso.Text(), "Qso 3 cancellato: l'elenco è senza i suoi motivi");
  EXPECT_THAT(Shown(window), ElementsAre("2|Ripetuto"));
}

TEST_F(VerificaLogTest, WhoStoresDoesNotWaitForTheCheck) {
  Add("DL1ABC", 0, "I");
  VerificaLog& window = OpenChecked();
  session.Tables.TbLog->SetBookmark({1});
  session.Contacts.Change(kLog, *session.Tables.TbLog, [&](engine::EditableRecordset& row) {
    row.Set(column::kCall, "IK3ABC");
  });
  EXPECT_THAT(Shown(window), ElementsAre("1|Country"));
  session.Windows.Show(window);  // whoever turns to it sees it as it is
  EXPECT_THAT(Shown(window), IsEmpty());
}

TEST_F(VerificaLogTest, ASimilarCallGoesFromTheListOnceItIsCorrected) {
  for (int i = 0; i < 5; ++i) Add("IK3ABC", 11 * i);
  Add("IK3ABD", 55);
  for (int i = 1; i <= 6; ++i) Set(i, column::kLocator, "JN65AA");
  VerificaLog& window = OpenChecked();
  EXPECT_THAT(Shown(window), ElementsAre("6|Call simile"));
  Set(6, column::kQra, "Mario");
  EXPECT_THAT(Shown(window), ElementsAre("6|Call simile"));
  Set(6, column::kCall, "IK3XYZ");
  EXPECT_THAT(Shown(window), IsEmpty());
}

TEST_F(VerificaLogTest, CallsTheListOutOfDateAfterManyChanges) {
  Add("DL1ABC", 0, "I");
  VerificaLog& window = OpenChecked();
  session.Contacts.ChangeMany("Assegna Prefissi", {kLog}, [] { return true; });
  EXPECT_EQ(window.Avviso.Text(), "Il log è cambiato: F5 lo verifica di nuovo");
  EXPECT_THAT(Shown(window), ElementsAre("1|Country"));
}

TEST_F(VerificaLogTest, RemembersWhatMayStandUntilItsReasonChanges) {
  Add("DL1ABC", 0, "I");
  Add("DL2ABC", 0, "I");
  VerificaLog& window = OpenChecked();
  Choose(window, 1);
  Press(window, "cmVaBene");
  EXPECT_EQ(window.Avviso.Text(), "Va bene così: un motivo");
  EXPECT_THAT(Shown(window), ElementsAre("2|Country"));
  Press(window, "cmVerifica");
  EXPECT_EQ(window.Avviso.Text(), "2 Qso verificati: 2 motivi, 1 va bene così");
  EXPECT_THAT(Shown(window), ElementsAre("2|Country"));
  Set(1, column::kCountry, "OE");
  EXPECT_THAT(Shown(window), ElementsAre("2|Country", "1|Country"));
}

TEST_F(VerificaLogTest, ShowsWhatMayStandAndTakesItBackAmongTheOthers) {
  Add("DL1ABC", 0, "I");
  VerificaLog& window = OpenChecked();
  EXPECT_FALSE(window.cmRivedi.Enabled());
  Press(window, "cmVaBene");
  EXPECT_THAT(Shown(window), IsEmpty());
  EXPECT_FALSE(window.cmVaBene.Enabled());
  Event([&] { window.AncheVerificati.Press(); });
  EXPECT_THAT(Shown(window), ElementsAre("1|Country"));
  EXPECT_EQ(window.Tabella.Cell(1, 6), "sì");
  EXPECT_FALSE(window.cmVaBene.Enabled());
  Press(window, "cmRivedi");
  EXPECT_EQ(window.Avviso.Text(), "Da rivedere: un motivo");
  EXPECT_EQ(window.Tabella.Cell(1, 6), "");
  EXPECT_THAT(Rows("select QsoNr from Verificati"), IsEmpty());
}

TEST_F(VerificaLogTest, LetsAllMarkedRowsStandTogetherAndMarksNoneAfterwards) {
  for (const char* call : {"DL1ABC", "DL2ABC", "DL3ABC"}) Add(call, 0, "I");
  VerificaLog& window = OpenChecked();
  window.Tabella.Arranger()->Mark(1, 2, true);
  Press(window, "cmVaBene");
  EXPECT_EQ(window.Avviso.Text(), "Va bene così: 2 motivi");
  EXPECT_THAT(Shown(window), ElementsAre("3|Country"));
  EXPECT_EQ(window.Conteggi.Text(), "1");
  EXPECT_THAT(Rows("select QsoNr from Verificati"), ElementsAre("1", "2"));
}

TEST_F(VerificaLogTest, OpensTheLogForAContactOfTheList) {
  Add("DL1ABC", 0, "I");
  Add("DL2ABC", 0);
  VerificaLog& window = OpenChecked();
  Press(window, "cmApri");
  ASSERT_TRUE(session.Opened.LogOpen);
  EXPECT_EQ(static_cast<log::LogForm&>(*session.Opened.CurrentLogForm).CallQso.Text(), "DL1ABC");
}

TEST_F(VerificaLogTest, SaysThatLocatorsAreNotComparedWithoutTheFileOfExtents) {
  std::filesystem::remove(session.File(kExtentsFile));
  EXPECT_EQ(OpenChecked().Avviso.Text(),
            "0 Qso verificati: nessun motivo; senza Estensioni.csv i locator non sono confrontati "
            "con i country");
}

}  // namespace
}  // namespace brenvo::checks
