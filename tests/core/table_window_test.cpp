#include "core/table_window.h"

#include <gmock/gmock.h>

#include "forms/choice_fields.h"
#include "tests/core/core_station.h"

namespace brenvo::core {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// Three rows of two columns, and what was done with them.
class Sample : public TableWindow {
 public:
  explicit Sample(Session& session)
      : TableWindow(session, "Sample", "Sample", base::Twips(6000), base::Twips(4000)) {
    ShowCommands({&cmOpen});
    DefaultCommand = &cmOpen;
  }
  void Load() override {
    TableWindow::Load();
    rows.SetRows({{"Ancona", "città"}, {"Bari", "porto"}, {"Como", "lago e città"}});
    ShowTable(rows, {"Nome", "Che cosa"});
  }
  std::vector<std::string> Shown() {
    std::vector<std::string> names;
    for (std::int64_t row = 1; row < Tabella.Rows(); ++row) names.push_back(Tabella.Cell(row, 0));
    return names;
  }
  std::string Marked() {
    const auto key = ChosenKey();
    return key ? std::to_string(*key) : "none";
  }
  void Replace(std::vector<MemoryRows::Row> others, std::optional<std::int64_t> key) {
    rows.SetRows(std::move(others));
    ShowRows(key);
  }

  forms::CheckBox Filter{*this, "Filter"};
  TableGrid Tabella{*this};
  forms::TextField Below{*this, "Below"};
  forms::Command cmOpen{*this, "cmOpen", "Apri", [this] { opened += Marked() + " "; }};
  std::string opened;
  std::vector<std::string> chosen;
  MemoryRows rows;

 protected:
  void RowChosen() override { chosen.push_back(Marked()); }
  bool TableKey(char32_t key) override {
    if (key == U'x') opened += "x ";
    return key == U'x';
  }
};

class TableWindowTest : public CoreStation {
 protected:
  TableWindowTest() {
    Know<Sample>("Sample");
    window = &Open<Sample>("Sample");
  }
  Sample* window = nullptr;
};

TEST_F(TableWindowTest, ShowsItsRowsAndMarksTheFirst) {
  EXPECT_EQ(window->Tabella.Cell(0, 1), "Che cosa");
  EXPECT_THAT(window->Shown(), ElementsAre("Ancona", "Bari", "Como"));
  EXPECT_EQ(window->Marked(), "0");
}

TEST_F(TableWindowTest, NarrowsWithEachLetterWhateverCaseAndAccents) {
  Type(window->Cerca, "CITTA");
  EXPECT_THAT(window->Shown(), ElementsAre("Ancona", "Como"));
  Type(window->Cerca, "  citta  com ");
  EXPECT_THAT(window->Shown(), ElementsAre("Como"));
  Type(window->Cerca, "xyz");
  EXPECT_THAT(window->Shown(), IsEmpty());
  EXPECT_EQ(window->Marked(), "none");
  Event([&] { window->Cerca.SetText(""); });
  EXPECT_THAT(window->Shown(), ElementsAre("Ancona", "Bari", "Como"));
}

TEST_F(TableWindowTest, KeepsTheMarkOnItsRowWhileOthersComeAndGo) {
  Event([&] { window->Tabella.ClickCell(3, 0); });
  ASSERT_EQ(window->Marked(), "2");
  Type(window->Cerca, "citt");
  EXPECT_EQ(window->Tabella.Row(), 2);
  EXPECT_EQ(window->Marked(), "2");
  Event([&] { window->Replace({{"Ancona", "città"}, {"Bari", "città"}, {"Como", "città"}}, 1); });
  EXPECT_EQ(window->Marked(), "1");
  Event([&] { window->Replace({{"Ancona", "città"}}, 1); });
  EXPECT_EQ(window->Marked(), "0");
}

TEST_F(TableWindowTest, EnterAndTheDoubleClickOnARowRunItsCommand) {
  Event([&] { window->Tabella.DoubleClickCell(2, 1); });
  Event([&] { EXPECT_TRUE(window->Tabella.TypeKey(forms::kEnter)); });
  Event([&] { EXPECT_TRUE(window->Tabella.TypeKey(U'x')); });
  Event([&] { EXPECT_FALSE(window->Tabella.TypeKey(U'y')); });
  EXPECT_EQ(window->opened, "1 1 x ");
}

TEST_F(TableWindowTest, WithoutARowThereIsNothingToRun) {
  Type(window->Cerca, "xyz");
  Event([&] { EXPECT_FALSE(window->Tabella.TypeKey(forms::kEnter)); });
  EXPECT_EQ(window->opened, "");
}

TEST_F(TableWindowTest, EnterInTheSearchGoesToTheTableAndRunsNothing) {
  Lines();
  Event([&] { window->Cerca.TypeKey(forms::kEnter); });
  EXPECT_THAT(Lines(), ElementsAre("focus Sample.Tabella"));
  EXPECT_EQ(window->opened, "");
}

TEST_F(TableWindowTest, HasTheKeysThatAllOfThemHave) {
  EXPECT_EQ(window->cmSearch.Shortcut(), "Ctrl+F");
  EXPECT_EQ(window->CancelCommand, &window->cmExit);
  ASSERT_EQ(window->Toolbar1.Items.size(), 3u);
  EXPECT_EQ(std::get<forms::Command*>(window->Toolbar1.Items.front()), &window->cmOpen);
  Lines();
  Press(*window, "cmSearch");
  EXPECT_THAT(Lines(), ElementsAre("focus Sample.Cerca"));
  Press(*window, "cmExit");
  EXPECT_EQ(session.Windows.Find("Sample"), nullptr);
}

TEST_F(TableWindowTest, RemembersItsPlaceUnderItsName) {
  window->Moved({base::Twips(300), base::Twips(450), base::Twips(7500), base::Twips(4500)},
                forms::WindowState::kNormal);
  Press(*window, "cmExit");
  EXPECT_EQ(session.GetSetting("Sample", "W", ""), "7500");
  EXPECT_EQ(Open<Sample>("Sample").GetBounds().left, base::Twips(300));
}

TEST_F(TableWindowTest, TheKeyboardGoesFromTheSearchThroughTheFiltersToTheTable) {
  std::vector<std::string> names;
  for (const forms::Field* field : window->Fields()) {
    if (field->Name() == "Cerca" || field->Name() == "Filter" || field->Name() == "Tabella" ||
        field->Name() == "Below") {
      names.push_back(field->Name());
    }
  }
  EXPECT_THAT(names, ElementsAre("Cerca", "Filter", "Tabella", "Below"));
}

}  // namespace
}  // namespace brenvo::core
