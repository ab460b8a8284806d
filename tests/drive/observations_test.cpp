#include "tools/drive/observations.h"

#include <gmock/gmock.h>

#include "every_field.h"
#include "recorder/recording_platform.h"
#include "recorder/refused.h"

namespace brenvo::drive {
namespace {

using testing::ElementsAre;

class Observations : public testing::Test {
 protected:
  std::string Get(forms::Field& field) {
    PrintField(out, "W.F", field);
    return lines.back();
  }
  recorder::RecordingPlatform machine;
  EveryField w{machine.Host()};
  std::vector<std::string> lines;
  recorder::LineSink out = [this](std::string line) { lines.push_back(line); };
};

TEST_F(Observations, TextsStandInQuotes) {
  w.Call.SetText("I3 \"X\"");
  w.Received.SetText("a\r\n");
  EXPECT_EQ(Get(w.Call), "get W.F \"I3 \\\"X\\\"\"");
  EXPECT_EQ(Get(w.Received), "get W.F \"a\\r\\n\"");
  EXPECT_EQ(Get(w.cmOk), "get W.F \"&Ok\"");
  w.Query.SetText("x");
  EXPECT_EQ(Get(w.Query), "get W.F \"x\"");
  w.Band.SetListIndex(0);
  EXPECT_EQ(Get(w.Band), "get W.F \" 20 m\"");
}

TEST_F(Observations, StatesAndNumbersStandPlain) {
  EXPECT_EQ(Get(w.Check), "get W.F off");
  EXPECT_EQ(Get(w.Three), "get W.F grey");
  w.First.SetOn(true);
  EXPECT_EQ(Get(w.First), "get W.F on");
  EXPECT_EQ(Get(w.cmToggle), "get W.F off");
  EXPECT_EQ(Get(w.Group), "get W.F 0");
  EXPECT_EQ(Get(w.Tune), "get W.F 50");
  EXPECT_EQ(Get(w.Meter), "get W.F 20");
}

TEST_F(Observations, PropertiesOfAWindowAreFieldsToo) {
  w.Tag = "FIELD";
  EXPECT_TRUE(PrintProperty(out, "W.Caption", w, "Caption"));
  EXPECT_TRUE(PrintProperty(out, "W.tag", w, "tag"));
  EXPECT_TRUE(PrintProperty(out, "W.Left", w, "Left"));
  EXPECT_TRUE(PrintProperty(out, "W.Width", w, "Width"));
  EXPECT_TRUE(PrintProperty(out, "W.Height", w, "Height"));
  EXPECT_FALSE(PrintProperty(out, "W.Colour", w, "Colour"));
  EXPECT_THAT(lines, ElementsAre("get W.Caption \"Every field\"", "get W.tag \"FIELD\"",
                                 "get W.Left 0", "get W.Width 3000", "get W.Height 1500"));
}

TEST_F(Observations, EnabledIsYesOrNo) {
  PrintEnabled(out, "W.cmOk", w.cmOk);
  PrintEnabled(out, "W.cmOff", w.cmOff);
  EXPECT_THAT(lines, ElementsAre("enabled W.cmOk yes", "enabled W.cmOff no"));
}

TEST_F(Observations, AGridIsItsRowsWithTheHeading) {
  PrintGrid(out, "W.Cells", w.Cells);
  PrintGrid(out, "W.Rows", w.Rows);
  EXPECT_THAT(lines, ElementsAre("grid W.Cells 2 2", "Call\t", "\ta\\tb", "grid W.Rows 3 2",
                                 "First\tSecond", "a\tb", "c\\td\t"));
  EXPECT_THROW(PrintGrid(out, "W.Call", w.Call), recorder::Refused);
}

TEST_F(Observations, AGridMarksTheRowsThatAreMarked) {
  PrintGrid(out, "W.Arranged", w.Arranged);
  EXPECT_THAT(lines, ElementsAre("grid W.Arranged 3 2", "First ▲\tSecond", "a\tb", "*c\\td\t"));
}

TEST_F(Observations, AListMarksWhatIsChosen) {
  w.Band.SetListIndex(1);
  w.Many.SetSelected(0, true);
  w.Many.SetSelected(2, true);
  PrintList(out, "W.Band", w.Band);
  PrintList(out, "W.Many", w.Many);
  PrintList(out, "W.Group", w.Group);
  PrintList(out, "W.Entries", w.Entries);
  EXPECT_THAT(lines, ElementsAre("list W.Band 3", "\" 20 m\"", "*\"  2 m\"", "\" 70cm\"",
                                 "list W.Many 3", "*\"a\"", "\"b\"", "*\"c\"",  //
                                 "list W.Group 2", "*\"a\"", "\"b\"",           //
                                 "list W.Entries 2", "*\"Tutte\"", "\" 20 m\""));
  EXPECT_THROW(PrintList(out, "W.Call", w.Call), recorder::Refused);
}

TEST_F(Observations, ATextAreaIsItsRunsOfColour) {
  w.Received.Append("DX", base::kDarkRed);
  w.Received.Append(" de I3\r\n", base::kBlack);
  PrintRuns(out, "W.Received", w.Received);
  EXPECT_THAT(lines, ElementsAre("text W.Received", "#800000 \"DX\"", "#000000 \" de I3\\r\\n\""));
  EXPECT_THROW(PrintRuns(out, "W.Call", w.Call), recorder::Refused);
}

TEST_F(Observations, AStatusIsAllPanels) {
  w.Bar.SetPanel(2, "Conf.");
  PrintStatus(out, "W", w);
  EXPECT_THAT(lines, ElementsAre("status W \"\" \"Conf.\""));
  forms::Window bare(machine.Host(), "B", "", base::Twips(1), base::Twips(1));
  EXPECT_THROW(PrintStatus(out, "B", bare), recorder::Refused);
}

}  // namespace
}  // namespace brenvo::drive
