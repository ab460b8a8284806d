#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "forms/choice_fields.h"
#include "forms/command.h"
#include "forms/grid.h"
#include "forms/list_field.h"
#include "forms/rich_text.h"
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

TEST_F(Life, OnlyAChangeOfSizeRunsResize) {
  windows.LoadNew("Sample");
  made->Move({base::Twips(10), base::Twips(10), base::Twips(3000), base::Twips(2000)});
  made->Move({base::Twips(10), base::Twips(10), base::Twips(4000), base::Twips(2000)});
  EXPECT_EQ(made->life, (std::vector<std::string>{"load", "resize"}));
  EXPECT_EQ(made->ScaleWidth(), base::Twips(4000));
}

}  // namespace
}  // namespace brenvo::forms
