#include "forms/tool_keys.h"

#include <gtest/gtest.h>

#include "forms/grid.h"
#include "forms/list_field.h"
#include "forms/tab_strip.h"
#include "forms/window.h"
#include "recorder/recording_host.h"

namespace brenvo {
namespace {

class PartsOfAWindow : public testing::Test {
 protected:
  RecordingHost host{[](const std::string&) {}};
  Window window{host, "W", "W", Twips(1), Twips(1)};
};

TEST_F(PartsOfAWindow, KeysStandOnTheToolBarInTheirOrder) {
  ToolBar bar(window, "Toolbar1");
  ToolKeys keys;
  int presses = 0;
  keys.Add(bar, {{"cmOne", "Uno", "Il primo", "F2", [&] { ++presses; }},
                 {},
                 {"cmTwo", "Due", "", "", nullptr, true}});
  ASSERT_EQ(bar.Items.size(), 3u);
  Command& one = *std::get<Command*>(bar.Items[0]);
  EXPECT_EQ(one.Name(), "cmOne");
  EXPECT_EQ(one.Caption(), "Uno");
  EXPECT_EQ(one.Tip, "Il primo");
  EXPECT_EQ(one.Icon, "cmOne");
  EXPECT_EQ(one.Shortcut, "F2");
  one.Press();
  EXPECT_EQ(presses, 1);
  EXPECT_TRUE(std::holds_alternative<Separator>(bar.Items[1]));
  EXPECT_TRUE(std::get<Command*>(bar.Items[2])->Toggle);
  EXPECT_EQ(window.FindCommand("cmTwo"), std::get<Command*>(bar.Items[2]));
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
}  // namespace brenvo
