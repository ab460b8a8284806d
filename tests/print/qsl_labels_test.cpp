#include "print/qsl_labels.h"

#include <gtest/gtest.h>

#include "print/label_sheets.h"
#include "recorder/recording_platform.h"

namespace brenvo::print {
namespace {

using Texts = std::vector<std::string>;

QsoLabel Contact() {
  return {"IK3ABC", "59", "  2 m", "SSB", "", base::DateTime::Of(2001, 2, 3, 4, 5, 6),
          144.3,    false};
}

TEST(QslLabels, TheStationLabelIsSixTexts) {
  recorder::RecordingPlatform machine;
  DrawStationLabel(machine.GetPrinter(), base::Mm(10), base::Mm(20),
                   {"I0XXX", "MARIO", "JN61FV", "Via Roma 1", "Roma", "RM"});
  EXPECT_EQ(machine.TakeLines(),
            (Texts{"print text 11 22 left \"Times New Roman\" 9 bold \"From Radio\"",
                   "print text 28 21 left \"Times New Roman\" 12 bold \"I0XXX\"",
                   "print text 52 21 left \"Times New Roman\" 9 plain \"MARIO\"",
                   "print text 28 26 left \"Times New Roman\" 9 plain \"JN61FV\"",
                   "print text 52 24.5 left \"Times New Roman\" 9 plain \"Via Roma 1\"",
                   "print text 52 28 left \"Times New Roman\" 9 plain \"Roma RM\""}));
}

TEST(QslLabels, TheContactLabelDrawsItsFormAndKeepsTheFontInUse) {
  recorder::RecordingPlatform machine;
  DrawQsoLabel(machine.GetPrinter(), base::Mm(0), base::Mm(0), Contact());
  EXPECT_EQ(machine.TakeLines(), (Texts{"print text 1 2 left \"Arial\" 10 bold \"To Radio\"",
                                        "print text 1 8 left \"Arial\" 12 bold \"IK3ABC\"",
                                        "print box 37 2 78.5 22 empty",
                                        "print line 37 12 78.5 12",
                                        "print line 51.5 2 51.5 22",
                                        "print line 64 2 64 22",
                                        "print line 51.5 2 51.5 22",
                                        "print text 38 2.5 left \"Arial\" 8 bold \"Date\"",
                                        "print text 52.5 2.5 left \"Arial\" 8 bold \"Qtr\"",
                                        "print text 65 2.5 left \"Arial\" 8 bold \"RST\"",
                                        "print text 38 12.5 left \"Arial\" 8 bold \"Mc/s\"",
                                        "print text 52.5 12.5 left \"Arial\" 8 bold \"Band\"",
                                        "print text 65 12.5 left \"Arial\" 8 bold \"2x\"",
                                        "print text 38 8 left \"Arial\" 8 plain \"03/02/2001\"",
                                        "print text 52.5 8 left \"Arial\" 8 plain \"04:05\"",
                                        "print text 65 8 left \"Arial\" 8 plain \"59\"",
                                        "print text 38 18 left \"Arial\" 8 plain \"144.300\"",
                                        "print text 52.5 18 left \"Arial\" 8 plain \"  2 m\"",
                                        "print text 65 18 left \"Arial\" 8 plain \"SSB\"",
                                        "print text 1 18 left \"Arial\" 8 bold \"QSL PSE\""}));
  DrawQsoLabel(machine.GetPrinter(), base::Mm(0), base::Mm(0), Contact());
  EXPECT_EQ(machine.TakeLines().front(), "print text 1 2 left \"Arial\" 8 bold \"To Radio\"");
}

TEST(QslLabels, ACardReceivedIsThankedFor) {
  recorder::RecordingPlatform machine;
  QsoLabel contact = Contact();
  contact.QslRicevuta = true;
  DrawQsoLabel(machine.GetPrinter(), base::Mm(0), base::Mm(0), contact);
  EXPECT_EQ(machine.TakeLines().back(), "print text 1 18 left \"Arial\" 8 bold \"QSL Tnx\"");
}

struct NoteCase {
  const char* note;
  const char* band;
  const char* mode;
};

TEST(QslLabels, SatelliteTextsComeOutOfTheNote) {
  const NoteCase cases[] = {{"[70cm/AO-7/2m]", "70cm", "2m"},
                            {"", "  2 m", "Satellite"},
                            {"AO-7/B/U", "  2 m", "Satellite"},  // no bracket
                            {"[AO-7]", "  2 m", "Satellite"},    // no slash
                            {"[AO-7/U]", "  2 m", "Satellite"},  // one slash
                            {"[/B/U]", "  2 m", "Satellite"},    // an empty first text
                            {"x[a/b/c]", "[a", "c"},             // cut from the second character
                            {"[a/b/c", "a", ""},                 // the last character always goes
                            {"[a/b/", "a", ""},
                            {"[a/b/c/d]", "a", "c/d"}};
  for (const NoteCase& c : cases) {
    QsoLabel contact = Contact();
    contact.Modo = "Satellite";
    contact.Note = c.note;
    const auto [band, mode] = BandAndMode(contact);
    EXPECT_EQ(band, c.band) << c.note;
    EXPECT_EQ(mode, c.mode) << c.note;
  }
  QsoLabel other = Contact();
  other.Note = "[70cm/AO-7/2m]";
  EXPECT_EQ(BandAndMode(other).first, "  2 m");
}

// What the makers print on the package: size, and labels across and down an A4 sheet.
TEST(LabelSheets, FillAnA4SheetWithEqualMargins) {
  const struct {
    int width, height, across, down;
  } sold[] = {
      {700, 370, 3, 8}, {700, 360, 3, 8}, {635, 381, 3, 7}, {991, 381, 2, 7}, {1050, 480, 2, 6}};
  ASSERT_EQ(std::size(sold), LabelSheets().size());
  for (std::size_t i = 0; i < std::size(sold); ++i) {
    const LabelGeometry& sheet = LabelSheets()[i].geometry;
    SCOPED_TRACE(LabelSheets()[i].name);
    EXPECT_EQ(sheet.width, sold[i].width);
    EXPECT_EQ(sheet.height, sold[i].height);
    EXPECT_EQ(sheet.perRow, sold[i].across);
    EXPECT_EQ(sheet.rows, sold[i].down);
    const int right = 2100 - sheet.marginLeft - sheet.perRow * sheet.width -
                      (sheet.perRow - 1) * sheet.spaceAcross;
    const int bottom = 2970 - sheet.marginTop - sheet.rows * sheet.height;
    EXPECT_NEAR(sheet.marginLeft, right, 1);
    EXPECT_NEAR(sheet.marginTop, bottom, 1);
    EXPECT_EQ(WholeLabelsOn(sheet, kA4Width, kA4Height), sheet.perRow * sheet.rows);
    const LabelOverrun over = OverrunOf(sheet, kA4Width, kA4Height);
    EXPECT_EQ(over.right, 0);
    EXPECT_EQ(over.bottom, 0);
    EXPECT_NE(LabelSheets()[i].name.find(std::to_string(sheet.perRow * sheet.rows) + " per foglio"),
              std::string_view::npos);
  }
}

TEST(QslLabels, ARowThatBeginsInsideThePageIsPrinted) {
  recorder::RecordingPlatform machine;
  LabelGrid grid({990, 800, 50, 0, 0, 70, 2});
  const std::pair<double, double> places[] = {{7, 0},   {92, 0},   {7, 99},  {92, 99},
                                              {7, 198}, {92, 198}, {7, 297}, {92, 297}};
  for (const auto& [x, y] : places) {
    EXPECT_EQ(grid.X(), base::Mm(x));
    EXPECT_EQ(grid.Y(), base::Mm(y));  // 297 is exactly the page's height: still on this page
    EXPECT_TRUE(machine.TakeLines().empty());
    grid.Next(machine.GetPrinter());
  }
  EXPECT_EQ(machine.TakeLines(), Texts{"print newpage"});
  EXPECT_EQ(grid.Y(), base::Mm(0));
}

TEST(QslLabels, ARowThatEndsExactlyWithThePageTurnsItForNoGeometry) {
  recorder::RecordingPlatform machine;
  constexpr int kPage = 2970;
  for (int height = 339; height <= 700; height += 9) {
    for (int space = 0; space <= 300; space += 7) {
      const int top = kPage % (height + space);
      if (top > 200) continue;
      LabelGrid grid({height, 800, 0, space, top, 0, 1});
      for (int row = top; row < kPage; row += height + space) grid.Next(machine.GetPrinter());
      EXPECT_EQ(grid.Y(), base::Mm(297)) << height << ' ' << space;
      EXPECT_TRUE(machine.TakeLines().empty()) << height << ' ' << space;
      grid.Next(machine.GetPrinter());
      EXPECT_EQ(machine.TakeLines(), Texts{"print newpage"});
    }
  }
}

}  // namespace
}  // namespace brenvo::print
