#include <gmock/gmock.h>

#include "adif/esporta_adif.h"
#include "adif/importa_adif.h"
#include "core/help_topics.h"
#include "core/log_time.h"
#include "tests/adif/adif_station.h"
#include "tests/support/adif_samples.h"

namespace brenvo::adif {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class AdifWindowsTest : public AdifStation {
 protected:
  AdifWindowsTest() {
    Know<ImportaAdif>("ImportaAdif");
    Know<EsportaAdif>("EsportaAdif");
    core::StoreLogTime(session, core::LogTime::kUtc);
  }
  // The menu's command on a file, with what the operator does in the window.
  void Import(const std::filesystem::path& file, const std::function<void(ImportaAdif&)>& inside) {
    machine.Picks().Queue(file);
    InDialogs([&](forms::Window& window) {
      auto& import = static_cast<ImportaAdif&>(window);
      Event([&] { inside(import); });
      if (import.Visible()) import.Close();
    });
    Event([&] { ImportaFileAdif(session); });
  }
};

TEST_F(AdifWindowsTest, ThePreviewTellsWhatWouldBecomeOfTheFile) {
  Import(Sample("logger32.adi"), [&](ImportaAdif& window) {
    EXPECT_EQ(window.Letti.Text(), "6");
    EXPECT_EQ(window.Nuovi.Text(), "2");
    EXPECT_EQ(window.Ripetuti.Text(), "0");
    EXPECT_EQ(window.Rifiutati.Text(), "4");
    EXPECT_EQ(window.Periodo.Text(), "dal 12/03/1999 al 31/12/1999");
    EXPECT_EQ(window.Bande.Text(), "80 m: 2");
    EXPECT_EQ(window.Modi.Text(), "LSB: 2");
    EXPECT_EQ(window.Motivi.Text(),
              "data non valida: 1, manca il nominativo (CALL): 1, manca la data (QSO_DATE): 1, "
              "ora non valida: 1");
    EXPECT_EQ(window.Avvisi.Text(), "");
    EXPECT_EQ(window.Anteprima.Rows(), 7);
    EXPECT_EQ(window.Anteprima.Cell(1, 0), "nuovo");
    EXPECT_EQ(window.Anteprima.Cell(2, 0), "riga 2: data non valida: 19991332");
    window.cmHelp.Press();
    EXPECT_EQ(machine.OpenedTopic(), core::kHelpImportaAdif);
  });
  EXPECT_THAT(Rows("Select Call from Log"), IsEmpty());
}

TEST_F(AdifWindowsTest, EnterImportsAndEscLeaves) {
  Import(Sample("logger32.adi"), [&](ImportaAdif& window) {
    EXPECT_EQ(window.DefaultCommand, &window.cmImporta);
    EXPECT_EQ(window.CancelCommand, &window.cmExit);
  });
}

TEST_F(AdifWindowsTest, RepairedFieldsAreListedWithWhatWasToldAndWhatWasRead) {
  const auto file = Write("a.adi",
                          "<EOH>\n<CALL:5>I3AAA<QSO_DATE:8>20010203<TIME_ON:4>1015<BAND:2>2m"
                          "<PROP_MODE:2>SAT<EOR>\n<CALL:5>I3BBB<QSO_DATE:8>20010203<EOR>\n");
  Import(file, [&](ImportaAdif& window) {
    EXPECT_EQ(window.Nuovi.Text(), "2");
    EXPECT_EQ(window.Avvisi.Text(), "");
    EXPECT_EQ(window.Riparati.Text(), "1");
    EXPECT_EQ(window.Anteprima.Cell(1, 0), "nuovo, riparato");
    EXPECT_EQ(window.Anteprima.Cell(2, 0), "nuovo");
    Texts rows;
    for (std::int64_t row = 0; row < window.Riparazioni.Rows(); ++row) {
      std::string cells;
      for (int i = 0; i < window.Riparazioni.Columns(); ++i) {
        cells += window.Riparazioni.Cell(row, i) + "|";
      }
      rows.push_back(cells);
    }
    EXPECT_THAT(rows, ElementsAre("Riga|Call|Campo|Lungh. detta|Letta|Testo letto|",
                                  "2|I3AAA|PROP_MODE|2|3|SAT|"));
    window.cmImporta.Press();
  });
  EXPECT_THAT(Lines(), Contains(HasSubstr("Rifiutati: 0\\nCampi riparati: 1\\nIl rapporto")));
  EXPECT_THAT(
      ReadBytes(directory.Path() / "ImportaAdif.txt"),
      HasSubstr("Riparato, riga 2, I3AAA: campo PROP_MODE, lunghezza detta 2, letta 3: SAT"));
}

TEST_F(AdifWindowsTest, TheChoiceOfConfirmationsShowsAtOnceAndIsRemembered) {
  const auto file = Write("a.adi", Tagged("CALL", "I1A") + Tagged("QSO_DATE", "20010203") +
                                       Tagged("LOTW_QSL_RCVD", "Y") + "<EOR>");
  constexpr int kQslRicevuta = 21;
  Import(file, [&](ImportaAdif& window) {
    EXPECT_EQ(window.Anteprima.Cell(0, kQslRicevuta), "QslRicevuta");
    EXPECT_EQ(window.Anteprima.Cell(1, kQslRicevuta), "No");
    window.QslLotw.Press();
    EXPECT_EQ(window.Anteprima.Cell(1, kQslRicevuta), "Sì");
    window.cmImporta.Press();
  });
  EXPECT_THAT(Rows("Select QslRicevuta from Log"), ElementsAre("-1"));
  Import(file, [&](ImportaAdif& window) { EXPECT_TRUE(window.QslLotw.IsOn()); });
}

TEST_F(AdifWindowsTest, ADamagedFileIsImportedOnlyWhenTheOperatorSaysSo) {
  machine.Messages().QueueAnswer(false);
  Import(Sample("damaged.adi"), [&](ImportaAdif& window) {
    EXPECT_EQ(window.Avvisi.Text(), "Il file finisce a metà di un record. Record danneggiati: 1.");
    window.cmImporta.Press();
    EXPECT_TRUE(window.Visible());
  });
  EXPECT_THAT(Rows("Select Call from Log"), IsEmpty());
  machine.Messages().QueueAnswer(true);
  Import(Sample("damaged.adi"), [](ImportaAdif& window) { window.cmImporta.Press(); });
  EXPECT_EQ(Rows("Select Call from Log").size(), 5u);
  EXPECT_THAT(Lines(),
              Contains("question \"Importa ADIF\" \"Il file finisce a metà di un record. Record "
                       "danneggiati: 1. Importare lo stesso gli altri record (5) ?\" yes"));
}

TEST_F(AdifWindowsTest, TheChoiceOfLettersIsRememberedAndTheChangesAreCounted) {
  session.Db.Execute(
      "insert into Log (DataQso,Call,Qra) values ('01/01/2001 10:00:00','IK3ABC','Łukasz')");
  const auto export_ = [&](int letters) {
    EsportaAdif& window = Open<EsportaAdif>("EsportaAdif");
    const int before = window.Lettere.Index();
    Event([&] { window.Lettere.Press(letters); });
    machine.Picks().Queue(directory.Path() / "out.adi");
    Press(window, "cmEsporta");
    return before;
  };
  EXPECT_EQ(export_(0), 0);
  EXPECT_THAT(Lines(), Contains(testing::EndsWith("Contatti esportati nel file out.adi: 1\"")));
  EXPECT_THAT(ReadBytes(directory.Path() / "out.adi"), HasSubstr("<NAME:7>Łukasz "));
  EXPECT_EQ(export_(1), 0);
  EXPECT_THAT(Lines(), Contains(HasSubstr("out.adi: 1\\nLettere cambiate per l'ASCII: 1, in 1 "
                                          "contatti")));
  EXPECT_THAT(ReadBytes(directory.Path() / "out.adi"), HasSubstr("<NAME:6>Lukasz "));
  EXPECT_EQ(export_(0), 1);
}

TEST_F(AdifWindowsTest, AStoppedImportSaysSoAndLeavesTheWindow) {
  std::string text;
  for (int i = 0; i < 600; ++i) text += GeneratedRecord(i);
  Import(Write("a.adi", text), [&](ImportaAdif& window) {
    machine.StopProgressAt(1);
    window.cmImporta.Press();
    EXPECT_TRUE(window.Visible());
    machine.StopProgressAt(-1);
  });
  EXPECT_THAT(Rows("Select Call from Log"), IsEmpty());
  EXPECT_THAT(Lines(), Contains(HasSubstr("Importazione interrotta: nessun record è stato "
                                          "importato.")));
  EXPECT_THAT(ReadBytes(directory.Path() / "ImportaAdif.txt"), HasSubstr("interrotta"));
}

TEST_F(AdifWindowsTest, APreviewThatIsStoppedShowsNothing) {
  std::string text;
  for (int i = 0; i < 600; ++i) text += GeneratedRecord(i);
  machine.StopProgressAt(1);
  machine.Picks().Queue(Write("a.adi", text));
  Event([&] { ImportaFileAdif(session); });
  EXPECT_EQ(session.Windows.Find("ImportaAdif"), nullptr);
}

}  // namespace
}  // namespace brenvo::adif
