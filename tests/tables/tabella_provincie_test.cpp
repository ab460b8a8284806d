#include "tables/tabella_provincie.h"

#include "tests/tables/tables_station.h"

namespace brenvo::tables {
namespace {

class TabellaProvincieTest : public TablesStation {
 protected:
  TabellaProvincieTest() { Know<TabellaProvincie>("TabellaProvincie"); }
  TabellaProvincie& OpenTable() { return Open<TabellaProvincie>("TabellaProvincie"); }
  TabellaProvincie& OpenOn(std::string_view country) {
    TabellaProvincie& table = OpenTable();
    Click(table.LBCountry, country);
    return table;
  }
  Texts Provinces(std::string_view code) {
    return Rows("select Country,Provincia,Descrizione from Provincie where Provincia='" +
                std::string(code) + "' and Country in ('I','F') order by Country");
  }
};

constexpr char kItaly[] = "I     Italia";
constexpr char kFrance[] = "F     Francia";

TEST_F(TabellaProvincieTest, ACountryClickedShowsItsProvinces) {
  TabellaProvincie& table = OpenTable();
  EXPECT_EQ(table.Caption(), "Tabella Provincie");
  EXPECT_TRUE(table.LBProv.Items().empty());
  Click(table.LBCountry, kItaly);
  EXPECT_GE(Place(table.LBProv, "VE  Venezia"), 0);
}

TEST_F(TabellaProvincieTest, AProvinceClickedFillsTheFields) {
  TabellaProvincie& table = OpenOn(kItaly);
  Click(table.LBProv, "VE  Venezia");
  EXPECT_EQ(table.Codice.Text(), "VE");
  EXPECT_EQ(table.Descrizione.Text(), "Venezia");
}

TEST_F(TabellaProvincieTest, AnInsertStoresAndSelectsTheNewProvince) {
  TabellaProvincie& table = OpenOn(kItaly);
  Type(table.Codice, "q1");
  Type(table.Descrizione, "Quota");
  Press(table, "cmInsert");
  EXPECT_TRUE(Lines().empty());
  EXPECT_EQ(Provinces("Q1"), Texts{"I    |Q1|Quota"});
  EXPECT_EQ(table.LBProv.Text(), "Q1  Quota");
  Type(table.Descrizione, "Quota alta");
  Press(table, "cmUpdate");
  EXPECT_EQ(Provinces("Q1"), Texts{"I    |Q1|Quota alta"});
  EXPECT_EQ(table.LBProv.Text(), "Q1  Quota alta");
}

TEST_F(TabellaProvincieTest, UpdateWorksOnTheProvinceChosenWhereverAnotherWindowHasLedTheTable) {
  TabellaProvincie& table = OpenOn(kItaly);
  Click(table.LBProv, "VE  Venezia");
  session.Tables.TbProvincie->Seek("=", {"I", "RO"});
  Type(table.Descrizione, "Venezia e isole");
  Press(table, "cmUpdate");
  EXPECT_TRUE(Lines().empty());
  EXPECT_EQ(Rows("select Provincia,Descrizione from Provincie where Provincia in ('RO','VE') and "
                 "Country='I' order by Provincia"),
            (Texts{"RO|Rovigo", "VE|Venezia e isole"}));
}

TEST_F(TabellaProvincieTest, OneCodeUnderTwoCountriesIsAllowedAndTwiceUnderOneIsTold) {
  TabellaProvincie& table = OpenOn(kItaly);
  Type(table.Codice, "Q1");
  Type(table.Descrizione, "Quota");
  Press(table, "cmInsert");
  Click(table.LBCountry, kFrance);
  Press(table, "cmInsert");
  EXPECT_TRUE(Lines().empty());
  EXPECT_EQ(Provinces("Q1"), (Texts{"F    |Q1|Quota", "I    |Q1|Quota"}));
  Press(table, "cmInsert");
  EXPECT_EQ(Lines(), Critical("Provincia gia' caricata"));
  EXPECT_EQ(Provinces("Q1").size(), 2u);
}

TEST_F(TabellaProvincieTest, AnUpdateThatWouldRepeatACodeIsTold) {
  TabellaProvincie& table = OpenOn(kItaly);
  Click(table.LBProv, "VE  Venezia");
  Type(table.Codice, "PD");
  Press(table, "cmUpdate");
  EXPECT_EQ(Lines(), Critical("Provincia gia' caricata"));
  EXPECT_EQ(Provinces("VE"), Texts{"I|VE|Venezia"});
}

TEST_F(TabellaProvincieTest, ACountryACodeAndADescriptionAreNeededWithoutAWord) {
  TabellaProvincie& table = OpenTable();
  Type(table.Codice, "Q1");
  Type(table.Descrizione, "Quota");
  Press(table, "cmInsert");
  Click(table.LBCountry, kItaly);
  table.Codice.SetText("");
  Press(table, "cmInsert");
  Type(table.Codice, "Q1");
  table.Descrizione.SetText(" ");
  Press(table, "cmInsert");
  Press(table, "cmUpdate");
  EXPECT_TRUE(Lines().empty());
  EXPECT_TRUE(Provinces("Q1").empty());
}

TEST_F(TabellaProvincieTest, DeletingAsksNothingAndTakesTheEntryAway) {
  TabellaProvincie& table = OpenOn(kItaly);
  Press(table, "cmDelete");
  Click(table.LBProv, "VE  Venezia");
  const std::size_t entries = table.LBProv.Items().size();
  Press(table, "cmDelete");
  EXPECT_TRUE(Lines().empty());
  EXPECT_TRUE(Provinces("VE").empty());
  EXPECT_EQ(table.LBProv.Items().size(), entries - 1);
}

TEST_F(TabellaProvincieTest, AnotherCountryForgetsTheProvinceChosenBefore) {
  Exec("insert into Provincie values ('F','VE','Vendee')");
  TabellaProvincie& table = OpenOn(kItaly);
  Click(table.LBProv, "VE  Venezia");
  Click(table.LBCountry, kFrance);
  Press(table, "cmDelete");
  EXPECT_EQ(Provinces("VE"), (Texts{"F|VE|Vendee", "I|VE|Venezia"}));
}

TEST_F(TabellaProvincieTest, ACodeOfFourCharactersShowsAndIsNotDeleted) {
  Exec("insert into Provincie values ('I','Q123','Quattro')");
  TabellaProvincie& table = OpenOn(kItaly);
  Click(table.LBProv, "Q123Quattro");
  EXPECT_EQ(table.Codice.Text(), "Q123");
  Press(table, "cmDelete");
  EXPECT_EQ(Provinces("Q123").size(), 1u);
}

TEST_F(TabellaProvincieTest, HintsTellWhatTheListsAreFor) {
  TabellaProvincie& table = OpenTable();
  Hover(table.LBCountry);
  EXPECT_EQ(table.StatusBar1.Panel(1),
            "Premi una lettera per ricercare o Click per visualizzare le provincie");
  Hover(table.LBProv);
  EXPECT_EQ(table.StatusBar1.Panel(1),
            "Premi una lettera per ricercare o Click per richiamare i dati della provincia");
}

TEST_F(TabellaProvincieTest, AnyOtherFailureEndsTheProgramAndAnUpdateKeepsTheCountrysTitle) {
  TabellaProvincie& table = OpenOn(kItaly);
  Click(table.LBProv, "VE  Venezia");
  session.Db.Close();
  EXPECT_THROW(Press(table, "cmInsert"), forms::ProgramEnded);
  EXPECT_THAT(Lines().at(0),
              testing::StartsWith("message critical \"Inserimento provincia\" \" 3420"));
  EXPECT_THROW(Press(table, "cmUpdate"), forms::ProgramEnded);
  EXPECT_THAT(Lines().at(0),
              testing::StartsWith("message critical \"Aggiornamento country\" \" 3420"));
}

TEST_F(TabellaProvincieTest, AQuoteIsStoredAsItStands) {
  TabellaProvincie& table = OpenOn(kItaly);
  Type(table.Codice, "Q'");
  Type(table.Descrizione, "Dell'Est");
  Press(table, "cmInsert");
  EXPECT_TRUE(Lines().empty());
  EXPECT_EQ(table.LBProv.Text(), "Q'  Dell'Est");
}

TEST_F(TabellaProvincieTest, ItKeepsItsPlaceAndExitCloses) {
  TabellaProvincie& table = OpenTable();
  table.Move({base::Twips(30), base::Twips(45), base::Twips(9600), base::Twips(6000)});
  Press(table, "cmExit");
  EXPECT_EQ(session.Windows.Find("TabellaProvincie"), nullptr);
  EXPECT_EQ(session.GetSetting("Provincie", "Y", ""), "45");
}

}  // namespace
}  // namespace brenvo::tables
