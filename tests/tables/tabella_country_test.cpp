#include "tables/tabella_country.h"

#include "tests/tables/tables_station.h"

namespace brenvo::tables {
namespace {

class TabellaCountryTest : public TablesStation {
 protected:
  TabellaCountryTest() {
    Know<TabellaCountry>("TabellaCountry");
    for (const char* name : {"italia.jpg", "i.bmp"}) WriteFile(name);
  }
  TabellaCountry& OpenTable() { return Open<TabellaCountry>("TabellaCountry"); }
  Texts Country(std::string_view code) {
    return Rows(
        "select Country,Descrizione,Mappa,Flag,Pointer_X,Pointer_Y,Locator,[From],Deleted from "
        "Country where Country='" +
        std::string(code) + "'");
  }
};

TEST_F(TabellaCountryTest, TheListShowsCodesInSixCharacters) {
  TabellaCountry& table = OpenTable();
  EXPECT_EQ(table.Caption(), "Tabella Country");
  EXPECT_GE(Place(table.LBCountry, "I     Italia"), 0);
  EXPECT_THAT(table.File1.Items(), testing::IsSupersetOf({"Brenvo.mdb", "i.bmp", "italia.jpg"}));
}

TEST_F(TabellaCountryTest, AnEntryClickedShowsItsCountry) {
  Exec(
      "update Country set Mappa='italia.jpg',Flag='i.bmp',Pointer_X=10,Pointer_Y=20,"
      "[From]='17/03/1861' where Country='I'");
  TabellaCountry& table = OpenTable();
  Click(table.LBCountry, "I     Italia");
  EXPECT_EQ((Texts{table.Codice.Text(), table.Descrizione.Text(), table.Mappa.Text(),
                   table.Flag.Text(), table.X.Text(), table.Y.Text(), table.Locator.Text(),
                   table.Validita.Text(), table.Deleted.Text()}),
            (Texts{"I", "Italia", "italia.jpg", "i.bmp", "10", "20", "JN62GT", "17/03/1861",
                   "01/01/9999"}));
}

TEST_F(TabellaCountryTest, NoDateShowsAs9999AndIsSavedAsEmptyText) {
  TabellaCountry& table = OpenTable();
  Click(table.LBCountry, "I     Italia");
  EXPECT_EQ(table.Validita.Text(), "01/01/9999");
  EXPECT_EQ(table.Deleted.Text(), "01/01/9999");
  Press(table, "cmUpdate");
  EXPECT_EQ(Rows("select Country from Country where Country='I' and [From]='' and Deleted=''"),
            Texts{"I"});
}

TEST_F(TabellaCountryTest, DatesAreSavedAsTheyAreShown) {
  TabellaCountry& table = OpenTable();
  Click(table.LBCountry, "I     Italia");
  table.Validita.SetText("01/01/2000");
  table.Deleted.SetText("31/12/2001");
  Press(table, "cmUpdate");
  EXPECT_EQ(Rows("select [From],Deleted from Country where Country='I'"),
            Texts{"01/01/2000|31/12/2001"});
}

TEST_F(TabellaCountryTest, AnInsertStoresAndSelectsTheNewCountry) {
  TabellaCountry& table = OpenTable();
  Type(table.Codice, "q9x");
  Type(table.Descrizione, "Terra di nessuno");
  Type(table.X, "1a2");
  Type(table.Y, "34");
  Type(table.Locator, "jn61fv");
  Event([&] { table.Mappa.Drop("italia.jpg"); });
  Press(table, "cmInsert");
  EXPECT_TRUE(Lines().empty());
  EXPECT_EQ(Country("Q9X"), Texts{"Q9X|Terra di nessuno|italia.jpg||12|34|JN61FV||"});
  EXPECT_EQ(table.LBCountry.Text(), "Q9X   Terra di nessuno");
  // The next update works on it.
  Type(table.Descrizione, "Terra di tutti");
  Press(table, "cmUpdate");
  EXPECT_EQ(Country("Q9X"), Texts{"Q9X|Terra di tutti|italia.jpg||12|34|JN61FV||"});
}

TEST_F(TabellaCountryTest, APixelThatItsColumnCannotHoldIsRefusedInWordsAndStaysAsTyped) {
  const std::string digits(19, '9');
  TabellaCountry& table = OpenTable();
  Type(table.Codice, "q9x");
  Type(table.Descrizione, "Terra di nessuno");
  Type(table.Y, digits);
  Press(table, "cmInsert");
  EXPECT_EQ(Lines(), Texts{"message exclamation \"\" \"Il valore '" + digits +
                           "' non è adatto alla colonna 'Pointer_Y'\""});
  EXPECT_EQ(table.Y.Text(), digits);
  EXPECT_EQ(table.Descrizione.Text(), "Terra di nessuno");
  EXPECT_TRUE(Country("Q9X").empty());
}

TEST_F(TabellaCountryTest, ARepeatedCodeIsToldAndTheListIsFilledAllTheSame) {
  TabellaCountry& table = OpenTable();
  Type(table.Codice, "I");
  Type(table.Descrizione, "Altra Italia");
  Press(table, "cmInsert");
  EXPECT_EQ(Lines(), Critical("Country gia' caricato"));
  EXPECT_EQ(table.LBCountry.Text(), "I     Italia");
  EXPECT_EQ(table.Descrizione.Text(), "Altra Italia");
  Click(table.LBCountry, "F     Francia");
  Type(table.Codice, "I");
  Press(table, "cmUpdate");
  EXPECT_EQ(Lines(), Critical("Country gia' caricato"));
  EXPECT_EQ(Country("F").size(), 1u);
}

TEST_F(TabellaCountryTest, CodeAndDescriptionAreNeededWithoutAWord) {
  TabellaCountry& table = OpenTable();
  const auto count = Rows("select Country from Country").size();
  Type(table.Codice, "Q9X");
  Press(table, "cmInsert");
  table.Codice.SetText(" ");
  Type(table.Descrizione, "Terra");
  Press(table, "cmInsert");
  EXPECT_TRUE(Lines().empty());
  EXPECT_EQ(Rows("select Country from Country").size(), count);
}

TEST_F(TabellaCountryTest, ABadLocatorIsRefusedAndAnEmptyOnePasses) {
  TabellaCountry& table = OpenTable();
  Type(table.Codice, "Q9X");
  Type(table.Descrizione, "Terra");
  Type(table.Locator, "JN6");
  Press(table, "cmInsert");
  EXPECT_EQ(Lines(), Texts{"message exclamation \"\" \"Locator non valido\""});
  EXPECT_TRUE(Country("Q9X").empty());
  table.Locator.SetText("");
  Press(table, "cmInsert");
  EXPECT_EQ(Country("Q9X").size(), 1u);
}

TEST_F(TabellaCountryTest, UpdateWorksOnTheRowThatTheTableStandsOn) {
  TabellaCountry& table = OpenTable();
  session.Tables.TbCountry->Seek("=", {"F"});
  Type(table.Codice, "F");
  Type(table.Descrizione, "La Francia");
  Press(table, "cmUpdate");
  EXPECT_EQ(Rows("select Descrizione from Country where Country='F'"), Texts{"La Francia"});
}

TEST_F(TabellaCountryTest, UpdateWorksOnTheCountryChosenWhereverAnotherWindowHasLedTheTable) {
  TabellaCountry& table = OpenTable();
  Click(table.LBCountry, "I     Italia");
  session.Tables.TbCountry->Seek("=", {"F"});
  Type(table.Descrizione, "Italia unita");
  Press(table, "cmUpdate");
  EXPECT_TRUE(Lines().empty());
  EXPECT_EQ(Rows("select Country,Descrizione from Country where Country in ('F','I') "
                 "order by Country"),
            (Texts{"F|Francia", "I|Italia unita"}));
}

TEST_F(TabellaCountryTest, UpdateWhereTheTableStandsOnNoRowEndsTheProgram) {
  TabellaCountry& table = OpenTable();
  Type(table.Codice, "Q9X");
  Type(table.Descrizione, "Terra");
  EXPECT_THROW(Press(table, "cmUpdate"), forms::ProgramEnded);
  EXPECT_THAT(Lines().at(0),
              testing::StartsWith("message critical \"Aggiornamento country\" \" 3021 - "));
}

TEST_F(TabellaCountryTest, UpdateAfterADeleteEndsTheProgram) {
  TabellaCountry& table = OpenTable();
  Click(table.LBCountry, "I     Italia");
  Press(table, "cmDelete");
  EXPECT_THROW(Press(table, "cmUpdate"), forms::ProgramEnded);
  EXPECT_THAT(Lines().at(0),
              testing::StartsWith("message critical \"Aggiornamento country\" \" 3167 - "));
}

TEST_F(TabellaCountryTest, DeletingAsksNothingAndTakesTheEntryAway) {
  TabellaCountry& table = OpenTable();
  Press(table, "cmDelete");
  EXPECT_EQ(Country("I").size(), 1u);
  const std::size_t entries = table.LBCountry.Items().size();
  Click(table.LBCountry, "I     Italia");
  Press(table, "cmDelete");
  EXPECT_TRUE(Lines().empty());
  EXPECT_TRUE(Country("I").empty());
  EXPECT_EQ(table.LBCountry.Items().size(), entries - 1);
  EXPECT_EQ(Place(table.LBCountry, "I     Italia"), -1);
}

TEST_F(TabellaCountryTest, MapAndFlagComeFromTheListOfFilesAndGoByBackspace) {
  TabellaCountry& table = OpenTable();
  Type(table.Mappa, "x");
  EXPECT_EQ(table.Mappa.Text(), "");
  Event([&] { table.Mappa.Drop("italia.jpg"); });
  Event([&] { table.Flag.Drop("i.bmp"); });
  EXPECT_EQ(table.Mappa.Text(), "italia.jpg");
  EXPECT_EQ(table.Flag.Text(), "i.bmp");
  Backspace(table.Mappa);
  Backspace(table.Flag);
  EXPECT_EQ(table.Mappa.Text(), "");
  EXPECT_EQ(table.Flag.Text(), "");
  Click(table.File1, "italia.jpg");
  Press(table, "cmMappa");
  Press(table, "cmFlag");
  EXPECT_EQ(table.Mappa.Text(), "italia.jpg");
  EXPECT_EQ(table.Flag.Text(), "italia.jpg");
}

TEST_F(TabellaCountryTest, HintsTellWhatTheListsAreFor) {
  TabellaCountry& table = OpenTable();
  const std::pair<forms::Field*, std::string> hints[] = {
      {&table.LBCountry,
       "Premi una lettera per ricercare o Click per richiamare i dati del country"},
      {&table.Frame2, "01/01/9999 indica nessuna data impostata"},
      {&table.File1, "File disponibili. Trascinarli su Mappa o Flag"}};
  for (const auto& [field, hint] : hints) {
    Hover(*field);
    EXPECT_EQ(table.StatusBar1.Panel(1), hint);
  }
}

TEST_F(TabellaCountryTest, ItKeepsItsPlaceAndExitCloses) {
  TabellaCountry& table = OpenTable();
  table.Move({base::Twips(30), base::Twips(45), base::Twips(10800), base::Twips(7200)});
  Press(table, "cmExit");
  EXPECT_EQ(session.Windows.Find("TabellaCountry"), nullptr);
  EXPECT_EQ(session.GetSetting("Country", "Y", ""), "45");
}

TEST_F(TabellaCountryTest, AnyOtherFailureEndsTheProgram) {
  TabellaCountry& table = OpenTable();
  Click(table.LBCountry, "I     Italia");
  session.Db.Close();
  EXPECT_THROW(Press(table, "cmInsert"), forms::ProgramEnded);
  EXPECT_THAT(Lines().at(0),
              testing::StartsWith("message critical \"Inserimento country\" \" 3420"));
  EXPECT_THROW(Press(table, "cmUpdate"), forms::ProgramEnded);
  EXPECT_THAT(Lines().at(0),
              testing::StartsWith("message critical \"Aggiornamento country\" \" 3420"));
}

TEST_F(TabellaCountryTest, AQuoteIsStoredAsItStands) {
  TabellaCountry& table = OpenTable();
  Type(table.Codice, "Q'9");
  Type(table.Descrizione, "Costa d'Oro *");
  Press(table, "cmInsert");
  EXPECT_TRUE(Lines().empty());
  EXPECT_EQ(table.LBCountry.Text(), "Q'9   Costa d'Oro *");
  Press(table, "cmDelete");
  EXPECT_TRUE(Rows("select Country from Country where Country like 'Q?9'").empty());
}

}  // namespace
}  // namespace brenvo::tables
