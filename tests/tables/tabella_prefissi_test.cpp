#include "tables/tabella_prefissi.h"

#include "tests/tables/tables_station.h"

namespace brenvo::tables {
namespace {

constexpr char kRepeated[] = "Prefisso gia' caricato";

class TabellaPrefissiTest : public TablesStation {
 protected:
  TabellaPrefissiTest() {
    Know<TabellaPrefissi>("TabellaPrefissi");
    Exec("delete * from Prefissi");
    Exec("insert into Prefissi values ('IK3','I',15,28,'EU')");
    Exec("insert into Prefissi values ('F1','F',14,27,'EU')");
    Exec("insert into Prefissi values ('W6','K',3,6,'NA')");
  }
  TabellaPrefissi& OpenTable(std::string_view tag = "") {
    auto& table = Open<TabellaPrefissi>("TabellaPrefissi");
    table.Tag = tag;
    return table;
  }
  void Fill(TabellaPrefissi& table, std::string_view prefix, std::string_view country,
            std::string_view cq, std::string_view itu, std::string_view continent) {
    Type(table.Codice, prefix);
    SelectListEntryOf(table.Country, country);
    Type(table.ZonaCQ, cq);
    Type(table.ZonaITU, itu);
    Type(table.Continente, continent);
  }
  static void SelectListEntryOf(forms::ListField& list, std::string_view code) {
    for (std::size_t i = 0; i < list.Items().size(); ++i) {
      if (list.Items()[i].starts_with(std::string(code) + " ")) {
        list.SetListIndex(static_cast<int>(i));
      }
    }
  }
  void ClickRow(TabellaPrefissi& table, int row) {
    Event([&] { table.Spread1.ClickCell(row, 0); });
  }
  Texts Prefixes(std::string_view where = "") {
    return Rows("select Prefisso,Country,[Zona CQ],[Zona ITU],Continente from Prefissi " +
                std::string(where) + " order by Prefisso");
  }
  static Texts FirstColumn(TabellaPrefissi& table) {
    Texts cells;
    for (std::int64_t row = 0; row < table.Spread1.Rows(); ++row) {
      cells.push_back(table.Spread1.Cell(row, 0));
    }
    return cells;
  }
  static Texts Fields(TabellaPrefissi& table) {
    return {table.Codice.Text(), table.Country.Text(), table.ZonaCQ.Text(), table.ZonaITU.Text(),
            table.Continente.Text()};
  }
};

TEST_F(TabellaPrefissiTest, TheGridShowsThePrefixesInOrder) {
  TabellaPrefissi& table = OpenTable();
  EXPECT_EQ(table.Caption(), "Tabella Prefissi");
  EXPECT_EQ(FirstColumn(table), (Texts{"Prefisso", "F1", "IK3", "W6"}));
  Texts row;
  for (int column = 0; column < table.Spread1.Columns(); ++column) {
    row.push_back(table.Spread1.Cell(0, column) + "=" + table.Spread1.Cell(2, column));
  }
  EXPECT_EQ(row,
            (Texts{"Prefisso=IK3", "Country=I", "Zona CQ=15", "Zona ITU=28", "Continente=EU"}));
}

TEST_F(TabellaPrefissiTest, ARowClickedFillsTheFields) {
  TabellaPrefissi& table = OpenTable();
  ClickRow(table, 2);
  EXPECT_EQ(Fields(table), (Texts{"IK3", "I     Italia", "15", "28", "EU"}));
}

TEST_F(TabellaPrefissiTest, AHeadingClickedOrdersByItsColumn) {
  TabellaPrefissi& table = OpenTable();
  const Texts orders[] = {{"F1", "IK3", "W6"},
                          {"F1", "IK3", "W6"},
                          {"W6", "F1", "IK3"},
                          {"W6", "F1", "IK3"},
                          {"IK3", "F1", "W6"}};
  for (int column = 4; column >= 0; --column) {
    ClickRow(table, 1);
    Event([&] { table.Spread1.ClickCell(0, column); });
    Texts expected = orders[column];
    expected.insert(expected.begin(), "Prefisso");
    EXPECT_EQ(FirstColumn(table), expected) << column;
  }
  EXPECT_TRUE(Lines().empty());
}

TEST_F(TabellaPrefissiTest, TheMarkGoesToTheRowThatUpdateWorksOn) {
  TabellaPrefissi& table = OpenTable();
  ClickRow(table, 3);
  Event([&] { table.Spread1.ClickCell(0, 2); });
  EXPECT_EQ(table.Spread1.Row(), 1);
  Fill(table, "W7", "K", "3", "6", "NA");
  Event([&] { table.cmUpdate.Press(); });
  EXPECT_EQ(table.Spread1.Cell(1, 0), "W7");
}

TEST_F(TabellaPrefissiTest, AnInsertStoresAndSortsInAtTheNextOrdering) {
  TabellaPrefissi& table = OpenTable();
  Fill(table, "ik1", "I", "15", "28", "eu");
  Press(table, "cmInsert");
  EXPECT_TRUE(Lines().empty());
  EXPECT_EQ(Prefixes("where Prefisso='IK1'"), Texts{"IK1|I    |15|28|EU"});
  EXPECT_EQ(FirstColumn(table), (Texts{"Prefisso", "F1", "IK3", "W6", "IK1"}));
  Event([&] { table.Spread1.ClickCell(0, 0); });
  EXPECT_EQ(FirstColumn(table), (Texts{"Prefisso", "F1", "IK1", "IK3", "W6"}));
}

TEST_F(TabellaPrefissiTest, AZoneThatItsColumnCannotHoldIsRefusedInWordsAndStaysAsTyped) {
  const std::string digits(19, '9');
  TabellaPrefissi& table = OpenTable();
  Fill(table, "Q9", "I", "14", digits, "EU");
  Press(table, "cmInsert");
  EXPECT_EQ(Lines(), Texts{"message exclamation \"\" \"Il valore '" + digits +
                           "' non è adatto alla colonna 'Zona ITU'\""});
  EXPECT_EQ(table.ZonaITU.Text(), digits);
  EXPECT_TRUE(Prefixes("where Prefisso='Q9'").empty());
}

TEST_F(TabellaPrefissiTest, APrefixGoesInOnceWhateverItsZones) {
  TabellaPrefissi& table = OpenTable();
  Fill(table, "IK3", "F", "1", "2", "AF");
  Press(table, "cmInsert");
  EXPECT_EQ(Lines(), Critical(kRepeated));
  EXPECT_EQ(Prefixes("where Prefisso='IK3'"), Texts{"IK3|I|15|28|EU"});
}

TEST_F(TabellaPrefissiTest, AnUpdateWithUnchangedValuesFindsTheRowItself) {
  TabellaPrefissi& table = OpenTable();
  ClickRow(table, 2);
  Press(table, "cmUpdate");
  EXPECT_EQ(Lines(), Critical(kRepeated));
}

TEST_F(TabellaPrefissiTest, AnUpdateChangesTheCurrentRow) {
  TabellaPrefissi& table = OpenTable();
  ClickRow(table, 2);
  Type(table.ZonaCQ, "16");
  Press(table, "cmUpdate");
  EXPECT_TRUE(Lines().empty());
  EXPECT_EQ(Prefixes("where Prefisso='IK3'"), Texts{"IK3|I    |16|28|EU"});
  EXPECT_EQ(table.Spread1.Cell(2, 2), "16");
  // The country alone is a change too.
  SelectListEntryOf(table.Country, "F");
  Press(table, "cmUpdate");
  EXPECT_TRUE(Lines().empty());
  EXPECT_EQ(Prefixes("where Prefisso='IK3'"), Texts{"IK3|F    |16|28|EU"});
}

TEST_F(TabellaPrefissiTest, AnUpdateThatWouldRepeatAKeyIsTold) {
  TabellaPrefissi& table = OpenTable();
  ClickRow(table, 2);
  Fill(table, "F1", "I", "14", "27", "EU");
  Press(table, "cmUpdate");
  EXPECT_EQ(Lines(), Critical(kRepeated));
  EXPECT_EQ(Prefixes(), (Texts{"F1|F|14|27|EU", "IK3|I|15|28|EU", "W6|K|3|6|NA"}));
}

TEST_F(TabellaPrefissiTest, AnEmptyFieldStopsACommandWithoutAWordAndAZoneOf0Passes) {
  TabellaPrefissi& table = OpenTable();
  for (int missing = 0; missing < 4; ++missing) {
    Fill(table, "IK1", "I", "15", "28", "EU");
    forms::TextField* const fields[] = {&table.Codice, &table.ZonaCQ, &table.ZonaITU,
                                        &table.Continente};
    fields[missing]->SetText("");
    Press(table, "cmInsert");
    Press(table, "cmUpdate");
  }
  EXPECT_TRUE(Lines().empty());
  EXPECT_EQ(Prefixes().size(), 3u);
  Fill(table, "IK1", "I", "0", "0", "EU");
  Press(table, "cmInsert");
  EXPECT_EQ(Prefixes("where Prefisso='IK1'"), Texts{"IK1|I    |0|0|EU"});
}

TEST_F(TabellaPrefissiTest, ZonesTakeDigitsOnly) {
  TabellaPrefissi& table = OpenTable();
  Type(table.ZonaCQ, "1a5");
  Type(table.ZonaITU, "-2.8");
  EXPECT_EQ(table.ZonaCQ.Text(), "15");
  EXPECT_EQ(table.ZonaITU.Text(), "28");
}

TEST_F(TabellaPrefissiTest, DeletingAsksFirstAndTakesTheCurrentRow) {
  TabellaPrefissi& table = OpenTable();
  ClickRow(table, 2);
  machine.Messages().QueueAnswer(false);
  Press(table, "cmDelete");
  EXPECT_EQ(Lines(), Texts{"question \"Cancellazione prefisso\" \"Confermi l'operazione ?\" no"});
  EXPECT_EQ(Prefixes().size(), 3u);
  machine.Messages().QueueAnswer(true);
  Press(table, "cmDelete");
  EXPECT_EQ(Prefixes(), (Texts{"F1|F|14|27|EU", "W6|K|3|6|NA"}));
  EXPECT_EQ(FirstColumn(table), (Texts{"Prefisso", "F1", "W6"}));
}

TEST_F(TabellaPrefissiTest, ASearchShowsThePrefixAndMakesItTheCurrentRow) {
  TabellaPrefissi& table = OpenTable();
  Type(table.Codice, "w6");
  Press(table, "cmSearch");
  EXPECT_EQ(table.ZonaCQ.Text(), "3");
  EXPECT_THAT(table.Country.Text(), testing::StartsWith("K "));
  EXPECT_EQ(table.Spread1.Row(), 3);
  machine.Messages().QueueAnswer(true);
  Press(table, "cmDelete");
  EXPECT_EQ(FirstColumn(table), (Texts{"Prefisso", "F1", "IK3"}));
}

TEST_F(TabellaPrefissiTest, ASearchWithoutAMatchLeavesTheFields) {
  TabellaPrefissi& table = OpenTable();
  ClickRow(table, 1);
  Type(table.Codice, "QQ9");
  Press(table, "cmSearch");
  EXPECT_EQ(Fields(table), (Texts{"QQ9", "F     Francia", "14", "27", "EU"}));
  EXPECT_TRUE(Lines().empty());
}

TEST_F(TabellaPrefissiTest, AQuoteInTheSearchIsAFailureOfItsEvent) {
  TabellaPrefissi& table = OpenTable();
  Type(table.Codice, "I'");
  Press(table, "cmSearch");
  EXPECT_THAT(Lines(), testing::ElementsAre(testing::StartsWith("error \"")));
  // A wildcard is only a character where no pattern is asked for.
  Type(table.Codice, "I*");
  Press(table, "cmSearch");
  EXPECT_EQ(table.ZonaCQ.Text(), "");
  Type(table.Codice, "IK3");
  Press(table, "cmSearch");
  EXPECT_EQ(table.ZonaCQ.Text(), "15");
}

TEST_F(TabellaPrefissiTest, ForTheLogADoubleClickLeavesTheChoiceAndCloses) {
  TabellaPrefissi& table = OpenTable("LOG");
  core::PrefixChoice chosen;
  Event([&] {
    table.Spread1.DoubleClickCell(2, 0);
    chosen = table.Chosen.value();
  });
  EXPECT_EQ(session.Windows.Find("TabellaPrefissi"), nullptr);
  EXPECT_EQ(
      (Texts{chosen.Prefisso, chosen.Country, chosen.ZonaCQ, chosen.ZonaITU, chosen.Continente}),
      (Texts{"IK3", "I", "15", "28", "EU"}));
}

TEST_F(TabellaPrefissiTest, OtherwiseADoubleClickDoesNothing) {
  TabellaPrefissi& table = OpenTable();
  Event([&] { table.Spread1.DoubleClickCell(2, 0); });
  EXPECT_TRUE(table.Visible());
  EXPECT_FALSE(table.Chosen);
}

TEST_F(TabellaPrefissiTest, ExitIsACancel) {
  TabellaPrefissi& table = OpenTable("LOG");
  ClickRow(table, 2);
  Event([&] {
    table.cmExit.Press();
    EXPECT_FALSE(table.Chosen);
  });
  EXPECT_EQ(session.Windows.Find("TabellaPrefissi"), nullptr);
}

TEST_F(TabellaPrefissiTest, TheHintTellsWhatTheWindowIsOpenFor) {
  TabellaPrefissi& table = OpenTable();
  Hover(table.Spread1);
  EXPECT_EQ(table.StatusBar1.Panel(1), "Click per richiamare i dati del prefisso");
  TabellaPrefissi& pick = OpenTable("LOG");
  Hover(pick.Spread1);
  EXPECT_EQ(pick.StatusBar1.Panel(1),
            "Doppio click ritornare il prefisso al Log, Click per richiamare i dati del prefisso");
}

TEST_F(TabellaPrefissiTest, AnyOtherFailureEndsTheProgram) {
  TabellaPrefissi& table = OpenTable();
  Fill(table, "IK1", "I", "15", "28", "EU");
  session.Db.Close();
  EXPECT_THROW(Press(table, "cmInsert"), forms::ProgramEnded);
  EXPECT_THAT(Lines(), testing::ElementsAre(
                           testing::StartsWith("message critical \"Inserimento prefisso\" \" 3420"),
                           "end-program"));
  EXPECT_THROW(Press(table, "cmUpdate"), forms::ProgramEnded);
  EXPECT_THAT(Lines().at(0),
              testing::StartsWith("message critical \"Aggiornamento prefisso\" \" 3420"));
}

TEST_F(TabellaPrefissiTest, AnUpdateOfAnEmptyTableEndsTheProgram) {
  Exec("delete * from Prefissi");
  TabellaPrefissi& table = OpenTable();
  Fill(table, "IK1", "I", "15", "28", "EU");
  EXPECT_THROW(Press(table, "cmUpdate"), forms::ProgramEnded);
  EXPECT_THAT(Lines().at(0),
              testing::StartsWith("message critical \"Aggiornamento prefisso\" \" 3021 - "));
}

}  // namespace
}  // namespace brenvo::tables
