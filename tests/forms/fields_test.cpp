#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "forms/choice_fields.h"
#include "forms/command.h"
#include "forms/grid.h"
#include "forms/list_field.h"
#include "forms/picture_box.h"
#include "forms/rich_text.h"
#include "forms/status_bar.h"
#include "forms/text_field.h"
#include "forms/window_list.h"

namespace brenvo::forms {
namespace {

// A host that shows nothing and writes down what it is asked.
class SilentHost : public forms::WindowHost {
 public:
  std::vector<std::string> told;
  std::function<void(Window&)> duringModal;
  void Show(Window& window) override { told.push_back("show " + window.Name()); }
  void ShowModal(Window& window) override {
    told.push_back("modal " + window.Name());
    if (duringModal) duringModal(window);
  }
  void Hide(Window& window) override { told.push_back("hide " + window.Name()); }
  void Forget(Window& window) override { told.push_back("forget " + window.Name()); }
  void MoveFocus(Field& field) override { told.push_back("focus " + field.Name()); }
  void SetBusy(bool) override {}
  void ProcessEvents() override {}
  base::Twips ScreenWidth() override { return base::Twips(19200); }
  base::Twips ScreenHeight() override { return base::Twips(12000); }
  void ReportFailure(std::string_view text) override {
    told.push_back("failure " + std::string(text));
  }
  void EndProgram() override { throw forms::ProgramEnded{}; }
};

class SampleWindow : public Window {
 public:
  explicit SampleWindow(forms::WindowHost& host)
      : Window(host, "Sample", "Sample", base::Twips(3000), base::Twips(2000)) {}
  TextField Text{*this, "Text"};
  MaskedField Time{*this, "Time", "##:##"};
  ListField Pick{*this, "Pick", ListStyle::kDropDown};
  ListField Combo{*this, "Combo", ListStyle::kCombo};
  ListField Multi{*this, "Multi", ListStyle::kMulti};
  CheckBox Two{*this, "Two"};
  CheckBox Three{*this, "Three", {}, true};
  OptionButton Left{*this, "Left"};
  OptionButton Right{*this, "Right"};
  Slider Slide{*this, "Slide", 10, 20, 15};
  CellGrid Cells{*this, "Cells"};
  RichText Rich{*this, "Rich"};
  Command Key{*this, "cmKey", "&Key"};
  std::vector<std::string> life;
  bool refuses = false;
  bool failsToLoad = false;
  void Load() override {
    life.push_back("load");
    if (failsToLoad) throw std::runtime_error("no");
  }
  void Activate() override { life.push_back("activate"); }
  void Resize() override { life.push_back("resize"); }
  bool QueryUnload() override { return !refuses; }
  void Unload() override { life.push_back("unload"); }
};

struct Fields : testing::Test {
  SilentHost host;
  SampleWindow window{host};
  int changes = 0;
  void Count(Field& field) {
    field.OnChange = [this] { ++changes; };
  }
};

TEST_F(Fields, AHeldTextIsShownAndRunsNoChangeEvent) {
  int shown = 0;
  const auto watching = window.Text.Shown.Subscribe([&] { ++shown; });
  Count(window.Text);
  EXPECT_TRUE(window.Text.HoldText("held"));
  EXPECT_FALSE(window.Text.HoldText("held"));
  EXPECT_EQ(window.Text.Text(), "held");
  EXPECT_EQ(shown, 1);
  EXPECT_EQ(changes, 0);
  window.Text.SetText("held");
  EXPECT_EQ(changes, 0);
  window.Text.SetText("set");
  EXPECT_EQ(changes, 1);
}

TEST_F(Fields, AChangeEventRunsOncePerChangeAndNotForTheSameValue) {
  Count(window.Text);
  window.Text.SetText("a");
  window.Text.SetText("a");
  EXPECT_EQ(changes, 1);
  window.Text.TypeKey('b');
  EXPECT_EQ(changes, 2);
}

TEST_F(Fields, FocusSelectsAllAndTheFirstKeyReplacesIt) {
  window.Text.SetText("old");
  window.Text.Focus();
  window.Text.TypeKey('n');
  window.Text.TypeKey('e');
  EXPECT_EQ(window.Text.Text(), "ne");
  window.Text.TypeKey(kBackspace);
  EXPECT_EQ(window.Text.Text(), "n");
}

TEST_F(Fields, AFilterSwallowsAndTurnsKeys) {
  window.Text.Filter = [](char32_t key) -> char32_t { return key == 'x' ? 0 : key - 32; };
  window.Text.TypeKey('x');
  window.Text.TypeKey('a');
  EXPECT_EQ(window.Text.Text(), "A");
  EXPECT_EQ(window.Text.FilterText("axb"), "AB");
}

TEST_F(Fields, ACompletionWhileTypingLeavesTheCaretInItsPlace) {
  window.Text.OnChange = [&] {
    if (window.Text.Text() == "I") window.Text.SetText("I    Italia");
  };
  window.Text.TypeKey('I');
  EXPECT_EQ(window.Text.SelStart(), 1u);
  window.Text.TypeKey('S');
  EXPECT_EQ(window.Text.Text(), "IS    Italia");
}

TEST_F(Fields, ReadOnlyAndFullFieldsRefuseKeys) {
  window.Text.ReadOnly = true;
  window.Text.TypeKey('a');
  EXPECT_EQ(window.Text.Text(), "");
  window.Text.ReadOnly = false;
  window.Text.MaxLength = 1;
  window.Text.TypeKey('a');
  window.Text.TypeKey('b');
  EXPECT_EQ(window.Text.Text(), "a");
}

TEST_F(Fields, AShorterTextTakesTheCaretToItsEnd) {
  window.Text.SetText("IK3ABC");
  window.Text.Select(5, 1);
  window.Text.SetText("I2");
  EXPECT_EQ(window.Text.SelStart(), 2u);
  EXPECT_EQ(window.Text.SelLength(), 0u);
  window.Text.TypeKey('X');
  EXPECT_EQ(window.Text.Text(), "I2X");
}

TEST_F(Fields, AKeyReplacesWhatIsSelectedAlsoInAFullField) {
  window.Text.MaxLength = 3;
  window.Text.SetText("abc");
  window.Text.Select(1, 1);
  window.Text.TypeKey('x');
  EXPECT_EQ(window.Text.Text(), "axc");
  window.Text.TypeKey('y');
  EXPECT_EQ(window.Text.Text(), "axc");
  // The logic may have put in more than can be typed; one selected character makes no room then.
  window.Text.SetText("abcde");
  window.Text.Select(0, 2);
  window.Text.TypeKey('x');
  EXPECT_EQ(window.Text.Text(), "abcde");
  window.Text.Select(0, 3);
  window.Text.TypeKey('x');
  EXPECT_EQ(window.Text.Text(), "xde");
}

TEST_F(Fields, BackspaceCanEmptyTheWholeField) {
  window.Text.BackspaceClears = true;
  window.Text.SetText("abc");
  window.Text.TypeKey(kBackspace);
  EXPECT_EQ(window.Text.Text(), "");
}

TEST_F(Fields, AFieldThatIsLockedOrOffTakesNoKey) {
  window.Text.SetText("a");
  window.Time.SetText("12:34");
  for (TextField* field :
       {static_cast<TextField*>(&window.Text), static_cast<TextField*>(&window.Time)}) {
    const std::string before = field->Text();
    field->Select(0, 1);
    field->SetEnabled(false);
    field->TypeKey('5');
    field->SetEnabled(true);
    field->ReadOnly = true;
    field->TypeKey('5');
    field->TypeKey(kBackspace);
    EXPECT_EQ(field->Text(), before);
    field->ReadOnly = false;
    field->TypeKey('5');
    EXPECT_EQ(field->Text(), "5" + before.substr(1));
  }
}

TEST_F(Fields, BackspaceTakesWhatIsSelectedElseOneCharacterBeforeTheCaret) {
  window.Text.SetText("abcdef");
  window.Text.Select(4, 0);
  window.Text.TypeKey(kBackspace);
  EXPECT_EQ(window.Text.Text(), "abcef");
  EXPECT_EQ(window.Text.SelStart(), 3u);
  window.Text.Select(1, 2);
  window.Text.TypeKey(kBackspace);
  EXPECT_EQ(window.Text.Text(), "aef");
  EXPECT_EQ(window.Text.SelStart(), 1u);
  window.Text.TypeKey('x');
  EXPECT_EQ(window.Text.Text(), "axef");
  window.Text.Select(0, 0);
  window.Text.TypeKey(kBackspace);
  EXPECT_EQ(window.Text.Text(), "axef");
}

TEST_F(Fields, ASelectionIsHeldWithinTheTextAndTold) {
  window.Text.SetText("èàù");
  window.Text.Select(1, 1);
  EXPECT_EQ(window.Text.SelText(), "à");
  window.Text.Select(2, 9);
  EXPECT_EQ(window.Text.SelText(), "ù");
  window.Text.Select(9, 9);
  EXPECT_EQ(window.Text.SelStart(), 3u);
  EXPECT_EQ(window.Text.SelLength(), 0u);
}

TEST_F(Fields, EnterRunsItsEventAndIsNoCharacter) {
  int entered = 0;
  for (TextField* field :
       {static_cast<TextField*>(&window.Text), static_cast<TextField*>(&window.Time)}) {
    field->TypeKey(kEnter);
    field->OnEnter = [&] { ++entered; };
    field->TypeKey(kEnter);
    EXPECT_EQ(field->Text(), "");
  }
  EXPECT_EQ(entered, 2);
}

TEST_F(Fields, OfAPastedTextTheFilterLetsNoControlCharacterThrough) {
  EXPECT_EQ(window.Text.FilterText("a\tb"), "a\tb");  // nobody asked for a filter
  window.Text.Filter = [](char32_t key) { return key; };
  EXPECT_EQ(window.Text.FilterText("a\tb c\x1F"), "ab c");
}

TEST_F(Fields, AMaskIsFilledPlaceByPlace) {
  window.Time.SetText("12:34");
  window.Time.Select(0, 99);
  window.Time.TypeKey('0');
  EXPECT_EQ(window.Time.Text(), "0_:__");
  window.Time.TypeKey('9');
  window.Time.TypeKey('x');
  window.Time.TypeKey('3');
  EXPECT_EQ(window.Time.Text(), "09:3_");
  window.Time.TypeKey(kBackspace);
  window.Time.TypeKey(kBackspace);
  EXPECT_EQ(window.Time.Text(), "0_:__");
  EXPECT_EQ(window.Time.EmptyText(), "__:__");
}

TEST_F(Fields, AMaskKeepsItsPlacesWhateverIsTyped) {
  window.Time.TypeKey('1');  // the empty text does not fit: the mask begins
  EXPECT_EQ(window.Time.Text(), "1_:__");
  window.Time.TypeKey('2');
  EXPECT_EQ(window.Time.SelStart(), 3u);  // over the colon
  window.Time.TypeKey('3');
  window.Time.TypeKey('4');
  EXPECT_EQ(window.Time.Text(), "12:34");
  window.Time.TypeKey('5');  // it is full
  EXPECT_EQ(window.Time.Text(), "12:34");
  for (const char32_t key : {U'/', U':', U'a'}) window.Time.TypeKey(key);
  EXPECT_EQ(window.Time.Text(), "12:34");
  window.Time.Select(2, 0);
  window.Time.TypeKey('9');  // at the colon it goes behind it
  EXPECT_EQ(window.Time.Text(), "12:94");
  window.Time.Select(3, 0);
  window.Time.TypeKey(kBackspace);  // behind the colon it goes before it
  EXPECT_EQ(window.Time.Text(), "1_:94");
  EXPECT_EQ(window.Time.SelStart(), 1u);
  window.Time.Select(1, 3);
  window.Time.TypeKey(kBackspace);
  EXPECT_EQ(window.Time.Text(), "1_:_4");
  window.Time.Select(0, 0);
  window.Time.TypeKey(kBackspace);
  EXPECT_EQ(window.Time.Text(), "1_:_4");
  window.Time.SetText("nothing that fits");
  window.Time.Select(0, 0);
  window.Time.TypeKey('0');
  EXPECT_EQ(window.Time.Text(), "0_:__");
  window.Time.SetMask("##.#");
  EXPECT_EQ(window.Time.EmptyText(), "__._");
}

TEST_F(Fields, ADropDownListHoldsAnEntryOrNothing) {
  window.Pick.SetItems({"SSB", "CW"});
  Count(window.Pick);
  window.Pick.SetListIndex(1);
  EXPECT_EQ(window.Pick.Text(), "CW");
  window.Pick.SetText("nothing of the kind");
  EXPECT_EQ(window.Pick.Text(), "");
  EXPECT_EQ(window.Pick.ListIndex(), -1);
  EXPECT_EQ(changes, 2);
}

TEST_F(Fields, AnEntryIsTakenByItsPlaceFromNoughtToTheLast) {
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

TEST_F(Fields, AnEntryThatGoesTakesTheCurrentOneWithItOrMovesIt) {
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

TEST_F(Fields, AComboTakesAnyTextAndFindsItsEntry) {
  window.Combo.SetItems({"I    Italia"});
  window.Combo.SetText("X");
  EXPECT_EQ(window.Combo.ListIndex(), -1);
  window.Combo.SetText("I    Italia");
  EXPECT_EQ(window.Combo.ListIndex(), 0);
}

TEST_F(Fields, AMultiListMarksEntriesOneByOne) {
  window.Multi.SetItems({"a", "b"});
  window.Multi.Pick(1);
  EXPECT_FALSE(window.Multi.Selected(0));
  EXPECT_TRUE(window.Multi.Selected(1));
  window.Multi.Pick(1);
  EXPECT_FALSE(window.Multi.Selected(1));
}

TEST_F(Fields, OfAMultiListOnlyEntriesThatAreThereAreMarked) {
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

TEST_F(Fields, ABoxWithThreeStatesStartsGreyAndGoesRound) {
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

TEST_F(Fields, OneOptionOfARowIsSet) {
  window.Left.JoinWith(window.Right);
  window.Left.SetOn(true);
  window.Right.Press();
  EXPECT_FALSE(window.Left.IsOn());
  EXPECT_TRUE(window.Right.IsOn());
}

TEST_F(Fields, OptionsThatAreJoinedClearEachOtherWhicheverIsPressed) {
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

TEST_F(Fields, OfAGroupOneOptionOfThoseThatAreThereIsChosen) {
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

TEST_F(Fields, AGaugeTellsEachReadingOnce) {
  Gauge gauge(window, "Gauge", 3, 9);
  EXPECT_EQ(gauge.Value(), 3);
  Count(gauge);
  gauge.SetValue(3);
  gauge.SetValue(12);
  EXPECT_EQ(gauge.Value(), 12);
  EXPECT_EQ(changes, 1);
}

TEST_F(Fields, TheScreenLearnsOfEachChangeOfAField) {
  int shown = 0;
  std::vector<Subscription> screens;
  EntryArray entries(window, "Entries");
  Label label(window, "Label", {.caption = "x"});
  PictureBox picture(window, "Picture");
  StatusBar bar(window, "Bar", 1);
  for (Field* field :
       {static_cast<Field*>(&window.Text), static_cast<Field*>(&window.Time),
        static_cast<Field*>(&window.Pick), static_cast<Field*>(&window.Combo),
        static_cast<Field*>(&window.Multi), static_cast<Field*>(&window.Two),
        static_cast<Field*>(&window.Slide), static_cast<Field*>(&window.Key),
        static_cast<Field*>(&window.Rich), static_cast<Field*>(&entries),
        static_cast<Field*>(&label), static_cast<Field*>(&picture), static_cast<Field*>(&bar)}) {
    screens.push_back(field->Shown.Subscribe([&] { ++shown; }));
  }
  const std::function<void()> acts[] = {
      [&] { window.Text.SetText("abc"); },
      [&] { window.Text.Select(1, 1); },
      [&] { window.Text.SetVisible(false); },
      [&] { window.Text.SetEnabled(false); },
      [&] { window.Text.SetCaption("c"); },
      [&] { window.Time.SetMask("##"); },
      [&] {
        window.Combo.SetItems({"a", "b"});
      },
      [&] { window.Combo.AddItem("c"); },
      [&] { window.Combo.SetListIndex(1); },
      [&] { window.Combo.RemoveItem(0); },
      [&] { window.Multi.AddItem("x"); },
      [&] { window.Multi.SetSelected(0, true); },
      [&] { window.Two.SetOn(true); },
      [&] { window.Slide.SetMinimum(11); },
      [&] { window.Slide.SetMaximum(19); },
      [&] { window.Slide.SetValue(12); },
      [&] { window.Key.SetDown(true); },
      [&] { window.Rich.Append("x"); },
      [&] { window.Rich.SetSelColour(base::kRed); },
      [&] { entries.Add("x"); },
      [&] { entries.SetEntryCaption(0, "y"); },
      [&] { entries.SetChecked(0, true); },
      [&] { entries.Clear(); },
      [&] { label.SetText("y"); },
      [&] { picture.SetPicture("p.png"); },
      [&] { picture.SetTop(base::Twips(5)); },
      [&] { bar.SetPanel(1, "x"); },
      [&] { bar.SetMinimumWidth(1, base::Twips(5)); },
  };
  for (std::size_t i = 0; i < std::size(acts); ++i) {
    shown = 0;
    acts[i]();
    EXPECT_EQ(shown, 1) << i;
  }
  // What is already so is told to nobody.
  const std::function<void()> repeated[] = {
      [&] { window.Text.SetText("abc"); },     [&] { window.Text.SetVisible(false); },
      [&] { window.Text.SetEnabled(false); },  [&] { window.Text.SetCaption("c"); },
      [&] { window.Two.SetOn(true); },         [&] { window.Slide.SetValue(12); },
      [&] { window.Key.SetDown(true); },       [&] { label.SetText("y"); },
      [&] { picture.SetTop(base::Twips(5)); }, [&] { bar.SetPanel(1, "x"); },
  };
  shown = 0;
  for (const auto& act : repeated) act();
  EXPECT_EQ(shown, 0);
}

TEST_F(Fields, APictureKeepsItsCirclesUntilTheNextOne) {
  PictureBox picture(window, "Picture");
  int drawn = 0;
  const Subscription screen = picture.Drawn.Subscribe([&](const PictureBox::Circle&) { ++drawn; });
  picture.SetPicture("p.png");
  picture.Draw({base::Twips(1), base::Twips(2), base::Twips(3), base::kRed});
  picture.Draw({base::Twips(4), base::Twips(5), base::Twips(6), base::kRed});
  ASSERT_EQ(picture.Circles().size(), 2u);
  EXPECT_EQ(picture.Circles()[1].x, base::Twips(4));
  EXPECT_EQ(drawn, 2);
  picture.SetPicture("q.png");
  EXPECT_TRUE(picture.Circles().empty());
}

TEST_F(Fields, AnEntryOfAnArrayRunsItsActionWithItsNumber) {
  EntryArray entries(window, "Entries");
  entries.Pick(0);
  int picked = -1;
  entries.OnPick = [&](int index) { picked = index; };
  entries.Add("uno");
  entries.Add("due", true);
  EXPECT_FALSE(entries.Entries()[0].checked);
  EXPECT_TRUE(entries.Entries()[1].checked);
  entries.Pick(1);
  EXPECT_EQ(picked, 1);
  entries.SetEnabled(false);
  entries.Pick(0);
  EXPECT_EQ(picked, 1);
  EXPECT_THROW(entries.SetChecked(2, true), std::out_of_range);
}

TEST_F(Fields, ALimitThatMovesPastTheValueTakesItAlong) {
  Count(window.Slide);
  window.Slide.SetMaximum(12);
  EXPECT_EQ(window.Slide.Value(), 12);
  window.Slide.SetMinimum(0);
  window.Slide.SetValue(-5);
  EXPECT_EQ(window.Slide.Value(), 0);
  EXPECT_EQ(changes, 2);
}

TEST_F(Fields, ATogglePressedFlipsBeforeItsActionRuns) {
  window.Key.Toggle = true;
  bool downInAction = false;
  window.Key.OnClick = [&] { downInAction = window.Key.Down(); };
  window.Key.Press();
  EXPECT_TRUE(downInAction);
  window.Key.SetEnabled(false);
  window.Key.Press();
  EXPECT_TRUE(window.Key.Down());
}

TEST_F(Fields, AGridDropsWhatShrinkingLeavesOutside) {
  window.Cells.SetRows(3);
  window.Cells.SetColumns(2);
  window.Cells.SetCell(2, 1, "x");
  window.Cells.SetRows(2);
  window.Cells.SetRows(3);
  EXPECT_EQ(window.Cells.Cell(2, 1), "");
  EXPECT_THROW(window.Cells.SetCell(3, 0, "x"), std::out_of_range);
}

TEST_F(Fields, ATextAreaKeepsTheColourOfItsEnd) {
  window.Rich.Append("ab", base::kRed);
  window.Rich.Append("c");
  ASSERT_EQ(window.Rich.Runs().size(), 1u);
  window.Rich.Append("d", base::kBlack);
  window.Rich.Select(0, 1);
  window.Rich.SetSelColour(base::kBlack);
  const auto runs = window.Rich.Runs();
  ASSERT_EQ(runs.size(), 3u);
  EXPECT_EQ(runs[1].text, "bc");
  EXPECT_EQ(runs[1].colour, base::kRed);
}

TEST_F(Fields, FindIgnoresCaseAndLeavesTheSelectionAlone) {
  window.Rich.Append("xx DX de IK3");
  window.Rich.Select(1, 2);
  EXPECT_EQ(window.Rich.Find("dx DE", 0), 3u);
  EXPECT_EQ(window.Rich.Find("dx DE", 4), RichText::npos);
  EXPECT_EQ(window.Rich.SelStart(), 1u);
  window.Rich.Erase(0, 3);
  EXPECT_EQ(window.Rich.Text(), "DX de IK3");
}

struct Life : testing::Test {
  SilentHost host;
  WindowList windows{host};
  SampleWindow* made = nullptr;
  bool failsToLoad = false;
  Life() {
    windows.Register("Sample", [this] {
      auto window = std::make_unique<SampleWindow>(host);
      window->failsToLoad = failsToLoad;
      made = window.get();
      return window;
    });
  }
};

TEST_F(Life, ASingleInstanceIsLoadedOnce) {
  Window* first = windows.LoadSingle("Sample");
  EXPECT_EQ(windows.LoadSingle("Sample"), first);
  EXPECT_NE(windows.LoadNew("Sample"), first);
  EXPECT_EQ(windows.InstanceName(*made), "Sample#2");
  EXPECT_EQ(windows.FindInstance("Sample#2"), made);
}

// Windows that live at one of two addresses, so that a new one takes the place of one that went.
class AtOnePlace : public Window {
 public:
  using Window::Window;
  static void* operator new(std::size_t size) {
    EXPECT_LE(size, sizeof places_[0].bytes);
    Place& place = places_[0].taken ? places_[1] : places_[0];
    place.taken = true;
    return place.bytes;
  }
  static void operator delete(void* bytes) {
    for (Place& place : places_) place.taken = place.taken && place.bytes != bytes;
  }

 private:
  struct Place {
    alignas(Window) unsigned char bytes[sizeof(Window)];
    bool taken;
  };
  static inline Place places_[2];
};

TEST_F(Life, ASingleInstanceIsNotMistakenForAWindowThatTookItsPlaceInMemory) {
  for (const char* name : {"A", "B"}) {
    windows.Register(name, [this, name] {
      return std::make_unique<AtOnePlace>(host, name, name, base::Twips(1), base::Twips(1));
    });
  }
  const Window* first = nullptr;
  windows.RunEvent([&] {
    first = windows.LoadSingle("A");
    windows.Unload(*windows.Find("A"));
  });
  ASSERT_EQ(windows.LoadNew("B"), first);
  EXPECT_EQ(windows.LoadSingle("A")->Name(), "A");
}

TEST_F(Life, ANameThatNobodyRegisteredIsNoWindow) { EXPECT_EQ(windows.LoadNew("X"), nullptr); }

TEST_F(Life, AWindowMayRefuseToClose) {
  windows.LoadNew("Sample");
  made->refuses = true;
  EXPECT_FALSE(made->Close());
  EXPECT_TRUE(made->Loaded());
  made->refuses = false;
  EXPECT_TRUE(made->Close());
  EXPECT_TRUE(windows.Loaded().empty());
}

TEST_F(Life, AModalWindowActivatesBeforeItWaitsAndTheOneBehindComesBack) {
  Window* behind = windows.LoadSingle("Sample");
  SampleWindow* first = made;
  windows.Show(*behind);
  Window* dialog = windows.LoadNew("Sample");
  host.duringModal = [](Window& window) { window.Hide(); };
  windows.ShowModal(*dialog);
  EXPECT_EQ(made->life, (std::vector<std::string>{"load", "activate"}));
  EXPECT_EQ(first->life, (std::vector<std::string>{"load", "activate", "activate"}));
  EXPECT_TRUE(dialog->Loaded());
  EXPECT_FALSE(dialog->Visible());
}

TEST_F(Life, ADialogThatIsGoneWhenItsWaitEndsCanStillBeReadInTheEvent) {
  Window* dialog = windows.LoadNew("Sample");
  SampleWindow* answering = made;
  host.duringModal = [this](Window& window) {
    windows.RunEvent([&] {
      static_cast<SampleWindow&>(window).Text.SetText("answer");
      window.Close();
    });
  };
  windows.ShowModal(*dialog);
  EXPECT_FALSE(answering->Loaded());
  EXPECT_EQ(answering->Text.Text(), "answer");
  EXPECT_EQ(answering->life.back(), "unload");
}

TEST_F(Life, AWindowThatIsShownBehindADialogLeavesTheDialogActive) {
  Window* other = windows.LoadNew("Sample");
  SampleWindow* behind = made;
  Window* dialog = windows.LoadNew("Sample");
  host.duringModal = [&](Window& window) {
    windows.Show(*other);
    windows.Activated(*other);
    windows.Activated(window);
    window.Hide();
  };
  windows.ShowModal(*dialog);
  EXPECT_EQ(made->life, (std::vector<std::string>{"load", "activate"}));
  EXPECT_EQ(behind->life, (std::vector<std::string>{"load"}));
  EXPECT_TRUE(other->Visible());
  windows.Activated(*other);
  EXPECT_EQ(behind->life, (std::vector<std::string>{"load", "activate"}));
}

TEST_F(Life, AFailureEndsTheEventAndIsTold) {
  windows.RunEvent([] { throw std::runtime_error("rotto"); });
  EXPECT_EQ(host.told, (std::vector<std::string>{"failure rotto"}));
}

TEST_F(Life, TheEndOfTheProgramIsNoFailureOfAnEvent) {
  EXPECT_THROW(windows.RunEvent([] { throw forms::ProgramEnded{}; }), forms::ProgramEnded);
  EXPECT_TRUE(host.told.empty());
}

TEST_F(Life, AWindowThatFailsToLoadIsGone) {
  failsToLoad = true;
  windows.RunEvent([&] { windows.LoadNew("Sample"); });
  EXPECT_TRUE(windows.Loaded().empty());
  EXPECT_EQ(host.told, (std::vector<std::string>{"forget Sample", "failure no"}));
}

TEST_F(Life, AWindowThatClosesItselfInItsEventLivesToTheEventsEnd) {
  windows.LoadNew("Sample");
  made->Key.OnClick = [this] {
    made->Close();
    made->life.push_back("after");
    EXPECT_EQ(made->life.back(), "after");
  };
  windows.RunEvent([this] { made->Key.Press(); });
  EXPECT_TRUE(windows.Loaded().empty());
}

TEST_F(Life, AWindowIsLoadedBeforeItIsFoundAndItsNumberCountsItsOwnKind) {
  windows.Register("Other", [this] {
    return std::make_unique<Window>(host, "Other", "Other", base::Twips(1), base::Twips(1));
  });
  Window* other = windows.LoadNew("Other");
  Window* first = windows.LoadNew("Sample");
  EXPECT_EQ(made->life, std::vector<std::string>{"load"});
  Window* second = windows.LoadNew("Sample");
  EXPECT_EQ(windows.InstanceName(*other), "Other");
  EXPECT_EQ(windows.InstanceName(*first), "Sample");
  EXPECT_EQ(windows.InstanceName(*second), "Sample#2");
  EXPECT_EQ(windows.Find("Sample"), first);
  EXPECT_EQ(windows.FindInstance("Sample"), first);
  EXPECT_EQ(windows.FindInstance("Sample#3"), nullptr);
  EXPECT_EQ(windows.Find("sample"), nullptr);
  EXPECT_TRUE(windows.IsLoaded(second));
  second->Close();
  EXPECT_FALSE(windows.IsLoaded(second));
  EXPECT_FALSE(windows.IsLoaded(nullptr));
}

TEST_F(Life, AClosedWindowIsBuriedBehindTheOutermostEventAndNotBefore) {
  struct Mourned : Window {
    bool& gone;
    Mourned(WindowHost& itsHost, bool& itsGone)
        : Window(itsHost, "M", "M", base::Twips(1), base::Twips(1)), gone(itsGone) {}
    ~Mourned() override { gone = true; }
  };
  bool gone = false;
  Window& window = windows.Adopt(std::make_unique<Mourned>(host, gone));
  windows.RunEvent([&] {
    windows.RunEvent([&] { window.Close(); });
    EXPECT_FALSE(gone);
  });
  EXPECT_TRUE(gone);
  gone = false;
  Window& next = windows.Adopt(std::make_unique<Mourned>(host, gone));
  windows.RunEvent([&] { next.Close(); });
  EXPECT_TRUE(gone);
}

TEST_F(Life, AllWindowsButTheFirstAreClosedUntilOneRefuses) {
  windows.LoadNew("Sample");
  SampleWindow* first = made;
  windows.LoadNew("Sample");
  SampleWindow* second = made;
  windows.LoadNew("Sample");
  second->refuses = true;
  EXPECT_FALSE(windows.UnloadAllButFirst());
  EXPECT_EQ(windows.Loaded().size(), 3u);
  EXPECT_TRUE(second->Visible());
  second->refuses = false;
  EXPECT_TRUE(windows.UnloadAllButFirst());
  EXPECT_EQ(windows.Loaded(), std::vector<Window*>{first});
}

TEST_F(Life, WhereAWindowLiesIsKeptAndToldOnce) {
  windows.LoadNew("Sample");
  int shown = 0;
  const Subscription screen = made->Shown.Subscribe([&] { ++shown; });
  const Bounds bounds{base::Twips(10), base::Twips(20), base::Twips(3000), base::Twips(2500)};
  made->Move(bounds);
  made->Move(bounds);
  EXPECT_EQ(shown, 1);
  EXPECT_EQ(made->ScaleHeight(), base::Twips(2500));
  EXPECT_EQ(made->life, (std::vector<std::string>{"load", "resize"}));
  made->Moved(bounds, WindowState::kMaximised);
  made->Moved(bounds, WindowState::kMaximised);
  made->Moved(bounds, WindowState::kMinimised);
  EXPECT_EQ(made->life, (std::vector<std::string>{"load", "resize", "resize"}));
  made->SetScale(base::Twips(2900), base::Twips(2400));
  made->SetScale(base::Twips(2900), base::Twips(2400));
  EXPECT_EQ(made->life.size(), 4u);
  EXPECT_EQ(shown, 1);
  made->SetCaption("Altro");
  made->SetCaption("Altro");
  EXPECT_EQ(shown, 2);
}

TEST_F(Life, OnlyAChangeOfSizeRunsResize) {
  windows.LoadNew("Sample");
  made->Move({base::Twips(10), base::Twips(10), base::Twips(3000), base::Twips(2000)});
  made->Move({base::Twips(10), base::Twips(10), base::Twips(4000), base::Twips(2000)});
  EXPECT_EQ(made->life, (std::vector<std::string>{"load", "resize"}));
  EXPECT_EQ(made->ScaleWidth(), base::Twips(4000));
}

}  // namespace
}  // namespace brenvo::forms
