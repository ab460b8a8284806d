#include <gtest/gtest.h>

#include "forms/field_visit.h"
#include "forms/window_list.h"
#include "recorder/recording_host.h"

namespace brenvo::forms {
namespace {

class PartsOfAWindow : public testing::Test {
 protected:
  recorder::RecordingHost host{[](const std::string&) {}};
  Window window{host, "W", "W", base::Twips(1), base::Twips(1)};
};

TEST_F(PartsOfAWindow, ACommandIsWhatItsTraitsSay) {
  int presses = 0;
  TextField field(window, "Field");
  Command command(
      window, "cmOne", "Uno",
      {.tip = "Il primo", .shortcut = "F2", .run = [&] { ++presses; }, .focusAfter = &field});
  EXPECT_EQ(command.Caption(), "Uno");
  EXPECT_EQ(command.Tip, "Il primo");
  EXPECT_EQ(command.Shortcut(), "F2");
  EXPECT_EQ(command.FocusAfter, &field);
  EXPECT_FALSE(command.Toggle);
  command.Press();
  EXPECT_EQ(presses, 1);
}

TEST_F(PartsOfAWindow, ACommandIsPressedOnlyWhileItsFunctionAllowsIt) {
  bool allowed = false;
  int presses = 0;
  Command command(window, "cmOne", "Uno",
                  {.run = [&] { ++presses; }, .enabled = [&] { return allowed; }});
  EXPECT_FALSE(command.Enabled());
  command.Press();
  EXPECT_EQ(presses, 0);
  allowed = true;
  command.Press();
  EXPECT_EQ(presses, 1);
  command.SetEnabled(false);
  EXPECT_FALSE(command.Enabled());
}

TEST_F(PartsOfAWindow, AToggleWithAFunctionShowsWhatTheFunctionSaysAndNothingElse) {
  bool shown = false;
  Command command(window, "cmGrid", "Griglia", {.run = [] {}, .checked = [&] { return shown; }});
  EXPECT_TRUE(command.Toggle);
  command.Press();
  EXPECT_FALSE(command.Down());
  shown = true;
  EXPECT_TRUE(command.Down());
}

TEST_F(PartsOfAWindow, TheScreenLearnsBehindEachEventWhatTheFunctionsHaveComeToSay) {
  WindowList list(host);
  bool allowed = true;
  auto made = std::make_unique<Window>(host, "W", "W", base::Twips(1), base::Twips(1));
  Command command(*made, "cmOne", "Uno", {.enabled = [&] { return allowed; }});
  list.Adopt(std::move(made));
  int shown = 0;
  const Subscription screen = command.Shown.Subscribe([&] { ++shown; });
  list.RunEvent([] {});
  EXPECT_EQ(shown, 0);
  list.RunEvent([&] { allowed = false; });
  EXPECT_EQ(shown, 1);
  list.RunEvent([] {});
  EXPECT_EQ(shown, 1);
}

TEST_F(PartsOfAWindow, AFieldsHintStandsInTheFirstStatusBarUnlessTheWindowAnswersItself) {
  TextField field(window, "Field", {.hint = "Doppio Click"});
  TextField silent(window, "Silent");
  field.Hover();  // nowhere to show it
  StatusBar bar(window, "Bar", 2), second(window, "Second", 1);
  EXPECT_EQ(window.Status(), &bar);
  field.Hover();
  EXPECT_EQ(bar.Panel(1), "Doppio Click");
  silent.Hover();
  EXPECT_EQ(bar.Panel(1), "Doppio Click");
  field.OnHover = [&] { bar.SetPanel(2, "altro"); };
  bar.SetPanel(1, "");
  field.Hover();
  EXPECT_EQ(bar.Panel(1), "");
  EXPECT_EQ(bar.Panel(2), "altro");
}

TEST_F(PartsOfAWindow, AFieldIsVisitedAsItsOwnKindBeforeThatWhichItDerivesFrom) {
  const auto kind = [](Field& field) {
    return VisitField(
        field, [](ListField&) { return "list"; }, [](TextField&) { return "text"; },
        [](DataGrid&) { return "data"; }, [](Grid&) { return "grid"; },
        [](OneOf<CheckBox, Command, EntryArray, Gauge, Label, Menu, OptionButton, OptionGroup,
                 Panel, PictureBox, RichText, Slider, StatusBar, TabStrip, ToolBar> auto&) {
          return "other";
        });
  };
  ListField list(window, "A", ListStyle::kOpen);
  MaskedField masked(window, "B", "##");
  CellGrid cells(window, "C");
  DataGrid rows(window, "D");
  Label label(window, "E");
  EXPECT_STREQ(kind(list), "list");
  EXPECT_STREQ(kind(masked), "text");
  EXPECT_STREQ(kind(cells), "grid");
  EXPECT_STREQ(kind(rows), "data");
  EXPECT_STREQ(kind(label), "other");
  EXPECT_EQ(FieldAs<TextField>(list), &list);
  EXPECT_EQ(FieldAs<ListField>(masked), nullptr);
}

TEST_F(PartsOfAWindow, TheCurrentTabShowsItsPanelBeforeItsEventRuns) {
  Panel first(window, "First"), second(window, "Second");
  Label words(window, "Words");
  TabStrip tabs(window, "Tabs", {"Uno", "Due"});
  tabs.SetPage(0, first, {});
  tabs.SetPage(1, second, {&words});
  EXPECT_TRUE(first.Visible());
  EXPECT_FALSE(second.Visible());
  bool shownInEvent = false;
  tabs.OnChange = [&] { shownInEvent = second.Visible() && !first.Visible(); };
  tabs.Press(1);
  EXPECT_TRUE(shownInEvent);
  EXPECT_EQ(tabs.Pages()[1].fields, std::vector<Field*>{&words});
}

TEST_F(PartsOfAWindow, AGridAnswersAKeyOnlyWhenItsWindowDoes) {
  CellGrid grid(window, "Grid");
  EXPECT_FALSE(grid.TypeKey('x'));
  grid.OnKey = [](char32_t key) { return key == kBackspace; };
  EXPECT_TRUE(grid.TypeKey(kBackspace));
  EXPECT_FALSE(grid.TypeKey('x'));
}

TEST_F(PartsOfAWindow, AnOpenListFilledAnewForgetsTheEntryThatItHad) {
  ListField open(window, "Open", ListStyle::kOpen);
  ListField combo(window, "Combo", ListStyle::kCombo);
  for (ListField* list : {&open, &combo}) {
    list->SetItems({"uno", "due"});
    list->Pick(1);
    list->SetItems({"tre"});
    EXPECT_EQ(list->ListIndex(), -1);
  }
  EXPECT_EQ(open.Text(), "");
  EXPECT_EQ(combo.Text(), "due");
}

}  // namespace
}  // namespace brenvo::forms
