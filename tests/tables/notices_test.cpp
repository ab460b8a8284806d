// What each table says of what it has stored; what it refuses it says as ever.
#include "tables/tabella_country.h"
#include "tables/tabella_note.h"
#include "tables/tabella_prefissi.h"
#include "tables/tabella_provincie.h"
#include "tables/user_form.h"
#include "tests/tables/tables_station.h"

namespace brenvo::tables {
namespace {

class NoticesTest : public TablesStation {
 protected:
  NoticesTest() {
    Know<TabellaCountry>("TabellaCountry");
    Know<TabellaNote>("TabellaNote");
    Know<TabellaPrefissi>("TabellaPrefissi");
    Know<TabellaProvincie>("TabellaProvincie");
    Know<UserForm>("User");
  }
};

TEST_F(NoticesTest, TheCountryTableSaysWhatItHasStoredAndWhatItHasDeleted) {
  auto& table = Open<TabellaCountry>("TabellaCountry");
  Press(table, "cmInsert");  // refused without a word
  EXPECT_EQ(table.Avviso.Text(), "");
  Type(table.Codice, "QX");
  Type(table.Descrizione, "Quota");
  Press(table, "cmInsert");
  EXPECT_EQ(table.Avviso.Text(), "Country inserito: QX  Quota");
  Type(table.Descrizione, "Altra");
  Press(table, "cmUpdate");
  EXPECT_EQ(table.Avviso.Text(), "Country aggiornato: QX  Altra");
  Press(table, "cmInsert");  // there already
  EXPECT_EQ(table.Avviso.Text(), "Country aggiornato: QX  Altra");
  Press(table, "cmDelete");
  EXPECT_EQ(table.Avviso.Text(), "Country cancellato: QX    Altra");
  Lines();
}

TEST_F(NoticesTest, TheProvinceTableDoes) {
  auto& table = Open<TabellaProvincie>("TabellaProvincie");
  Click(table.LBCountry, "I     Italia");
  Type(table.Codice, "Q1");
  Type(table.Descrizione, "Quota");
  Press(table, "cmInsert");
  EXPECT_EQ(table.Avviso.Text(), "Provincia inserita: Q1  Quota");
  Type(table.Descrizione, "Altra");
  Press(table, "cmUpdate");
  EXPECT_EQ(table.Avviso.Text(), "Provincia aggiornata: Q1  Altra");
  Press(table, "cmDelete");
  EXPECT_EQ(table.Avviso.Text(), "Provincia cancellata: Q1  Altra");
}

TEST_F(NoticesTest, ThePrefixTableDoes) {
  auto& table = Open<TabellaPrefissi>("TabellaPrefissi");
  Type(table.Codice, "Q1");
  table.Country.SetListIndex(0);
  Type(table.ZonaCQ, "15");
  Type(table.ZonaITU, "28");
  Type(table.Continente, "EU");
  Press(table, "cmInsert");
  EXPECT_EQ(table.Avviso.Text(), "Prefisso inserito: Q1");
  Press(table, "cmInsert");  // there already
  EXPECT_EQ(table.Avviso.Text(), "Prefisso inserito: Q1");
  Press(table, "cmSearch");
  machine.Messages().QueueAnswer(true);
  Press(table, "cmDelete");
  EXPECT_EQ(table.Avviso.Text(), "Prefisso cancellato: Q1");
  Lines();
}

TEST_F(NoticesTest, TheNoteTableDoes) {
  auto& table = Open<TabellaNote>("TabellaNote");
  Type(table.Codice, "QX");
  Type(table.Nota, "prova");
  Press(table, "cmInsert");
  EXPECT_EQ(table.Avviso.Text(), "Nota inserita: QX  prova");
  Press(table, "cmDelete");
  EXPECT_EQ(table.Avviso.Text().substr(0, 16), "Nota cancellata:");
}

TEST_F(NoticesTest, TheProfileDoes) {
  auto& user = Open<UserForm>("User");
  const std::string call = user.CallQso.Text();
  user.CallQso.SetText("");
  Press(user, "cmUpdate");
  EXPECT_EQ(user.Avviso.Text(), "");
  user.CallQso.SetText(call.empty() ? "IK3ABC" : call);
  for (forms::TextField* field : {&user.Qra, &user.Qth, &user.Indirizzo, &user.Provincia}) {
    field->SetText("X");
  }
  Event([&] { user.TNCBaud.Pick(1); });
  Event([&] { user.TNCPort.Pick(1); });
  Press(user, "cmUpdate");
  EXPECT_EQ(user.Avviso.Text(), "Profilo salvato: " + user.CallQso.Text() + "  JN65AA");
  Lines();
}

}  // namespace
}  // namespace brenvo::tables
