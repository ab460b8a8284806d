#include "tables/tabella_note.h"

#include "tables/help_form.h"
#include "tests/tables/tables_station.h"

namespace brenvo::tables {
namespace {

class TabellaNoteTest : public TablesStation {
 protected:
  TabellaNoteTest() {
    Know<TabellaNote>("TabellaNote");
    Exec("delete * from NoteHelp");
    Exec("insert into NoteHelp values ('PROP','E.S.')");
    Exec("insert into NoteHelp values ('PROP','F2')");
    Exec("insert into NoteHelp values ('QSL','Via bureau')");
  }
  TabellaNote& OpenTable() { return Open<TabellaNote>("TabellaNote"); }
  Texts Notes() { return Rows("select TipoNota,Nota from NoteHelp order by TipoNota,Nota"); }
};

TEST_F(TabellaNoteTest, TheListShowsTypesInSixCharacters) {
  TabellaNote& table = OpenTable();
  EXPECT_EQ(table.Caption(), "Tabella Note");
  EXPECT_EQ(table.LBNote.Items(), (Texts{"PROP  E.S.", "PROP  F2", "QSL   Via bureau"}));
}

TEST_F(TabellaNoteTest, AnEntryClickedFillsTheFields) {
  TabellaNote& table = OpenTable();
  Click(table.LBNote, "QSL   Via bureau");
  EXPECT_EQ(table.Codice.Text(), "QSL");
  EXPECT_EQ(table.Nota.Text(), "Via bureau");
}

TEST_F(TabellaNoteTest, AnInsertStoresAndSelectsTheNewNoteForTheNextUpdate) {
  TabellaNote& table = OpenTable();
  Click(table.LBNote, "PROP  F2");
  Type(table.Codice, "PROP");
  Type(table.Nota, "Tropo");
  Press(table, "cmInsert");
  EXPECT_EQ(table.LBNote.Text(), "PROP  Tropo");
  Type(table.Nota, "Tropo forte");
  Press(table, "cmUpdate");
  EXPECT_TRUE(Lines().empty());
  EXPECT_EQ(Notes(), (Texts{"PROP|E.S.", "PROP|F2", "PROP|Tropo forte", "QSL|Via bureau"}));
  EXPECT_EQ(table.LBNote.Text(), "PROP  Tropo forte");
}

TEST_F(TabellaNoteTest, ARepeatedNoteIsTold) {
  TabellaNote& table = OpenTable();
  Type(table.Codice, "PROP");
  Type(table.Nota, "f2");
  Press(table, "cmInsert");
  EXPECT_EQ(Lines(), Critical("Nota gia' caricata"));
  Click(table.LBNote, "PROP  E.S.");
  Type(table.Nota, "F2");
  Press(table, "cmUpdate");
  EXPECT_EQ(Lines(), Critical("Nota gia' caricata"));
  EXPECT_EQ(Notes().size(), 3u);
}

TEST_F(TabellaNoteTest, TypeAndNoteAreNeededWithoutAWord) {
  TabellaNote& table = OpenTable();
  Type(table.Codice, "PROP");
  Press(table, "cmInsert");
  table.Codice.SetText("");
  Type(table.Nota, "Tropo");
  Press(table, "cmInsert");
  Press(table, "cmUpdate");
  EXPECT_TRUE(Lines().empty());
  EXPECT_EQ(Notes().size(), 3u);
}

TEST_F(TabellaNoteTest, DeletingAsksNothingAndTakesTheEntryAway) {
  TabellaNote& table = OpenTable();
  Press(table, "cmDelete");
  EXPECT_EQ(Notes().size(), 3u);
  Click(table.LBNote, "PROP  F2");
  Press(table, "cmDelete");
  EXPECT_TRUE(Lines().empty());
  EXPECT_EQ(Notes(), (Texts{"PROP|E.S.", "QSL|Via bureau"}));
  EXPECT_EQ(table.LBNote.Items().size(), 2u);
}

TEST_F(TabellaNoteTest, ATypeLongerThanFiveIsStoredAndNotFoundFromTheList) {
  TabellaNote& table = OpenTable();
  Type(table.Codice, "SEIQUI");
  Type(table.Nota, "lunga");
  Press(table, "cmInsert");
  EXPECT_THAT(Notes(), testing::Contains("SEIQUI|lunga"));
  table.Codice.SetText("");
  table.Nota.SetText("");
  Click(table.LBNote, "SEIQUIlunga");
  EXPECT_EQ(table.Codice.Text(), "");
  Press(table, "cmDelete");
  EXPECT_THAT(Notes(), testing::Contains("SEIQUI|lunga"));
}

TEST_F(TabellaNoteTest, UpdateWorksOnTheNoteChosenWhereverAnotherWindowHasLedTheTable) {
  TabellaNote& table = OpenTable();
  Click(table.LBNote, "PROP  F2");
  session.Tables.TbNoteHelp->Seek("=", {"QSL", "Via bureau"});
  Type(table.Nota, "F2 lunga");
  Press(table, "cmUpdate");
  EXPECT_EQ(Notes(), (Texts{"PROP|E.S.", "PROP|F2 lunga", "QSL|Via bureau"}));
}

TEST_F(TabellaNoteTest, TheHintSpeaksOfADoubleClick) {
  TabellaNote& table = OpenTable();
  Hover(table.LBNote);
  EXPECT_EQ(table.StatusBar1.Panel(1), "Doppio click per richiamare i dati della nota");
}

TEST_F(TabellaNoteTest, AQuoteIsStoredAsItStands) {
  TabellaNote& table = OpenTable();
  Type(table.Codice, "QTH");
  Type(table.Nota, "dall'isola *");
  Press(table, "cmInsert");
  EXPECT_TRUE(Lines().empty());
  EXPECT_EQ(table.LBNote.Text(), "QTH   dall'isola *");
}

TEST_F(TabellaNoteTest, AnyOtherFailureEndsTheProgram) {
  TabellaNote& table = OpenTable();
  Click(table.LBNote, "PROP  F2");
  session.Db.Close();
  EXPECT_THROW(Press(table, "cmInsert"), forms::ProgramEnded);
  EXPECT_THAT(Lines().at(0), testing::StartsWith("message critical \"Inserimento nota\" \" 3420"));
  EXPECT_THROW(Press(table, "cmUpdate"), forms::ProgramEnded);
  EXPECT_THAT(Lines().at(0),
              testing::StartsWith("message critical \"Aggiornamento nota\" \" 3420"));
}

TEST_F(TabellaNoteTest, ItKeepsItsPlaceAndExitCloses) {
  TabellaNote& table = OpenTable();
  table.Move({base::Twips(30), base::Twips(45), base::Twips(7200), base::Twips(5400)});
  Press(table, "cmExit");
  EXPECT_EQ(session.Windows.Find("TabellaNote"), nullptr);
  EXPECT_EQ(session.GetSetting("Note", "Y", ""), "45");
}

class HelpFormTest : public TabellaNoteTest {
 protected:
  HelpFormTest() { Know<HelpForm>("Help"); }
  HelpForm& OpenHelp() { return Open<HelpForm>("Help"); }
};

TEST_F(HelpFormTest, TypesFirstThenTheNotesOfTheOneChosen) {
  HelpForm& help = OpenHelp();
  EXPECT_EQ(help.Caption(), "NoteHelp");
  EXPECT_EQ(help.LBTipoNote.Items(), (Texts{"PROP  ", "QSL   "}));
  EXPECT_TRUE(help.LBNote.Items().empty());
  Click(help.LBTipoNote, "PROP  ");
  EXPECT_TRUE(help.LBNote.Items().empty());
  DoubleClick(help.LBTipoNote, "PROP  ");
  EXPECT_EQ(help.LBNote.Items(), (Texts{"E.S.", "F2"}));
}

TEST_F(HelpFormTest, ANoteChosenIsLeftInBracketsAndTheDialogCloses) {
  HelpForm& help = OpenHelp();
  DoubleClick(help.LBTipoNote, "PROP  ");
  Event([&] {
    DoubleClick(help.LBNote, "E.S.");
    EXPECT_EQ(help.NoteChoice, "[E.S.]");
  });
  EXPECT_EQ(session.Windows.Find("Help"), nullptr);
}

TEST_F(HelpFormTest, ExitLeavesNoChoice) {
  HelpForm& help = OpenHelp();
  DoubleClick(help.LBTipoNote, "PROP  ");
  Click(help.LBNote, "E.S.");
  Event([&] {
    help.cmExit.Press();
    EXPECT_FALSE(help.NoteChoice);
  });
  EXPECT_EQ(session.Windows.Find("Help"), nullptr);
  EXPECT_EQ(session.GetSetting("Help", "W", ""), "6000");
}

TEST_F(HelpFormTest, ADoubleClickBesideTheEntriesDoesNothing) {
  HelpForm& help = OpenHelp();
  Event([&] { help.LBTipoNote.DoubleClick(); });
  Event([&] { help.LBNote.DoubleClick(); });
  EXPECT_TRUE(help.Visible());
  EXPECT_FALSE(help.NoteChoice);
}

TEST_F(HelpFormTest, ATypeWithAQuoteIsAFailureOfItsEvent) {
  session.Tables.TbNoteHelp->AddNew();
  session.Tables.TbNoteHelp->Set("TipoNota", "L'A");
  session.Tables.TbNoteHelp->Set("Nota", "x");
  session.Tables.TbNoteHelp->Update();
  HelpForm& help = OpenHelp();
  DoubleClick(help.LBTipoNote, "L'A   ");
  EXPECT_THAT(Lines(), testing::ElementsAre(testing::StartsWith("error \"")));
  DoubleClick(help.LBTipoNote, "QSL   ");
  EXPECT_EQ(help.LBNote.Items(), Texts{"Via bureau"});
}

TEST_F(HelpFormTest, HintsLeadThroughIt) {
  HelpForm& help = OpenHelp();
  const std::pair<forms::Field*, std::string> hints[] = {
      {&help.LBTipoNote, "Doppio click per gli elementi"},
      {&help.LBNote, "Doppio click per riportare la nota nel Log"},
      {&help.cmExit, "Chiude la finestra Help"}};
  for (const auto& [field, hint] : hints) {
    Hover(*field);
    EXPECT_EQ(help.StatusBar1.Panel(1), hint);
  }
}

}  // namespace
}  // namespace brenvo::tables
