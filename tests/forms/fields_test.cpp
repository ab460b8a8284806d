#include "forms/picture_box.h"
#include "forms/status_bar.h"
#include "tests/forms/sample_window.h"

namespace brenvo::forms {
namespace {

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

}  // namespace
}  // namespace brenvo::forms
