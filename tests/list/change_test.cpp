#include "list/change_column.h"

#include "base/text.h"
#include "history/take_back.h"
#include "list/cambia_colonna.h"
#include "tests/list/list_station.h"

namespace brenvo::list {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
namespace column = core::column;

class ChangeTest : public ListStation {
 protected:
  ChangeTest() { Know<CambiaColonna>("CambiaColonna"); }
  static std::string FaultOf(std::string_view name, std::string_view text) {
    return ParseValue(core::LogColumnOf(name), text).fault;
  }
  static std::string ShownOf(std::string_view name, std::string_view text) {
    return ParseValue(core::LogColumnOf(name), text).shown;
  }
};

TEST_F(ChangeTest, AValueThatAColumnCannotHoldIsTold) {
  EXPECT_EQ(FaultOf(column::kPotenza, "100"), "");
  EXPECT_EQ(FaultOf(column::kPotenza, ""), "");
  EXPECT_EQ(FaultOf(column::kPotenza, "cento"), "Scrivere un numero intero");
  EXPECT_EQ(FaultOf(column::kPotenza, "2.5"), "Scrivere un numero intero");
  EXPECT_EQ(FaultOf(column::kQrb, "1e30"), "La colonna non può contenere questo valore");
  EXPECT_EQ(FaultOf(column::kFrequenza, "x"), "Scrivere un numero");
  EXPECT_EQ(ShownOf(column::kFrequenza, "144,3"), "144.3");
  EXPECT_EQ(FaultOf(column::kDataQso, "ieri"), "Scrivere data e ora: 03/02/2001 10:15");
  EXPECT_EQ(FaultOf(column::kDataQso, ""), "Scrivere data e ora: 03/02/2001 10:15");
  EXPECT_EQ(ShownOf(column::kDataQso, "3/2/2001 10:15"), "03/02/2001 10:15");
  EXPECT_EQ(FaultOf(column::kQslInviata, "forse"), "Scrivere sì o no");
  EXPECT_EQ(ShownOf(column::kQslInviata, "SI"), "Sì");
  EXPECT_EQ(FaultOf(column::kCall, "  "), "Un contatto ha sempre un nominativo");
  EXPECT_EQ(ShownOf(column::kCall, " dl1abc"), "DL1ABC");
  EXPECT_EQ(ShownOf(column::kNote, "l'altra; \"x\""), "l'altra; \"x\"");
}

TEST_F(ChangeTest, TheMarkedContactsAreChangedAsOneWorkThatIsTakenBackWhole) {
  Add("IK3AAA", 1, "  2 m", [](auto& row) { row.Set("Modo", "CW"); });
  Add("IK3BBB", 2, "  2 m", [](auto& row) { row.Set("Modo", "SSB"); });
  Add("IK3CCC", 3);
  Add("IK3DDD", 4);
  Elenco& list = Open<Elenco>("Elenco");
  Mark(list.Tabella, 2, 4);  // CCC, BBB, AAA
  InDialogs([&](forms::Window& dialog) {
    auto& change = static_cast<CambiaColonna&>(dialog);
    EXPECT_EQ(change.Colonna.Text(), "Note");
    Event([&] { change.Colonna.SetText("Modo"); });
    Type(change.Valore, "ssb");
    EXPECT_EQ(change.Quanti.Text(), "Cambiano 2 Qso di 3");
    EXPECT_THAT(Column(change.Tabella, "Call"), ElementsAre("IK3CCC", "IK3AAA"));
    EXPECT_THAT(Column(change.Tabella, "Prima"), ElementsAre("", "CW"));
    // As the table of modes has it.
    EXPECT_EQ(base::Trim(Column(change.Tabella, "Dopo")[0]), "SSB");
    Press(change, "cmCambia");
  });
  Press(list, "cmCambia");
  EXPECT_EQ(list.Avviso.Text(), "Modo: SSB in 2 Qso");
  EXPECT_THAT(Rows("select Call from Log where Modo='SSB' order by QsoNr"),
              ElementsAre("IK3AAA", "IK3BBB", "IK3CCC"));
  EXPECT_EQ(list.Conteggi.Text(), "4, segnati 3");
  EXPECT_THAT(Rows("select Titolo,Qso from Storia order by Lavoro desc")[0], "Modo: SSB|2");
  Event([&] { history::TakeBack(session, *history::LastWork(session)); });
  EXPECT_THAT(Rows("select Call from Log where Modo='SSB'"), ElementsAre("IK3BBB"));
  EXPECT_THAT(Column(list.Tabella, "Modo"), ElementsAre("", "", "SSB", "CW"));
}

TEST_F(ChangeTest, AnUnderstoodValueAloneCanBeChangedTo) {
  Add("IK3AAA", 1);
  Elenco& list = Open<Elenco>("Elenco");
  InDialogs([&](forms::Window& dialog) {
    auto& change = static_cast<CambiaColonna&>(dialog);
    EXPECT_FALSE(change.cmCambia.Enabled());  // it is empty already
    Event([&] { change.Colonna.SetText("Potenza"); });
    Type(change.Valore, "x");
    EXPECT_EQ(change.Avviso.Text(), "Scrivere un numero intero");
    EXPECT_FALSE(change.cmCambia.Enabled());
    Type(change.Valore, "50");
    EXPECT_EQ(change.Avviso.Text(), "");
    EXPECT_TRUE(change.cmCambia.Enabled());
    Press(change, "cmExit");
  });
  Press(list, "cmCambia");
  EXPECT_EQ(list.Avviso.Text(), "");
  EXPECT_THAT(Rows("select Potenza from Log"), ElementsAre(""));
}

TEST_F(ChangeTest, AChangeThatWouldMakeTwoContactsOneChangesNothing) {
  Add("IK3AAA", 1);
  Add("IK3BBB", 1);
  Elenco& list = Open<Elenco>("Elenco");
  Mark(list.Tabella, 1, 2);
  InDialogs([&](forms::Window& dialog) {
    auto& change = static_cast<CambiaColonna&>(dialog);
    Event([&] { change.Colonna.SetText("Call"); });
    Type(change.Valore, "IK3ZZZ");
    Press(change, "cmCambia");
    EXPECT_EQ(change.Avviso.Text(),
              "Due contatti avrebbero la stessa data, call e banda: nulla è cambiato");
    Press(change, "cmExit");
  });
  Press(list, "cmCambia");
  EXPECT_THAT(Column(list.Tabella), ElementsAre("IK3BBB", "IK3AAA"));
  EXPECT_THAT(Rows("select Titolo from Storia where Titolo like 'Call*'"), IsEmpty());
}

TEST_F(ChangeTest, AQslFlagIsOneKeyForAllMarkedAndTheSameKeyTakesItAway) {
  Add("IK3AAA", 1, "  2 m", [](auto& row) { row.Set("QslInviata", true); });
  Add("IK3BBB", 2);
  Add("IK3CCC", 3);
  Elenco& list = Open<Elenco>("Elenco");
  Mark(list.Tabella, 2, 3);
  Press(list, "cmInviata");
  EXPECT_EQ(list.Avviso.Text(), "QslInviata: Sì in 1 Qso");
  EXPECT_THAT(Column(list.Tabella, "QslInviata"), ElementsAre("No", "Sì", "Sì"));
  Press(list, "cmInviata");
  EXPECT_EQ(list.Avviso.Text(), "QslInviata: No in 2 Qso");
  EXPECT_THAT(Column(list.Tabella, "QslInviata"), ElementsAre("No", "No", "No"));
  Press(list, "cmDaInviare");
  Press(list, "cmRicevuta");
  EXPECT_THAT(Rows("select Call from Log where QslDaInviare and QslRicevuta order by Call"),
              ElementsAre("IK3AAA", "IK3BBB"));
}

TEST_F(ChangeTest, ManyContactsAreChangedByAFewStatements) {
  FillLog(12);
  std::vector<std::int64_t> keys;
  for (const std::string& key : Rows("select QsoNr from Log")) keys.push_back(std::stoll(key));
  ASSERT_EQ(keys.size(), 4096u);
  const auto before = session.Db.Counters().statements;
  EXPECT_EQ(ChangeColumn(session, "Prova", keys, core::LogColumnOf(column::kNote), "x"),
            Changed::kAll);
  EXPECT_LT(session.Db.Counters().statements - before, 40);
  EXPECT_THAT(Rows("select count(*) from Log where Note='x'"), ElementsAre("4096"));
  Lines();
}

TEST_F(ChangeTest, AChangeThatTheOperatorStopsChangesNothing) {
  FillLog(12);
  std::vector<std::int64_t> keys;
  for (const std::string& key : Rows("select QsoNr from Log")) keys.push_back(std::stoll(key));
  machine.StopProgressAt(0);
  EXPECT_EQ(ChangeColumn(session, "Prova", keys, core::LogColumnOf(column::kNote), "x"),
            Changed::kStopped);
  EXPECT_THAT(Lines(), testing::Contains("message exclamation \"Prova\" \"Interrotto: il log è "
                                         "rimasto com'era.\""));
  EXPECT_THAT(Rows("select count(*) from Log where Note='x'"), ElementsAre("0"));
  EXPECT_THAT(Rows("select Titolo from Storia where Titolo='Prova'"), IsEmpty());
}

TEST_F(ChangeTest, ThePreviewOfManyIsCountedInMemoryAndShowsTheFirst) {
  FillLog(11);
  Elenco& list = Open<Elenco>("Elenco");
  Wait();
  Press(list, "cmSegnaTutti");
  EXPECT_EQ(list.Conteggi.Text(), "2,048, segnati 2048");
  InDialogs([&](forms::Window& dialog) {
    auto& change = static_cast<CambiaColonna&>(dialog);
    Type(change.Valore, "x");
    EXPECT_EQ(change.Quanti.Text(), "Cambiano 2048 Qso di 2048");
    EXPECT_EQ(change.Tabella.Rows(), 201);
    Press(change, "cmCambia");
  });
  Press(list, "cmCambia");
  Wait();
  EXPECT_THAT(Column(list.Tabella, "Note")[2047], "x");
  EXPECT_EQ(list.Conteggi.Text(), "2,048, segnati 2048");
  Lines();
}

}  // namespace
}  // namespace brenvo::list
