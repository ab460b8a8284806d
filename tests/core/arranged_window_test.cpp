#include "core/arranged_window.h"

#include <gmock/gmock.h>

#include "core/colonne.h"
#include "tests/core/core_station.h"

namespace brenvo::core {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// Rows that can take their time.
class SlowRows : public MemoryRows {
 public:
  bool Arrange(const Arrangement& wanted) override {
    ++asked;
    if (slow) return false;
    return MemoryRows::Arrange(wanted);
  }
  bool slow = false;
  int asked = 0;
};

class ArrangedSample : public ArrangedWindow {
 public:
  explicit ArrangedSample(Session& session)
      : ArrangedWindow(session, "Sample", "Sample", base::Twips(6000), base::Twips(4000)) {
    ShowCommands({});
  }
  void Load() override {
    ArrangedWindow::Load();
    rows.SetRows({{"Bari", "1000", "03/02/2001", "Sì"},
                  {"Ancona", "90", "01/01/2001", "No"},
                  {"como", "90", "05/05/1999 10:00:00", "Sì"},
                  {"Dolo", "", "", "No"}});
    ArrangeTable(rows, {{"Nome"},
                        {"Metri", ColumnKind::kNumber},
                        {"Dal", ColumnKind::kDate},
                        {"Mare", ColumnKind::kYesNo, false}});
  }
  std::vector<std::string> Column(int column) {
    std::vector<std::string> cells;
    for (std::int64_t row = 1; row < Tabella.Rows(); ++row) {
      cells.push_back(Tabella.Cell(row, column));
    }
    return cells;
  }
  std::vector<std::string> Headings() {
    std::vector<std::string> cells;
    for (int i = 0; i < Tabella.Columns(); ++i) cells.push_back(Tabella.Cell(0, i));
    return cells;
  }
  forms::GridArranger& Arranger() { return *Tabella.Arranger(); }
  std::vector<std::int64_t> Marked() { return MarkedKeys(); }
  std::vector<std::int64_t> MarkedOrShown() { return MarkedOrShownKeys(); }

