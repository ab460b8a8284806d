#include "awards/worked_matrix.h"

#include <gmock/gmock.h>

#include "log/log_form.h"
#include "tests/awards/award_station.h"

namespace brenvo::awards {
namespace {

using Texts = std::vector<std::string>;

// The row's cells that hold something, as "heading:marker".
Texts Marks(forms::CellGrid& grid, int row) {
  Texts marks;
  for (int column = 1; column < grid.Columns(); ++column) {
    if (!grid.Cell(row, column).empty()) {
      marks.push_back(grid.Cell(0, column) + ":" + grid.Cell(row, column));
    }
  }
  return marks;
}

class HrdTest : public AwardStation {
 protected:
  HrdTest() {
    Know<Hrd>("Hrd");
    Know<log::LogForm>("LogForm");
  }
  Hrd& OpenHrd() { return Open<Hrd>("Hrd"); }
  void Search(WorkedMatrix& matrix, std::string_view call, std::string_view locator = "") {
    matrix.CallQso.SetText(call);
    matrix.Locator.SetText(locator);
    Event([&] { matrix.cmSearch.Press(); });
  }
  // A contact with everything that the prefix table knows of an Italian station.
  void Italian(std::string_view call, std::string_view band, std::string_view mode = "SSB",
               bool confirmed = false, std::string_view locator = "JN65CC") {
    Contact(
        "DataQso,Call,Banda,Modo,Locator,Prefisso,[Zona CQ],[Zona ITU],Continente,Country,"
        "QslRicevuta",
        "'" + std::to_string(++day_) + "/01/2001','" + std::string(call) + "','" +
            std::string(band) + "','" + std::string(mode) + "','" + std::string(locator) +
            "','IK3',15,28,'EU','I'," + (confirmed ? "true" : "false"));
  }

