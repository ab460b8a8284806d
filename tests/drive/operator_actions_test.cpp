#include "tools/drive/operator_actions.h"

#include <gmock/gmock.h>

#include "every_field.h"
#include "recorder/recording_platform.h"
#include "recorder/refused.h"

namespace brenvo::drive {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class Operator : public testing::Test {
 protected:
  recorder::RecordingPlatform machine;
  EveryField w{machine.Host()};
};

TEST_F(Operator, SettingATextRunsItsChange) {
  SetValue(w.Call, "I3XYZ");
  EXPECT_EQ(w.Call.Text(), "I3XYZ");
  EXPECT_THAT(w.TakeEvents(), ElementsAre("Call change"));
}

TEST_F(Operator, SettingAListTakesTheEntryThatEquals) {
  SetValue(w.Band, "  2 m");
  EXPECT_EQ(w.Band.ListIndex(), 1);
  EXPECT_THAT(w.TakeEvents(), ElementsAre("Band change", "Band click"));
}

TEST_F(Operator, SettingAListPassesOverBlanksAroundAnEntry) {
  SetValue(w.Band, "2 m");
  EXPECT_EQ(w.Band.Text(), "  2 m");
}

TEST_F(Operator, SettingAListToNothingTakesTheEmptyEntryOrNone) {
  SetValue(w.Mode, "CW");
  SetValue(w.Mode, "");
  EXPECT_EQ(w.Mode.ListIndex(), 0);
  SetValue(w.Band, "70cm");
  SetValue(w.Band, "");
  EXPECT_EQ(w.Band.ListIndex(), -1);
}

TEST_F(Operator, AListRefusesWhatIsNoEntry) {
  EXPECT_THROW(SetValue(w.Band, "11 m"), recorder::Refused);
  EXPECT_THAT(w.TakeEvents(), IsEmpty());
}

TEST_F(Operator, TheWheelTurnsACharacterWhereThatHasAUse) {
  w.TakeEvents();
  TurnWheel(w.Dial, 4, "up");
  TurnWheel(w.Dial, 0, "down");
  EXPECT_THAT(w.TakeEvents(), ElementsAre("Dial step 4 up", "Dial step 0 down"));
  EXPECT_THROW(TurnWheel(w.Dial, 5, "up"), recorder::Refused);
  EXPECT_THROW(TurnWheel(w.Dial, 0, "left"), recorder::Refused);
  EXPECT_THROW(TurnWheel(w.Call, 0, "up"), recorder::Refused);
  EXPECT_THROW(TurnWheel(w.Cells, 0, "up"), recorder::Refused);
}

TEST_F(Operator, AComboTakesAnyText) {
  SetValue(w.Free, "three");
  EXPECT_EQ(w.Free.Text(), "three");
  EXPECT_EQ(w.Free.ListIndex(), -1);
  EXPECT_THAT(w.TakeEvents(), ElementsAre("Free change"));
  SetValue(w.Free, "two");
  EXPECT_EQ(w.Free.ListIndex(), 1);
  EXPECT_THAT(w.TakeEvents(), ElementsAre("Free change", "Free click"));
}

TEST_F(Operator, SettingAListOfSeveralChoicesAddsOne) {
  SetValue(w.Many, "b");
  SetValue(w.Many, "c");
  SetValue(w.Many, "b");
  EXPECT_TRUE(w.Many.Selected(1));
  EXPECT_TRUE(w.Many.Selected(2));
  EXPECT_FALSE(w.Many.Selected(0));
}

TEST_F(Operator, AValueIsAStateOrANumberWhereTheFieldHoldsOne) {
  SetValue(w.Check, "on");
  SetValue(w.Three, "off");
  SetValue(w.Second, "on");
  SetValue(w.Group, "1");
  SetValue(w.Tune, "70");
  SetValue(w.Query, "12:00:00");
  SetValue(w.Received, "abc");
  EXPECT_TRUE(w.Check.IsOn());
  EXPECT_EQ(w.Three.State(), forms::CheckState::kOff);
  EXPECT_TRUE(w.Second.IsOn());
  EXPECT_EQ(w.Group.Index(), 1);
  EXPECT_EQ(w.Tune.Value(), 70);
  EXPECT_EQ(w.Query.Text(), "12:00:00");
  EXPECT_EQ(w.Received.Text(), "abc");
  EXPECT_THROW(SetValue(w.Check, "grey"), recorder::Refused);
  EXPECT_THROW(SetValue(w.Check, "yes"), recorder::Refused);
  EXPECT_THROW(SetValue(w.Tune, "much"), recorder::Refused);
  EXPECT_THROW(SetValue(w.Meter, "30"), recorder::Refused);
}

TEST_F(Operator, TypingReplacesTheTextKeyByKey) {
  w.Call.SetText("OLD");
  w.Call.Filter = [](char32_t key) { return key == 'x' ? 0 : base::UpperChar(key); };
  w.TakeEvents();
  TypeText(w.Call, "i3xà");
  EXPECT_EQ(w.Call.Text(), "I3À");
  EXPECT_THAT(w.TakeEvents(),
              ElementsAre("Call focus", "Call change", "Call change", "Call change"));
}

TEST_F(Operator, TypingIntoAMaskFillsItsPlaces) {
  TypeText(w.Time, "1234");
  EXPECT_EQ(w.Time.Text(), "12:34");
}

TEST_F(Operator, TypingRefusesWhatCannotBeTypedInto) {
  EXPECT_THROW(TypeText(w.Check, "a"), recorder::Refused);
  w.Call.SetEnabled(false);
  EXPECT_THROW(TypeText(w.Call, "a"), recorder::Refused);
}

TEST_F(Operator, KeysGoToTheField) {
  TypeText(w.Call, "AB");
  PressKey(w.Call, "backspace");
  PressKey(w.Call, "C");
  EXPECT_EQ(w.Call.Text(), "AC");
  EXPECT_THROW(PressKey(w.Call, "F2"), recorder::Refused);
}

TEST_F(Operator, KeysOnAGridGoToItsCurrentCell) {
  std::u32string keys;
  w.Rows.OnKey = [&](char32_t key) {
    keys += key;
    return true;
  };
  PressKey(w.Rows, "x");
  PressKey(w.Rows, "backspace");
  EXPECT_EQ(keys, U"x\b");
  EXPECT_THROW(PressKey(w.Rows, "F2"), recorder::Refused);
}

TEST_F(Operator, TheMenuKeyAsksForTheMenuOfAGridOrList) {
  w.Rows.OnContextMenu = [&] { w.Note("Rows menu"); };
  w.Mode.OnContextMenu = [&] { w.Note("Mode menu"); };
  PressKey(w.Rows, "menu");
  PressKey(w.Mode, "menu");
  EXPECT_THAT(w.TakeEvents(), ElementsAre("Rows menu", "Mode menu"));
  EXPECT_THROW(PressKey(w.Check, "menu"), recorder::Refused);
}

TEST_F(Operator, EnterIsTheFieldsOrElseTheDialogs) {
  bool entered = false;
  PressKey(w.Call, "enter");
  EXPECT_THAT(w.TakeEvents(), ElementsAre("cmOk click"));
  w.Call.OnEnter = [&] { entered = true; };
  PressKey(w.Call, "enter");
  EXPECT_TRUE(entered);
  EXPECT_THAT(w.TakeEvents(), IsEmpty());
  PressKey(w.Call, "escape");
  EXPECT_THAT(w.TakeEvents(), ElementsAre("cmCancel click"));
}

TEST_F(Operator, ADisabledCommandCannotBePressed) {
  EXPECT_THROW(Press(w.cmOff), recorder::Refused);
  EXPECT_THAT(w.TakeEvents(), IsEmpty());
}

TEST_F(Operator, PressingAToggleTurnsIt) {
  Press(w.cmToggle);
  EXPECT_TRUE(w.cmToggle.Down());
  EXPECT_THAT(w.TakeEvents(), ElementsAre("cmToggle change", "cmToggle click"));
}

TEST_F(Operator, ClicksReachEntriesAndCells) {
  ClickAt(w.Band, 2, {});
  ClickAt(w.Group, 1, {});
  ClickAt(w.Cells, 1, 1);
  ClickAt(w.Cells, 0, 1);
  ClickAt(w.Entries, 1, {});
  EXPECT_EQ(w.Cells.Row(), 1);
  EXPECT_EQ(w.Cells.Column(), 1);
  EXPECT_THAT(w.TakeEvents(),
              ElementsAre("Band change", "Band click", "Group change", "Group click", "Cells click",
                          "Cells heading 1", "Entries pick 1"));
}

TEST_F(Operator, ClicksOutsideAreRefused) {
  EXPECT_THROW(ClickAt(w.Band, 3, {}), recorder::Refused);
  EXPECT_THROW(ClickAt(w.Cells, 2, {}), recorder::Refused);
  EXPECT_THROW(ClickAt(w.Cells, 1, 2), recorder::Refused);
  EXPECT_THROW(ClickAt(w.Entries, 2, {}), recorder::Refused);
  EXPECT_THROW(ClickAt(w.Entries, -1, {}), recorder::Refused);
  EXPECT_THROW(ClickAt(w.Call, 0, {}), recorder::Refused);
  EXPECT_THROW(ClickHeading(w.Cells, 2), recorder::Refused);
}

TEST_F(Operator, ADoubleClickTakesTheEntryFirst) {
  DoubleClickAt(w.Band, 0, {});
  EXPECT_EQ(w.Band.ListIndex(), 0);
  DoubleClickAt(w.Cells, 1, 0);
  DoubleClickAt(w.Call, {}, {});
  EXPECT_THAT(w.TakeEvents(), ElementsAre("Band change", "Band click", "Band double",
                                          "Cells double", "Call double"));
}

TEST_F(Operator, ABoxIsPressedUntilItShowsTheState) {
  Tick(w.Three, "on");
  EXPECT_EQ(w.Three.State(), forms::CheckState::kOn);
  EXPECT_THAT(w.TakeEvents(),
              ElementsAre("Three change", "Three click", "Three change", "Three click"));
  Tick(w.Three, "on");
  EXPECT_THAT(w.TakeEvents(), IsEmpty());
  EXPECT_THROW(Tick(w.Check, "grey"), recorder::Refused);
}

TEST_F(Operator, AnOptionGoesOffByItsFellow) {
  Tick(w.First, "on");
  EXPECT_THROW(Tick(w.First, "off"), recorder::Refused);
  Tick(w.Second, "on");
  Tick(w.First, "off");
  EXPECT_FALSE(w.First.IsOn());
}

TEST_F(Operator, ATickedToggleIsPressedOnce) {
  Tick(w.cmToggle, "on");
  Tick(w.cmToggle, "on");
  EXPECT_TRUE(w.cmToggle.Down());
  EXPECT_THAT(w.TakeEvents(), ElementsAre("cmToggle change", "cmToggle click"));
  EXPECT_THROW(Tick(w.cmOk, "on"), recorder::Refused);
}

TEST_F(Operator, ATickReachesOneEntryOfSeveral) {
  TickEntry(w.Many, 2, "on");
  TickEntry(w.Many, 2, "on");
  TickEntry(w.Many, 0, "off");
  EXPECT_TRUE(w.Many.Selected(2));
  TickEntry(w.Entries, 0, "off");
  TickEntry(w.Entries, 1, "off");
  TickEntry(w.Group, 1, "on");
  EXPECT_THAT(w.TakeEvents(), ElementsAre("Many change", "Many click", "Entries pick 0",
                                          "Group change", "Group click"));
  EXPECT_THROW(TickEntry(w.Group, 1, "off"), recorder::Refused);
  EXPECT_THROW(TickEntry(w.Band, 1, "on"), recorder::Refused);
  EXPECT_THROW(TickEntry(w.Many, 3, "on"), recorder::Refused);
}

TEST_F(Operator, APieceOfATextIsSelectedAsFarAsItGoes) {
  w.Call.SetText("I3XYZ");
  SelectText(w.Call, 1, 2);
  EXPECT_EQ(w.Call.SelText(), "3X");
  w.Received.SetText("dx de");
  SelectText(w.Received, 3, 99);
  EXPECT_EQ(w.Received.SelText(), "de");
  EXPECT_THROW(SelectText(w.Call, -1, 2), recorder::Refused);
  EXPECT_THROW(SelectText(w.Check, 0, 0), recorder::Refused);
}

TEST_F(Operator, RowsOfAGridAreEditedAddedAndRemoved) {
  EditGridCell(w.Rows, 1, 1, "B");
  EditGridCell(w.Rows, 3, 0, "new");
  RemoveGridRow(w.Rows, 2);
  EXPECT_THAT(w.source.rows, ElementsAre(ElementsAre("a", "B"), ElementsAre("new", "")));
  EXPECT_THROW(EditGridCell(w.Rows, 4, 0, "x"), recorder::Refused);
  EXPECT_THROW(EditGridCell(w.Rows, 0, 0, "x"), recorder::Refused);
  EXPECT_THROW(EditGridCell(w.Rows, 1, 2, "x"), recorder::Refused);
  EXPECT_THROW(RemoveGridRow(w.Rows, 3), recorder::Refused);
  EXPECT_THROW(EditGridCell(w.Cells, 1, 0, "x"), recorder::Refused);
}

TEST_F(Operator, ATableIsArrangedByItsHeadingsWithOrWithoutTheSignOfTheirOrder) {
  SortTable(w.Arranged, "Second", false);
  SortTable(w.Arranged, "First", true);
  FilterTable(w.Arranged, "First", ">1");
  MoveTableColumn(w.Arranged, "Second", "First");
  DrawColumn(w.Arranged, "Second", 1200);
  EXPECT_THAT(w.arranging.asked, ElementsAre("sort 1", "sort 0 add", "filter 0 ", "filter 0 >",
                                             "filter 0 >1", "move 1 0", "width 1 1200"));
  EXPECT_THROW(SortTable(w.Arranged, "Third", false), recorder::Refused);
  EXPECT_THROW(SortTable(w.Rows, "First", false), recorder::Refused);
}

TEST_F(Operator, AMarkIsSetOrTakenAway) {
  ToggleMark(w.Arranged, 1);
  ToggleMark(w.Arranged, 2);
  EXPECT_THAT(w.arranging.asked, ElementsAre("mark 1 1", "unmark 2 2"));
  EXPECT_THROW(ToggleMark(w.Arranged, 0), recorder::Refused);
  EXPECT_THROW(ToggleMark(w.Arranged, 3), recorder::Refused);
  EXPECT_THROW(ToggleMark(w.Cells, 1), recorder::Refused);
}

}  // namespace
}  // namespace brenvo::drive
