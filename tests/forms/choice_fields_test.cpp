#include "forms/choice_fields.h"
#include "forms/list_field.h"
#include "tests/forms/sample_window.h"

namespace brenvo::forms {
namespace {

using ChoiceFields = Fields;

TEST_F(ChoiceFields, ADropDownListHoldsAnEntryOrNothing) {
  window.Pick.SetItems({"SSB", "CW"});
  Count(window.Pick);
  window.Pick.SetListIndex(1);
  EXPECT_EQ(window.Pick.Text(), "CW");
  window.Pick.SetText("nothing of the kind");
  EXPECT_EQ(window.Pick.Text(), "");
  EXPECT_EQ(window.Pick.ListIndex(), -1);
  EXPECT_EQ(changes, 2);
}

TEST_F(ChoiceFields, AnEntryIsTakenByItsPlaceFromNoughtToTheLast) {
  window.Pick.SetItems({"SSB", "CW", "FM"});
  Count(window.Pick);
  window.Pick.SetListIndex(0);
  EXPECT_EQ(window.Pick.Text(), "SSB");
  window.Pick.SetListIndex(2);
  EXPECT_EQ(window.Pick.Text(), "FM");
  window.Pick.SetListIndex(2);
  EXPECT_EQ(changes, 2);
  for (const int none : {3, -2, -1}) {
    window.Pick.SetListIndex(1);
    window.Pick.SetListIndex(none);
    EXPECT_EQ(window.Pick.ListIndex(), -1) << none;
    EXPECT_EQ(window.Pick.Text(), "") << none;
  }
}

TEST_F(ChoiceFields, AnEntryThatGoesTakesTheCurrentOneWithItOrMovesIt) {
  window.Pick.SetItems({"SSB", "CW", "FM"});
  window.Pick.SetListIndex(1);
  window.Pick.RemoveItem(2);
  EXPECT_EQ(window.Pick.ListIndex(), 1);
  window.Pick.RemoveItem(0);
  EXPECT_EQ(window.Pick.ListIndex(), 0);
  EXPECT_EQ(window.Pick.Text(), "CW");
  for (const int none : {-1, 1}) window.Pick.RemoveItem(none);
  EXPECT_EQ(window.Pick.Items(), std::vector<std::string>{"CW"});
  window.Pick.RemoveItem(0);
  EXPECT_EQ(window.Pick.ListIndex(), -1);
  EXPECT_EQ(window.Pick.Text(), "");
}

TEST_F(ChoiceFields, AComboTakesAnyTextAndFindsItsEntry) {
  window.Combo.SetItems({"I    Italia"});
  window.Combo.SetText("X");
  EXPECT_EQ(window.Combo.ListIndex(), -1);
  window.Combo.SetText("I    Italia");
  EXPECT_EQ(window.Combo.ListIndex(), 0);
}

TEST_F(ChoiceFields, AMultiListMarksEntriesOneByOne) {
  window.Multi.SetItems({"a", "b"});
  window.Multi.Pick(1);
  EXPECT_FALSE(window.Multi.Selected(0));
  EXPECT_TRUE(window.Multi.Selected(1));
  window.Multi.Pick(1);
  EXPECT_FALSE(window.Multi.Selected(1));
}

TEST_F(ChoiceFields, OfAMultiListOnlyEntriesThatAreThereAreMarked) {
  window.Multi.SetItems({"a", "b"});
  Count(window.Multi);
  for (const int none : {-1, 2}) {
    window.Multi.SetSelected(none, true);
    EXPECT_FALSE(window.Multi.Selected(none));
  }
  window.Multi.SetSelected(0, true);
  window.Multi.SetSelected(0, true);
  window.Multi.SetSelected(1, true);
  EXPECT_EQ(changes, 2);
  window.Multi.RemoveItem(0);
  EXPECT_TRUE(window.Multi.Selected(0));
  EXPECT_FALSE(window.Multi.Selected(1));
  window.Multi.SetEnabled(false);
  window.Multi.Pick(0);
  EXPECT_TRUE(window.Multi.Selected(0));
}

TEST_F(ChoiceFields, ABoxWithThreeStatesStartsGreyAndGoesRound) {
  EXPECT_EQ(window.Three.State(), CheckState::kGrey);
  window.Three.Press();
  EXPECT_EQ(window.Three.State(), CheckState::kOff);
  window.Three.Press();
  EXPECT_EQ(window.Three.State(), CheckState::kOn);
  window.Three.Press();
  EXPECT_EQ(window.Three.State(), CheckState::kGrey);
  window.Two.Press();
  window.Two.Press();
  EXPECT_EQ(window.Two.State(), CheckState::kOff);
}

TEST_F(ChoiceFields, OneOptionOfARowIsSet) {
  window.Left.JoinWith(window.Right);
  window.Left.SetOn(true);
  window.Right.Press();
  EXPECT_FALSE(window.Left.IsOn());
  EXPECT_TRUE(window.Right.IsOn());
}

TEST_F(ChoiceFields, OptionsThatAreJoinedClearEachOtherWhicheverIsPressed) {
  window.Left.JoinWith(window.Right);
  window.Right.SetOn(true);
  Count(window.Right);
  window.Left.Press();
  EXPECT_TRUE(window.Left.IsOn());
  EXPECT_FALSE(window.Right.IsOn());
  EXPECT_EQ(changes, 1);
  window.Left.SetOn(false);
  EXPECT_FALSE(window.Right.IsOn());
  window.Right.SetEnabled(false);
  window.Right.Press();
  EXPECT_FALSE(window.Right.IsOn());
}

TEST_F(ChoiceFields, OfAGroupOneOptionOfThoseThatAreThereIsChosen) {
  OptionGroup group(window, "Group", {"uno", "due", "tre"});
  int clicks = 0;
  Count(group);
  group.OnClick = [&] { ++clicks; };
  EXPECT_EQ(group.Index(), 0);
  group.SetIndex(2);
  group.SetIndex(2);
  EXPECT_EQ(group.Index(), 2);
  for (const int none : {-1, 3}) group.SetIndex(none);
  EXPECT_EQ(group.Index(), 2);
  EXPECT_EQ(changes, 1);
  group.Press(0);
  EXPECT_EQ(group.Index(), 0);
  group.Press(0);
  EXPECT_EQ(changes, 2);
  EXPECT_EQ(clicks, 2);
  group.SetEnabled(false);
  group.Press(1);
  EXPECT_EQ(group.Index(), 0);
}

}  // namespace
}  // namespace brenvo::forms