 private:
  int day_ = 0;
};

TEST_F(HrdTest, TheColumnsAreTheBandsOfTheStationByFrequency) {
  Hrd& hrd = OpenHrd();
  const Texts bands = Rows("Select Banda from UserRTX Order By Frequenza");
  ASSERT_EQ(hrd.Grid1.Columns(), static_cast<int>(bands.size()) + 1);
  ASSERT_EQ(hrd.Grid1.Rows(), 8);
  EXPECT_EQ(hrd.Grid1.Cell(0, 0), "Misto");
  EXPECT_EQ(hrd.Grid1.ColumnWidth(0), base::Twips(2500));
  EXPECT_EQ(hrd.Grid1.RowHeight(0), base::Twips(310));
  for (int column = 1; column < hrd.Grid1.Columns(); ++column) {
    EXPECT_EQ(hrd.Grid1.Cell(0, column), bands[static_cast<std::size_t>(column) - 1]);
    EXPECT_EQ(hrd.Grid1.ColumnWidth(column), base::Twips(700));
    EXPECT_TRUE(hrd.Grid1.Bold(0, column));
  }
  EXPECT_EQ(hrd.Modo.Text(), "Misto");
  EXPECT_EQ(hrd.Modo.Items().size(), Rows("Select Modo from Modi").size() + 1);
}

TEST_F(HrdTest, TheSessionFindsTheWindowWhileItIsLoaded) {
  Hrd& hrd = OpenHrd();
  EXPECT_EQ(session.Opened.Hrd, &hrd);
  EXPECT_TRUE(session.Opened.HrdOpen());
  Event([&] { hrd.Close(); });
  EXPECT_FALSE(session.Opened.HrdOpen());
  EXPECT_EQ(session.GetSetting("Hrd", "X", ""), "0");
}

TEST_F(HrdTest, EachRowTellsItsLevel) {
  Italian("IK3ABC", "  2 m", "SSB", true);   // the station itself
  Italian("IK3XYZ", " 70cm", "SSB", false);  // the square and all that is wider
  Contact("DataQso,Call,Banda,Country,Prefisso,[Zona CQ],[Zona ITU],Continente,Locator",
          "'01/01/2001','I1AAA',' 20 m','I','I1',15,28,'EU','JN35AA'");
  Contact("DataQso,Call,Banda,[Zona CQ],Continente", "'01/01/2001','HB9AA',' 40 m',14,'EU'");
  Contact("DataQso,Call,Banda,[Zona CQ],[Zona ITU],Continente",
          "'01/01/2001','SV9AA',' 15 m',15,99,'AF'");
  Hrd& hrd = OpenHrd();
  Search(hrd, "IK3ABC", "JN65BB");
  forms::CellGrid& grid = hrd.Grid1;
  const char* labels[] = {"IK3ABC",     "JN65",        "I    Italia",  "Prefisso IK3",
                          "Zona CQ 15", "Zona ITU 28", "Continente EU"};
  for (int row = 1; row < 8; ++row) {
    EXPECT_EQ(grid.Cell(row, 0), labels[row - 1]);
    EXPECT_TRUE(grid.Bold(row, 0));
    EXPECT_EQ(grid.Alignment(row, 0), forms::CellAlignment::kLeft);
  }
  EXPECT_EQ(Marks(grid, 1), Texts{"  2 m:C"});
  EXPECT_EQ(Marks(grid, 2), (Texts{"  2 m:C", " 70cm:W"}));
  EXPECT_EQ(Marks(grid, 3), (Texts{" 20 m:W", "  2 m:C", " 70cm:W"}));
  EXPECT_EQ(Marks(grid, 4), (Texts{"  2 m:C", " 70cm:W"}));
  EXPECT_EQ(Marks(grid, 5), (Texts{" 20 m:W", " 15 m:W", "  2 m:C", " 70cm:W"}));
  EXPECT_EQ(Marks(grid, 6), (Texts{" 20 m:W", "  2 m:C", " 70cm:W"}));
  EXPECT_EQ(Marks(grid, 7), (Texts{" 40 m:W", " 20 m:W", "  2 m:C", " 70cm:W"}));
  EXPECT_TRUE(Lines().empty());
}

TEST_F(HrdTest, ConfirmedAndUnconfirmedOnOneBandShowAsConfirmed) {
  Italian("IK3ABC", "  2 m", "SSB", false);
  Italian("IK3ABC", "  2 m", "CW", true, "JN65BB");
  Hrd& hrd = OpenHrd();
  Search(hrd, "IK3ABC", "JN65BB");
  for (int row = 1; row < 8; ++row) EXPECT_EQ(Marks(hrd.Grid1, row), Texts{"  2 m:C"}) << row;
}

TEST_F(HrdTest, ABatchIsSeenInTheCellsOfTheLastSearchWhateverIsTypedByThen) {
  Hrd& hrd = OpenHrd();
  const auto announce = [this] {
    Event([this] {
      session.Contacts.ChangeMany("Prova", {core::ContactTable::kLog}, [] { return true; });
    });
  };
  Italian("IK3ABC", "  2 m");
  announce();  // nothing was sought yet
  for (int row = 1; row < 8; ++row) EXPECT_EQ(Marks(hrd.Grid1, row), Texts{}) << row;
  Search(hrd, "IK3ABC", "JN65BB");
  hrd.CallQso.SetText("IK9");
  hrd.Locator.SetText("JN");
  Italian("IK3ABC", " 70cm", "SSB", true);
  announce();
  EXPECT_EQ(hrd.Grid1.Cell(1, 0), "IK3ABC");
  for (int row = 1; row < 8; ++row) {
    EXPECT_EQ(Marks(hrd.Grid1, row), (Texts{"  2 m:W", " 70cm:C"})) << row;
  }
  EXPECT_EQ(hrd.CallQso.Text(), "IK9");
}

TEST_F(HrdTest, WithAModeConfirmedMeansConfirmedInThatMode) {
  Italian("IK3ABC", "  2 m", "SSB", false);
  Italian("IK3ABC", "  2 m", "CW", true);
  Hrd& hrd = OpenHrd();
  Event([&] { hrd.Modo.SetText("SSB"); });
  Search(hrd, "IK3ABC", "JN65BB");
  for (int row = 1; row < 8; ++row) EXPECT_EQ(Marks(hrd.Grid1, row), Texts{"  2 m:W"}) << row;
}

TEST_F(HrdTest, AnUnknownPrefixFillsRowsOneAndTwoOnly) {
  Contact("DataQso,Call,Banda,Locator", "'01/01/2001','QQ9ZZZ','  2 m','IO91AA'");
  Contact("DataQso,Call,Banda,Country,Prefisso,[Zona CQ],[Zona ITU],Continente",
          "'01/01/2001','IK3ABC','  2 m','','',0,0,''");
  Hrd& hrd = OpenHrd();
  Search(hrd, "QQ9ZZZ", "IO91AA");
  EXPECT_EQ(Marks(hrd.Grid1, 1), Texts{"  2 m:W"});
  EXPECT_EQ(Marks(hrd.Grid1, 2), Texts{"  2 m:W"});
  for (int row = 3; row < 8; ++row) EXPECT_TRUE(Marks(hrd.Grid1, row).empty()) << row;
  EXPECT_EQ(hrd.Grid1.Cell(3, 0), "");
  EXPECT_THAT(hrd.Coordinate.Text(), testing::StartsWith("SP 308°/LP 128°"));
}

TEST_F(HrdTest, SaysWhoACallIsTodayWhereItsRowsStandForAnotherCountry) {
  Hrd& hrd = OpenHrd();
  machine.SetNow(base::DateTime::Of(2024, 5, 10, 12));
  Search(hrd, "GB6WW");
  EXPECT_EQ(hrd.Avviso.Text(), "GB6WW: Scozia dal 01/05 al 28/05/2024");
  Search(hrd, "IK3ABC");
  EXPECT_EQ(hrd.Avviso.Text(), "");
}

TEST_F(HrdTest, TheContinentRowHangsOnTheZone) {
  // A zone without a continent: the row is searched all the same, for contacts without one.
  session.Db.Execute("UPDATE Prefissi SET Continente='' WHERE Prefisso='IK3'");
  Contact("DataQso,Call,Banda,Continente", "'01/01/2001','I1AAA','  2 m',''");
  Hrd& hrd = OpenHrd();
  Search(hrd, "IK3ABC");
  EXPECT_EQ(hrd.Grid1.Cell(7, 0), "Continente ");
  EXPECT_EQ(Marks(hrd.Grid1, 7), Texts{"  2 m:W"});
  EXPECT_TRUE(Marks(hrd.Grid1, 5).empty());
}

TEST_F(HrdTest, RepeatingACallRecomputesNothingUntilTheModeChanges) {
  Hrd& hrd = OpenHrd();
  Search(hrd, "IK3ABC", "JN65BB");
  Italian("IK3ABC", "  2 m");
  Search(hrd, "IK3ABC", "JN65BB");
  for (int row = 1; row < 8; ++row) EXPECT_TRUE(Marks(hrd.Grid1, row).empty()) << row;
  Event([&] { hrd.Modo.SetText("SSB"); });
  for (int row = 1; row < 8; ++row) EXPECT_EQ(Marks(hrd.Grid1, row), Texts{"  2 m:W"}) << row;
}

TEST_F(HrdTest, AnotherCallClearsItsRowsAndLeavesTheSquare) {
  Italian("IK3ABC", "  2 m");
  Hrd& hrd = OpenHrd();
  Search(hrd, "IK3ABC", "JN65BB");
  Search(hrd, "QQ9ZZZ", "JN65BB");
  for (int row : {1, 3, 4, 5, 6, 7}) EXPECT_TRUE(Marks(hrd.Grid1, row).empty()) << row;
  EXPECT_EQ(Marks(hrd.Grid1, 2), Texts{"  2 m:W"});
  Search(hrd, "QQ9ZZZ", "JN55AA");
  EXPECT_EQ(hrd.Grid1.Cell(2, 0), "JN55");
  EXPECT_TRUE(Marks(hrd.Grid1, 2).empty());
}

TEST_F(HrdTest, ALocatorAloneFillsTheSquare) {
  Italian("IK3ABC", "  2 m");
  Hrd& hrd = OpenHrd();
  Search(hrd, "", "JN65ZZ");
  EXPECT_EQ(Marks(hrd.Grid1, 2), Texts{"  2 m:W"});
  for (int row : {1, 3, 4, 5, 6, 7}) EXPECT_EQ(hrd.Grid1.Cell(row, 0), "") << row;
}

TEST_F(HrdTest, AnotherModeBehindALocatorAloneLabelsNoOtherRow) {
  Italian("IK3ABC", "  2 m", "CW");
  Hrd& hrd = OpenHrd();
  Search(hrd, "", "JN65ZZ");
  Event([&] { hrd.Modo.SetText("SSB"); });
  EXPECT_TRUE(Marks(hrd.Grid1, 2).empty());
  Event([&] { hrd.Modo.SetText("CW"); });
  EXPECT_EQ(Marks(hrd.Grid1, 2), Texts{"  2 m:W"});
  for (int row : {1, 3, 4, 5, 6, 7}) EXPECT_EQ(hrd.Grid1.Cell(row, 0), "") << row;
}

TEST_F(HrdTest, ASquareAloneMatchesAndNamesNoPosition) {
  Italian("IK3ABC", "  2 m");
  Hrd& hrd = OpenHrd();
  for (const char* locator : {"JN65", "JN6*"}) {
    Search(hrd, "", locator);
    EXPECT_EQ(hrd.Grid1.Cell(2, 0), locator);
    EXPECT_EQ(Marks(hrd.Grid1, 2), Texts{"  2 m:W"});
    EXPECT_EQ(hrd.Coordinate.Text(), "");
  }
  EXPECT_TRUE(Lines().empty());
}

TEST_F(HrdTest, BothEmptySearchNothing) {
  Hrd& hrd = OpenHrd();
  Search(hrd, "IK3ABC");
  Search(hrd, "", "  ");
  EXPECT_EQ(hrd.Grid1.Cell(1, 0), "IK3ABC");
}

TEST_F(HrdTest, TheLineShowsBearingPositionAndDistance) {
  Hrd& hrd = OpenHrd();
  Search(hrd, "G3XYZ", "IO91AA");
  EXPECT_EQ(hrd.Coordinate.Text(), "SP 308°/LP 128°  -  LAT 51°/LONG-2°  -  Km. 1233");
}

TEST_F(HrdTest, WithoutALocatorTheCountrysIsTheTarget) {
  session.Db.Execute("UPDATE Country SET Locator='FN31AA' WHERE Country='I'");
  Hrd& hrd = OpenHrd();
  Search(hrd, "IK3ABC");
  EXPECT_THAT(hrd.Coordinate.Text(), testing::StartsWith("SP 300°/LP 120°"));
  EXPECT_THAT(hrd.Coordinate.Text(), testing::EndsWith("Km. 6657"));
}

TEST_F(HrdTest, AShortOwnLocatorLeavesTheLineEmptyAndFillsTheMatrix) {
  Italian("IK3ABC", "  2 m");
  Hrd& hrd = OpenHrd();
  Search(hrd, "IK3ABC", "IO91AA");
  EXPECT_NE(hrd.Coordinate.Text(), "");
  session.Station.MyLocator = "JN65";
  Search(hrd, "IK3ABC", "JN65BB");
  EXPECT_EQ(hrd.Coordinate.Text(), "");
  EXPECT_EQ(Marks(hrd.Grid1, 2), Texts{"  2 m:W"});
}

TEST_F(HrdTest, TwoLocatorsOfOnePlaceAreAFailureBehindTheFilledMatrix) {
  Italian("IK3ABC", "  2 m");
  Hrd& hrd = OpenHrd();
  Search(hrd, "IK3ABC", "JN65AA12");
  EXPECT_THAT(Lines(), testing::ElementsAre(testing::StartsWith("error ")));
  EXPECT_EQ(Marks(hrd.Grid1, 2), Texts{"  2 m:W"});
  EXPECT_FALSE(machine.Host().Busy());
}

TEST_F(HrdTest, AutoSearchIsTheDoorForOtherWindows) {
  Italian("IK3ABC", "  2 m");
  Hrd& hrd = OpenHrd();
  EXPECT_FALSE(hrd.AutoSearch.Visible());
  session.Opened.Hrd->CallQso.SetText("IK3ABC");
  Event([&] { session.Opened.Hrd->AutoSearch.SetText("IK3ABC"); });
  EXPECT_EQ(Marks(hrd.Grid1, 1), Texts{"  2 m:W"});
}

TEST_F(HrdTest, ASearchFromWithinLeavesWhatItSearchedForInAutoSearchAndRunsAgain) {
  Italian("IK3ABC", "  2 m");
  Hrd& hrd = OpenHrd();
  Event([&] { hrd.SearchFor(hrd.CallQso, "IK3ABC"); });
  EXPECT_EQ(hrd.AutoSearch.Text(), "IK3ABC");
  EXPECT_EQ(Marks(hrd.Grid1, 1), Texts{"  2 m:W"});
  Type(hrd.CallQso, "K1ABC");
  Press(hrd, "cmSearch");
  Event([&] { hrd.SearchFor(hrd.CallQso, "IK3ABC"); });
  EXPECT_EQ(Marks(hrd.Grid1, 1), Texts{"  2 m:W"});
}

TEST_F(HrdTest, TypedKeysAreUpperCased) {
  Hrd& hrd = OpenHrd();
  for (char32_t key : U"ik3abc") {
    if (key != 0) hrd.CallQso.TypeKey(key);
  }
  hrd.Locator.TypeKey('j');
  EXPECT_EQ(hrd.CallQso.Text(), "IK3ABC");
  EXPECT_EQ(hrd.Locator.Text(), "J");
}

TEST_F(HrdTest, TheMapOfTheCountryIsShownWhileTicked) {
  session.Db.Execute(
      "UPDATE Country SET Mappa='italia.jpg',Pointer_X=123,Pointer_Y=45 WHERE Country='I'");
  Hrd& hrd = OpenHrd();
  Search(hrd, "IK3ABC");
  EXPECT_EQ(frame->HDisplayMappa.Text(), "");
  hrd.Mappa.SetOn(true);
  Search(hrd, "IK3XYZ");
  EXPECT_EQ(session.Map.MapFile, "italia.jpg");
  EXPECT_EQ(session.Map.Pointer_X, 123);
  EXPECT_EQ(session.Map.Pointer_Y, 45);
  EXPECT_EQ(frame->HDisplayMappa.Text(), "04:05:06");
}

TEST_F(HrdTest, ACountryWithoutAMapShowsNone) {
  session.Db.Execute("UPDATE Country SET Mappa='' WHERE Country='I'");
  Hrd& hrd = OpenHrd();
  hrd.Mappa.SetOn(true);
  Search(hrd, "IK3ABC");
  EXPECT_EQ(frame->HDisplayMappa.Text(), "");
}

TEST_F(HrdTest, ADoubleClickShowsTheContactsOfTheCell) {
  Italian("IK3ABC", "  2 m");
  Hrd& hrd = OpenHrd();
  Search(hrd, "IK3ABC", "JN65BB");
  int column = 1;
  while (hrd.Grid1.Cell(0, column) != "  2 m") ++column;
  const char* statements[] = {
      "Call='IK3ABC' and Banda='  2 m'",  "Locator like 'JN65*' and Banda='  2 m'",
      "Country='I' and Banda='  2 m'",    "Prefisso='IK3' and Banda='  2 m'",
      "[ZOna CQ]= 15 and Banda='  2 m'",  "[ZOna ITU]= 28 and Banda='  2 m'",
      "Continente='EU' and Banda='  2 m'"};
  for (int row = 1; row < 8; ++row) {
    machine.Advance(1000);
    Event([&] { hrd.Grid1.DoubleClickCell(row, column); });
    EXPECT_EQ(session.Handed.QueryText,
              "Select * from Log where " + std::string(statements[row - 1]));
    EXPECT_EQ(static_cast<log::LogForm&>(*session.Opened.CurrentLogForm).CallQso.Text(), "IK3ABC");
  }
  EXPECT_TRUE(Lines().empty());
  EXPECT_EQ(session.Windows.FindInstance("LogForm#2"), nullptr);
}

TEST_F(HrdTest, ADoubleClickKeepsTheModeAndOpensAnEmptyListForAnEmptyCell) {
  Italian("IK3ABC", "  2 m");
  Hrd& hrd = OpenHrd();
  Event([&] { hrd.Modo.SetText("CW"); });
  Search(hrd, "IK3ABC");
  Event([&] { hrd.Grid1.DoubleClickCell(1, 1); });
  EXPECT_EQ(session.Handed.QueryText, "Select * from Log where Call='IK3ABC' and Banda='" +
                                          hrd.Grid1.Cell(0, 1) + "' and Modo='CW'");
  EXPECT_EQ(static_cast<log::LogForm&>(*session.Opened.CurrentLogForm).CallQso.Text(), "");
}

TEST_F(HrdTest, ADoubleClickOnARowWithoutAKeyShowsNothing) {
  Hrd& hrd = OpenHrd();
  for (int row = 0; row < 8; ++row) Event([&] { hrd.Grid1.DoubleClickCell(row, 1); });
  EXPECT_EQ(session.Handed.QueryText, "");
}

TEST_F(HrdTest, HintsFollowThePointer) {
  Hrd& hrd = OpenHrd();
  hrd.Grid1.Hover();
  EXPECT_EQ(hrd.StatusBar1.Panel(1),
            "Doppio click su una cella per visualizzare i Qso corrispondenti");
  hrd.cmSearch.Hover();
  EXPECT_EQ(hrd.StatusBar1.Panel(1), "Attiva il controllo");
  hrd.SSPanel1.Hover();
  EXPECT_EQ(hrd.StatusBar1.Panel(1), "");
}

TEST_F(HrdTest, ASearchReadsOneRowACellAndCountsNothing) {
  for (int i = 0; i < 30; ++i) Italian("IK3ABC", "  2 m", i % 2 == 0 ? "SSB" : "CW");
  Hrd& hrd = OpenHrd();
  const std::int64_t before = session.Db.Counters().rowsStepped;
  Search(hrd, "IK3ABC", "JN65BB");
  // Seven worked cells, and a few rows of the prefix and country tables.
  EXPECT_LT(session.Db.Counters().rowsStepped - before, 30);
}

TEST_F(HrdTest, TheLogFeedsTheMatrixWhileWorkedIsDown) {
  Italian("IK3ABC", "  2 m");
  Hrd& hrd = OpenHrd();
  log::LogForm& log = Open<log::LogForm>("LogForm");
  Event([&] { log.cmClear.Press(); });
  Event([&] { log.cmWorked.Press(); });
  Event([&] { log.CallQso.SetText("IK3ABC"); });
  EXPECT_EQ(Marks(hrd.Grid1, 1), Texts{"  2 m:W"});
}

class HrdModeTest : public HrdTest {
 protected:
  HrdModeTest() { Know<HrdMode>("HrdMode"); }
  HrdMode& OpenHrdMode(std::string_view modes, std::string_view band = "  2 m") {
    session.SaveSetting("HrdMode", "ModiUsati", modes);
    session.SaveSetting("HrdMode", "BandaUsata", band);
    return Open<HrdMode>("HrdMode");
  }
  static Texts Headings(HrdMode& matrix) {
    Texts headings;
    for (int column = 0; column < matrix.Grid1.Columns(); ++column) {
      headings.push_back(matrix.Grid1.Cell(0, column));
    }
    return headings;
  }
  static Texts Checked(HrdMode& matrix) {
    Texts checked;
    for (const forms::EntryArray::Entry& entry : matrix.Modon.Entries()) {
      if (entry.checked) checked.push_back(entry.caption);
    }
    return checked;
  }
  void Pick(HrdMode& matrix, std::string_view mode) {
    const auto& entries = matrix.Modon.Entries();
    for (std::size_t i = 0; i < entries.size(); ++i) {
      if (entries[i].caption == mode) {
        Event([&] { matrix.Modon.Pick(static_cast<int>(i)); });
        return;
      }
    }
    FAIL() << mode;
  }
};

TEST_F(HrdModeTest, NoModesInUseGiveNoModeColumn) {
  HrdMode& matrix = OpenHrdMode("");
  EXPECT_EQ(Headings(matrix), Texts{"  2 m"});
  EXPECT_TRUE(Checked(matrix).empty());
  EXPECT_EQ(matrix.Modon.Entries().size(), Rows("Select Modo from Modi").size());
  EXPECT_EQ(matrix.Grid1.ColumnWidth(0), base::Twips(2500));
}

TEST_F(HrdModeTest, TheColumnsAreTheModesInUseInTheOrderOfTheirTable) {
  HrdMode& matrix = OpenHrdMode("CW,SSB,", " 70cm");
  EXPECT_EQ(Headings(matrix), (Texts{"  2 m", "SSB", "CW"}));
  EXPECT_EQ(Checked(matrix), (Texts{"SSB", "CW"}));
  EXPECT_EQ(matrix.Banda.Text(), " 70cm");
  EXPECT_EQ(matrix.Grid1.ColumnWidth(2), base::Twips(800));
  EXPECT_EQ(matrix.Grid1.Alignment(0, 2), forms::CellAlignment::kCentre);
  EXPECT_EQ(matrix.Grid1.RowHeight(0), base::Twips(310));
  EXPECT_EQ(session.Opened.HrdMode, &matrix);
  EXPECT_TRUE(session.Opened.HrdModeOpen());
  Event([&] { matrix.Close(); });
  EXPECT_FALSE(session.Opened.HrdModeOpen());
  EXPECT_EQ(session.GetSetting("HrdMode", "W", ""), "12600");
}

TEST_F(HrdModeTest, AModeWhoseNameIsPartOfAnotherIsShownWithIt) {
  session.Db.Execute("INSERT INTO Modi (Codice,Modo) VALUES (90,'XY')");
  session.Db.Execute("INSERT INTO Modi (Codice,Modo) VALUES (91,'XYZ')");
  HrdMode& matrix = OpenHrdMode("XYZ,");
  EXPECT_EQ(Headings(matrix), (Texts{"  2 m", "XY", "XYZ"}));
  EXPECT_EQ(Checked(matrix), (Texts{"XY", "XYZ"}));
  // So it cannot be taken out alone.
  Pick(matrix, "XY");
  EXPECT_EQ(session.GetSetting("HrdMode", "ModiUsati", ""), "XYZ,");
  EXPECT_EQ(Headings(matrix), (Texts{"  2 m", "XY", "XYZ"}));
}

TEST_F(HrdModeTest, EachRowTellsItsLevelOnTheBand) {
  Italian("IK3ABC", "  2 m", "SSB", true);
  Italian("IK3XYZ", "  2 m", "CW");
  Italian("IK3ABC", " 70cm", "CW", true);
  HrdMode& matrix = OpenHrdMode("SSB,CW,");
  Search(matrix, "IK3ABC", "JN65BB");
  EXPECT_EQ(Marks(matrix.Grid1, 1), Texts{"SSB:C"});
  for (int row = 2; row < 8; ++row) {
    EXPECT_EQ(Marks(matrix.Grid1, row), (Texts{"SSB:C", "CW:W"})) << row;
  }
  EXPECT_EQ(matrix.Grid1.Alignment(1, 1), forms::CellAlignment::kCentre);
  EXPECT_EQ(matrix.Grid1.Cell(5, 0), "Zona CQ 15");
}

TEST_F(HrdModeTest, AnotherBandIsKeptAndSearchesAgain) {
  Italian("IK3ABC", " 70cm", "CW", true);
  HrdMode& matrix = OpenHrdMode("SSB,CW,");
  Search(matrix, "IK3ABC", "JN65BB");
  EXPECT_TRUE(Marks(matrix.Grid1, 1).empty());
  Event([&] { matrix.Banda.SetText(" 70cm"); });
  EXPECT_EQ(session.GetSetting("HrdMode", "BandaUsata", ""), " 70cm");
  for (int row = 1; row < 8; ++row) EXPECT_EQ(Marks(matrix.Grid1, row), Texts{"CW:C"}) << row;
  EXPECT_EQ(matrix.Grid1.Cell(0, 0), "  2 m");
}

TEST_F(HrdModeTest, ChangingTheColumnsLeavesThemEmptyUntilTheNextSearch) {
  Italian("IK3ABC", "  2 m", "SSB");
  Italian("IK3ABC", "  2 m", "CW");
  HrdMode& matrix = OpenHrdMode("SSB,");
  Search(matrix, "IK3ABC", "JN65BB");
  Pick(matrix, "CW");
  EXPECT_EQ(session.GetSetting("HrdMode", "ModiUsati", ""), "SSB,CW,");
  EXPECT_EQ(Headings(matrix), (Texts{"  2 m", "SSB", "CW"}));
  EXPECT_EQ(Marks(matrix.Grid1, 1), Texts{"SSB:W"});
  Search(matrix, "IK3ABC", "JN65BB");
  EXPECT_EQ(Marks(matrix.Grid1, 1), (Texts{"SSB:W", "CW:W"}));
  Pick(matrix, "SSB");
  EXPECT_EQ(Headings(matrix), (Texts{"  2 m", "CW"}));
  EXPECT_TRUE(Marks(matrix.Grid1, 1).empty());
  EXPECT_EQ(matrix.Grid1.Cell(1, 0), "IK3ABC");
}

TEST_F(HrdModeTest, ADoubleClickJoinsBandAndMode) {
  Italian("IK3ABC", "  2 m", "SSB");
  HrdMode& matrix = OpenHrdMode("SSB,");
  Search(matrix, "IK3ABC", "JN65BB");
  const char* keys[] = {"Call='IK3ABC'", "Locator like 'JN65*'", "Country='I'",    "Prefisso='IK3'",
                        "[ZOna CQ]= 15", "[ZOna ITU]= 28",       "Continente='EU'"};
  for (int row = 1; row < 8; ++row) {
    machine.Advance(1000);
    Event([&] { matrix.Grid1.DoubleClickCell(row, 1); });
    EXPECT_EQ(session.Handed.QueryText, "Select * from Log where " + std::string(keys[row - 1]) +
                                            " and Banda='  2 m' and Modo='SSB'");
    EXPECT_EQ(static_cast<log::LogForm&>(*session.Opened.CurrentLogForm).QsoTotali.Text(), "1");
  }
}

TEST_F(HrdModeTest, TheRightButtonOpensTheModesAndTheHintSaysSo) {
  HrdMode& matrix = OpenHrdMode("");
  EXPECT_EQ(matrix.Grid1.ContextMenu, &matrix.cmModi);
  EXPECT_EQ(matrix.cmModi.Caption(), "Modi");
  matrix.Grid1.Hover();
  EXPECT_EQ(matrix.StatusBar1.Panel(1),
            "Doppio click su una cella per visualizzare i Qso corrispondenti, bottone destro per "
            "menu Modi");
}

}  // namespace
}  // namespace brenvo::awards
