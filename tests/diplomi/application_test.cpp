#include "diplomi/application.h"

#include <gmock/gmock.h>

#include "base/csv.h"
#include "recorder/recording_platform.h"

namespace brenvo::diplomi {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

Application TwoLines() {
  return {
      "DXCC 20 m",
      "IK0XYZ, 23/11/2026: confermati",
      {{"K", "Stati Uniti, <USA> & \"soci\"", "K1AAA", "20 m", "CW", "LoTW", "04/07/2026 22:14:00"},
       {"DL", "Germania", "DL1GGG", "20 m", "SSB", "Cartolina", "07/09/2026 07:00:00"}}};
}

TEST(AwardApplication, TextStandsInColumns) {
  EXPECT_EQ(TextOfApplication(TwoLines()),
            "DXCC 20 m\r\n"
            "IK0XYZ, 23/11/2026: confermati\r\n"
            "Qso: 2\r\n"
            "\r\n"
            "Nr  Unità  Nome                         Call    Data e ora           Banda  Modo  "
            "Confermato da\r\n"
            "1   K      Stati Uniti, <USA> & \"soci\"  K1AAA   04/07/2026 22:14:00  20 m   CW    "
            "LoTW\r\n"
            "2   DL     Germania                     DL1GGG  07/09/2026 07:00:00  20 m   SSB   "
            "Cartolina\r\n");
}

TEST(AwardApplication, APageHoldsTheSameAndNothingThatIsMarkup) {
  const std::string page = PageOfApplication(TwoLines());
  EXPECT_THAT(page, HasSubstr("<td>Stati Uniti, &lt;USA&gt; &amp; \"soci\"</td>"));
  EXPECT_THAT(page, HasSubstr("<td>Germania</td><td>DL1GGG</td><td>07/09/2026 07:00:00</td>"));
  EXPECT_THAT(page, Not(HasSubstr("<USA>")));
}

TEST(AwardApplication, CommaSeparatedTextGivesItsCellsBack) {
  const base::CsvTable table = base::ParseCsv(CsvOfApplication(TwoLines()));
  ASSERT_EQ(table.Rows.size(), 2u);
  EXPECT_THAT(table.Rows[0].Cells, ElementsAre("1", "K", "Stati Uniti, <USA> & \"soci\"", "K1AAA",
                                               "04/07/2026 22:14:00", "20 m", "CW", "LoTW"));
}

TEST(AwardApplication, PagesAreNumberedAndHoldAllLines) {
  Application application = TwoLines();
  application.lines.resize(130, application.lines.back());
  recorder::RecordingPlatform machine;
  PrintApplication(application, machine.GetPrinter());
  int lines = 0, pages = 0;
  for (const std::string& each : machine.TakeLines()) {
    lines += each.find("\"DL1GGG\"") != std::string::npos;
    pages += each == "print newpage";
  }
  EXPECT_EQ(lines, 129);
  EXPECT_EQ(pages, 2);
}

// A count of one unit with a total and two bands.
Counted OneUnit(State all, State first, State second) {
  Counted counted;
  counted.units = {{"K", "", false}};
  counted.bands = {"20 m", "15 m"};
  counted.cells = {{all, 0, 1, 10}, {first, 0, 1, 10}, {second, 0, 2, 20}};
  counted.totals.resize(3);
  counted.former.resize(3);
  return counted;
}

TEST(AwardApplication, ABandThatIsConfirmedStandsForAllBandsTogether) {
  const auto keys = [](const Award& award, const Counted& counted, std::size_t column) {
    std::vector<std::size_t> units;
    std::vector<std::int64_t> found;
    for (const Cell& each : CellsToApplyFor(award, counted, column, units)) {
      found.push_back(each.key);
    }
    EXPECT_EQ(units.size(), found.size());
    return found;
  };
  using enum State;
  Award whole, byBand;
  byBand.creditBand = {"DXCC_BAND"};
  const Counted both = OneUnit(kConfirmed, kConfirmed, kConfirmed);
  EXPECT_THAT(keys(whole, both, 0), ElementsAre(1));
  EXPECT_THAT(keys(byBand, both, 0), ElementsAre(1, 2));
  EXPECT_THAT(keys(byBand, both, 2), ElementsAre(2));
  const Counted credited = OneUnit(kCredited, kCredited, kConfirmed);
  EXPECT_THAT(keys(whole, credited, 0), IsEmpty());
  EXPECT_THAT(keys(byBand, credited, 0), ElementsAre(2));
  // The bands are credited, all together is not yet.
  EXPECT_THAT(keys(byBand, OneUnit(kConfirmed, kCredited, kCredited), 0), ElementsAre(1));
  EXPECT_THAT(keys(byBand, OneUnit(kWorked, kWorked, kWorked), 0), IsEmpty());
}

}  // namespace
}  // namespace brenvo::diplomi
