#include "contest/contest_sheets.h"

#include <gmock/gmock.h>

#include <algorithm>

#include "recorder/recording_platform.h"
#include "tests/contest/sample_log.h"
#include "tests/support/golden.h"

namespace brenvo::contest {
namespace {

using testing::Contains;
using testing::ElementsAre;

std::vector<Contact> LogOf(int contacts) {
  std::vector<Contact> log;
  for (int serial = 1; serial <= contacts; ++serial) {
    log.push_back(MakeContact(serial, "IK" + std::to_string(serial % 10) + "ABC", "JN65AB",
                              100 * serial, serial % 7 == 0 ? "Qso doppio (1) " : "[Exc=VE]"));
  }
  return log;
}

std::vector<std::string> Printed(
    const ContestHeader& header, const std::vector<Contact>& contacts,
    const std::optional<std::filesystem::path>& sign = "/app/Sign.bmp") {
  recorder::RecordingPlatform machine;
  machine.SetApplicationDirectory("/app");
  PrintContestSheets(machine.GetPrinter(), header, contacts, "/app/Logo.bmp", sign);
  return machine.TakeLines();
}

std::string Joined(const std::vector<std::string>& lines) {
  std::string text;
  for (const std::string& line : lines) text += line + "\n";
  return text;
}

long CountOf(const std::vector<std::string>& lines, std::string_view line) {
  return std::count(lines.begin(), lines.end(), line);
}

constexpr std::string_view kTotals =
    "print text 40 242 left \"Times New Roman\" 10 bold \"TOT. QSO\"";

TEST(ContestSheets, FortyContactsFillOneSheetThatBearsTheTotals) {
  const auto lines = Printed(SampleHeader(), LogOf(40));
  ExpectGolden("contest/golden/sheets_40.txt", Joined(lines));
  EXPECT_EQ(CountOf(lines, "print newpage"), 0);
  EXPECT_EQ(CountOf(lines, kTotals), 1);
}

TEST(ContestSheets, TheFortyFirstContactBeginsASecondSheetThatBearsTheTotals) {
  const auto lines = Printed(SampleHeader(), LogOf(41));
  ExpectGolden("contest/golden/sheets_41.txt", Joined(lines));
  EXPECT_EQ(CountOf(lines, "print newpage"), 1);
  EXPECT_EQ(CountOf(lines, kTotals), 1);
  const auto newPage = std::find(lines.begin(), lines.end(), "print newpage");
  EXPECT_EQ(std::find(lines.begin(), newPage, kTotals), newPage);
}

TEST(ContestSheets, EightyContactsFillTwoSheetsAndNoThird) {
  const auto lines = Printed(SampleHeader(), LogOf(80));
  ExpectGolden("contest/golden/sheets_80.txt", Joined(lines));
  EXPECT_EQ(CountOf(lines, "print newpage"), 1);
}

TEST(ContestSheets, WithoutContactsOnlyTheDocumentEnds) {
  EXPECT_THAT(Printed(SampleHeader(), {}), ElementsAre("print end"));
}

TEST(ContestSheets, TheLastRowOfASheetStandsAtHeight210) {
  EXPECT_THAT(Printed(SampleHeader(), LogOf(40)),
              Contains("print text 72 210 right \"Times New Roman\" 10 plain \"40\""));
}

std::vector<std::string> BandBoxes(std::string_view band) {
  ContestHeader header = SampleHeader();
  header.Banda = band;
  std::vector<std::string> boxes;
  for (const std::string& line : Printed(header, LogOf(1))) {
    if (line.starts_with("print box") && line.find(" 13 ") != std::string::npos) {
      boxes.push_back(line.substr(line.rfind(' ') + 1));
    }
  }
  return boxes;
}

TEST(ContestSheets, TheBandFillsItsOwnBox) {
  EXPECT_THAT(BandBoxes("  2 m"), ElementsAre("filled", "empty", "empty", "empty"));
  EXPECT_THAT(BandBoxes(" 70cm"), ElementsAre("empty", "filled", "empty", "empty"));
  EXPECT_THAT(BandBoxes(" 23cm"), ElementsAre("empty", "empty", "filled", "empty"));
  EXPECT_THAT(BandBoxes(" 13cm"), ElementsAre("empty", "empty", "empty", "filled"));
}

TEST(ContestSheets, AnyOtherBandLeavesAllBoxesEmptyAndChangesNothingElse) {
  for (std::string_view band : {"  6 m", "2 m", "", " 3cm"}) {
    EXPECT_THAT(BandBoxes(band), ElementsAre("empty", "empty", "empty", "empty")) << band;
  }
  ContestHeader header = SampleHeader();
  const auto known = Printed(header, LogOf(1));
  header.Banda = "  6 m";
  auto unknown = Printed(header, LogOf(1));
  *std::find(unknown.begin(), unknown.end(), "print box 24 13 27 16 empty") =
      "print box 24 13 27 16 filled";
  EXPECT_EQ(unknown, known);
}

TEST(ContestSheets, StationAndOperatorsFillOneBoxEach) {
  ContestHeader header = SampleHeader();
  header.Fisso = header.Singolo = false;
  const auto lines = Printed(header, LogOf(1));
  EXPECT_THAT(lines, Contains("print box 108 8 111 11 empty"));
  EXPECT_THAT(lines, Contains("print box 108 14 111 17 filled"));
  EXPECT_THAT(lines, Contains("print box 147 8 150 11 empty"));
  EXPECT_THAT(lines, Contains("print box 147 14 150 17 filled"));
}

TEST(ContestSheets, DuplicatesPrintZeroPointsAndCountAsContacts) {
  const auto lines =
      Printed(SampleHeader(), {MakeContact(1, "IK3ABC", "JN65AB", 120),
                               MakeContact(2, "IK3ABC", "JN65AB", 120, "Qso doppio (1) ")});
  EXPECT_THAT(lines, Contains("print text 182 58 left \"Times New Roman\" 10 plain \"0\""));
  EXPECT_THAT(lines, Contains("print text 131 58 left \"Times New Roman\" 10 plain "
                              "\"Qso doppio (1) \""));
  EXPECT_THAT(lines, Contains("print text 40 248 left \"Times New Roman\" 10 plain \"2\""));
  EXPECT_THAT(lines, Contains("print text 60 248 left \"Times New Roman\" 10 plain \"120\""));
}

TEST(ContestSheets, WithoutASignatureTheRestPrintsUnchanged) {
  auto with = Printed(SampleHeader(), LogOf(3));
  const auto without = Printed(SampleHeader(), LogOf(3), std::nullopt);
  EXPECT_EQ(std::erase(with, "print picture \"Sign.bmp\" 135 227"), 1u);
  EXPECT_EQ(with, without);
}

TEST(ContestSheets, ANullNotePrintsAsNothing) {
  std::vector<Contact> contacts = LogOf(1);
  contacts[0].Note.reset();
  EXPECT_THAT(Printed(SampleHeader(), contacts),
              Contains("print text 131 54 left \"Times New Roman\" 10 plain \"\""));
}

TEST(ContestSheets, LargeSumsHaveTheirThousandsButTheSheetsDistanceHasNot) {
  std::vector<Contact> contacts = {MakeContact(1, "IK3ABC", "JN65AB", 12345)};
  const auto lines = Printed(SampleHeader(), contacts);
  EXPECT_THAT(lines, Contains("print text 168 54 left \"Times New Roman\" 10 plain \"12,345\""));
  EXPECT_THAT(lines, Contains("print text 168 218 left \"Times New Roman\" 10 plain \"12345\""));
  EXPECT_THAT(lines, Contains("print text 182 218 left \"Times New Roman\" 10 plain \"12,345\""));
  EXPECT_THAT(lines, Contains("print text 99 248 left \"Times New Roman\" 10 plain \"12,345\""));
}

}  // namespace
}  // namespace brenvo::contest