  TableGrid Tabella{*this};
  SlowRows rows;
};

class ArrangedWindowTest : public CoreStation {
 protected:
  ArrangedWindowTest() {
    Know<ArrangedSample>("Sample");
    Know<Colonne>("Colonne");
    window = &Open<ArrangedSample>("Sample");
  }
  void Heading(int column) {
    Event([&] { window->Tabella.ClickCell(0, column); });
  }
  void Sort(int column, bool add) {
    Event([&] { window->Arranger().SortBy(column, add); });
  }
  void Filter(int column, const char* text) {
    Event([&] { window->Arranger().SetFilterText(column, text); });
  }
  void Mark(std::int64_t from, std::int64_t to, bool mark = true) {
    Event([&] { window->Arranger().Mark(from, to, mark); });
  }
  std::vector<std::string> Names() { return window->Column(0); }
  ArrangedSample* window = nullptr;
};

TEST_F(ArrangedWindowTest, AClickOnAHeadingSortsThenTurnsRoundThenLeavesAlone) {
  Heading(0);
  EXPECT_THAT(Names(), ElementsAre("Ancona", "Bari", "como", "Dolo"));
  EXPECT_THAT(window->Headings(), ElementsAre("Nome ▲", "Metri", "Dal"));
  Heading(0);
  EXPECT_THAT(Names(), ElementsAre("Dolo", "como", "Bari", "Ancona"));
  EXPECT_THAT(window->Headings(), ElementsAre("Nome ▼", "Metri", "Dal"));
  Heading(0);
  EXPECT_THAT(Names(), ElementsAre("Bari", "Ancona", "como", "Dolo"));
  EXPECT_THAT(window->Headings(), ElementsAre("Nome", "Metri", "Dal"));
}

TEST_F(ArrangedWindowTest, NumbersAndDatesStandInTheirOwnOrder) {
  Heading(1);
  EXPECT_THAT(window->Column(1), ElementsAre("", "90", "90", "1000"));
  Heading(2);
  EXPECT_THAT(Names(), ElementsAre("Dolo", "como", "Ancona", "Bari"));
}

TEST_F(ArrangedWindowTest, AFurtherHeadingOrdersWhatIsAlikeInTheFirst) {
  Heading(1);
  Sort(0, true);
  Sort(0, true);
  EXPECT_THAT(Names(), ElementsAre("Dolo", "como", "Ancona", "Bari"));
  EXPECT_THAT(window->Headings(), ElementsAre("Nome ▼2", "Metri ▲1", "Dal"));
  Sort(0, true);
  EXPECT_THAT(window->Headings(), ElementsAre("Nome", "Metri ▲", "Dal"));
  Sort(0, true);
  Heading(2);
  EXPECT_THAT(window->Headings(), ElementsAre("Nome", "Metri", "Dal ▲"));
}

TEST_F(ArrangedWindowTest, FiltersUnderTheHeadingsNarrowTogetherWithTheSearch) {
  Filter(1, "<100");
  EXPECT_THAT(Names(), ElementsAre("Ancona", "como", "Dolo"));
  EXPECT_EQ(window->Conteggi.Text(), "3 di 4");
  Filter(0, "o");
  EXPECT_THAT(Names(), ElementsAre("Ancona", "como", "Dolo"));
  Filter(0, "!o*");
  Type(window->Cerca, "1999");
  EXPECT_THAT(Names(), ElementsAre("como"));
  EXPECT_TRUE(window->cmTogliFiltri.Enabled());
  Press(*window, "cmTogliFiltri");
  EXPECT_THAT(Names(), ElementsAre("Bari", "Ancona", "como", "Dolo"));
  EXPECT_EQ(window->Arranger().FilterText(1), "");
  EXPECT_EQ(window->Conteggi.Text(), "4");
  EXPECT_FALSE(window->cmTogliFiltri.Enabled());
}

TEST_F(ArrangedWindowTest, AFilterThatIsNotUnderstoodIsToldAndShowsAll) {
  Filter(1, "9x");
  EXPECT_EQ(window->Avviso.Text(),
            "Metri: non capisco. Filtro: 14   >10   10..20   = vuoto   !14   14;21");
  EXPECT_EQ(window->Arranger().FilterFault(1), window->Arranger().FilterHint(1));
  EXPECT_THAT(Names(), ElementsAre("Bari", "Ancona", "como", "Dolo"));
  Filter(1, "90");
  EXPECT_EQ(window->Avviso.Text(), "");
  EXPECT_EQ(window->Arranger().FilterFault(1), "");
  EXPECT_THAT(Names(), ElementsAre("Ancona", "como"));
}

TEST_F(ArrangedWindowTest, TheMarkOfTheRowStaysOnItWhenTheOrderChanges) {
  Event([&] { window->Tabella.ClickCell(3, 0); });
  Heading(0);
  EXPECT_EQ(window->Tabella.Cell(window->Tabella.Row(), 0), "como");
}

TEST_F(ArrangedWindowTest, MarkedRowsStayMarkedThroughOrderAndFilters) {
  Mark(1, 2);
  EXPECT_EQ(window->Conteggi.Text(), "4, segnati 2");
  EXPECT_THAT(window->Marked(), ElementsAre(0, 1));
  Heading(0);
  EXPECT_TRUE(window->Arranger().IsMarked(1));
  EXPECT_TRUE(window->Arranger().IsMarked(2));
  EXPECT_FALSE(window->Arranger().IsMarked(3));
  EXPECT_NE(window->Tabella.BackColour(1, 0), base::kWhite);
  EXPECT_EQ(window->Tabella.BackColour(3, 0), base::kWhite);
  EXPECT_TRUE(window->Tabella.Bold(1, 0));  // seen without the colour too
  EXPECT_FALSE(window->Tabella.Bold(3, 0));
  EXPECT_THAT(window->Marked(), ElementsAre(1, 0));
  Filter(0, "an");
  EXPECT_EQ(window->Conteggi.Text(), "1 di 4, segnati 1 (altri 1 non mostrati)");
  // What is not seen is not meant.
  EXPECT_THAT(window->Marked(), ElementsAre(1));
  EXPECT_THAT(window->MarkedOrShown(), ElementsAre(1));
  Filter(0, "");
  Mark(2, 1, false);
  EXPECT_EQ(window->Conteggi.Text(), "4");
}

TEST_F(ArrangedWindowTest, WithoutMarksTheChosenRowIsMeantOrAll) {
  Event([&] { window->Tabella.ClickCell(3, 0); });
  EXPECT_THAT(window->Marked(), ElementsAre(2));
  EXPECT_THAT(window->MarkedOrShown(), ElementsAre(0, 1, 2, 3));
  Filter(0, "xyz");
  EXPECT_THAT(window->Marked(), IsEmpty());
  EXPECT_THAT(window->MarkedOrShown(), IsEmpty());
}

TEST_F(ArrangedWindowTest, AllThatIsShownIsMarkedAndUnmarkedByOneKey) {
  Filter(1, "90");
  Press(*window, "cmSegnaTutti");
  EXPECT_THAT(window->Marked(), ElementsAre(1, 2));
  Filter(1, "");
  Press(*window, "cmSegnaTutti");
  EXPECT_THAT(window->Marked(), ElementsAre(0, 1, 2, 3));
  Press(*window, "cmSegnaTutti");
  EXPECT_EQ(window->Conteggi.Text(), "4");
}

TEST_F(ArrangedWindowTest, MovedAndDrawnColumnsAreKeptUnderItsName) {
  Event([&] { window->Arranger().MoveColumn(2, 0); });
  Event([&] { window->Arranger().SetColumnWidth(1, base::Twips(1200)); });
  EXPECT_THAT(window->Headings(), ElementsAre("Dal", "Nome", "Metri"));
  Press(*window, "cmExit");
  EXPECT_EQ(session.GetSetting("Sample", "Colonne", ""), "Dal:,Nome:1200,Metri:");
  window = &Open<ArrangedSample>("Sample");
  EXPECT_THAT(window->Headings(), ElementsAre("Dal", "Nome", "Metri"));
  EXPECT_EQ(window->Tabella.ColumnWidth(1), base::Twips(1200));
  EXPECT_EQ(window->Tabella.ColumnWidth(0), forms::kOwnSize);
}

TEST_F(ArrangedWindowTest, WhatIsKeptAndNotUnderstoodIsPassedOver) {
  Press(*window, "cmExit");
  session.SaveSetting("Sample", "Colonne", "Nessuna:5,Metri:99999999999,,Metri:1,Nome:-3,:");
  window = &Open<ArrangedSample>("Sample");
  EXPECT_THAT(window->Headings(), ElementsAre("Metri", "Nome"));
  EXPECT_EQ(window->Tabella.ColumnWidth(0), forms::kOwnSize);
}

TEST_F(ArrangedWindowTest, NothingChosenKeepsNothing) {
  Press(*window, "cmExit");
  EXPECT_EQ(session.GetSetting("Sample", "Colonne", "none"), "none");
}

TEST_F(ArrangedWindowTest, ColumnsAreChosenAndPutInOrderInADialog) {
  Filter(1, "90");
  Sort(1, false);
  InDialogs([&](forms::Window& dialog) {
    auto& columns = static_cast<Colonne&>(dialog);
    EXPECT_EQ(columns.Tabella.Rows(), 5);
    EXPECT_EQ(columns.Tabella.Cell(4, 0), "Mare");
    EXPECT_EQ(columns.Tabella.Cell(4, 1), "");
    Event([&] { columns.Tabella.DoubleClickCell(4, 0); });
    EXPECT_EQ(columns.Tabella.Cell(4, 1), "Sì");
    Press(columns, "cmSu");
    Press(columns, "cmSu");
    Press(columns, "cmSu");
    Press(columns, "cmSu");
    EXPECT_EQ(columns.Tabella.Cell(1, 0), "Mare");
    Press(columns, "cmGiu");
    Event([&] { columns.Tabella.DoubleClickCell(3, 0); });
    EXPECT_EQ(columns.Tabella.Cell(3, 0), "Metri");
    Press(columns, "cmApplica");
  });
  Press(*window, "cmColonne");
  EXPECT_THAT(window->Headings(), ElementsAre("Nome", "Mare", "Dal"));
  // A filter and an order that nobody sees are gone with their column.
  EXPECT_THAT(Names(), ElementsAre("Bari", "Ancona", "como", "Dolo"));
  InDialogs([&](forms::Window& dialog) {
    Press(dialog, "cmConsuete");
    Press(dialog, "cmApplica");
  });
  Press(*window, "cmColonne");
  EXPECT_THAT(window->Headings(), ElementsAre("Nome", "Metri", "Dal"));
}

TEST_F(ArrangedWindowTest, ATableWithoutColumnsIsRefusedAndADialogThatIsLeftChangesNothing) {
  InDialogs([&](forms::Window& dialog) {
    auto& columns = static_cast<Colonne&>(dialog);
    for (std::int64_t row = 1; row <= 3; ++row) {
      Event([&] { columns.Tabella.DoubleClickCell(row, 0); });
    }
    Press(columns, "cmApplica");
    EXPECT_EQ(columns.Avviso.Text(), "Almeno una colonna deve essere mostrata");
    Press(columns, "cmExit");
  });
  Press(*window, "cmColonne");
  EXPECT_THAT(window->Headings(), ElementsAre("Nome", "Metri", "Dal"));
}

TEST_F(ArrangedWindowTest, TheSearchLooksInTheColumnsThatAreShown) {
  Type(window->Cerca, "no");
  EXPECT_THAT(Names(), IsEmpty());
  Type(window->Cerca, "an");
  EXPECT_THAT(Names(), ElementsAre("Ancona"));
}

TEST_F(ArrangedWindowTest, RowsThatTakeTheirTimeComeWhenTheyAreReady) {
  window->rows.slow = true;
  Filter(1, "90");
  EXPECT_THAT(Names(), ElementsAre("Bari", "Ancona", "como", "Dolo"));
  EXPECT_EQ(window->Conteggi.Text(), "4 ...");
  Event([&] { window->Tabella.ClickCell(3, 0); });
  window->rows.slow = false;
  Event([&] { window->rows.OnReady(); });
  EXPECT_THAT(Names(), ElementsAre("Ancona", "como"));
  EXPECT_EQ(window->Tabella.Row(), 2);
  EXPECT_EQ(window->Conteggi.Text(), "2 di 4");
}

}  // namespace
}  // namespace brenvo::core
