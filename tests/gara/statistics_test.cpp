#include "gara/statistics.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "gara/contest_log.h"
#include "tests/gara/gara_station.h"
#include "tests/support/golden.h"

namespace brenvo::gara {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::Not;
using ::testing::SizeIs;
using ::testing::StartsWith;

class StatisticsTest : public ::testing::Test {
 protected:
  Contact Worked(int minute, std::string call, std::string locator) const {
    Contact contact;
    contact.band = "2 m";
    contact.mode = "SSB";
    contact.call = std::move(call);
    contact.locator = std::move(locator);
    contact.time = begin.Later(minute * 60);
    return contact;
  }
  WorkedContest Of(const std::vector<Contact>& contacts) const {
    return {"Prova <1>", begin, begin.Later(24 * 3600), {"IK4ABC", "JN54MN", "", {}}, contacts};
  }
  base::DateTime begin = base::DateTime::Of(2024, 9, 7, 14, 0, 0);
  Rule rule = DeliveredRule("iaru-145");
};

TEST_F(StatisticsTest, HoursDistancesSquaresAndTheFarthestAreCounted) {
  const std::vector<Contact> contacts = {
      Worked(0, "DK5AB", "JN48QT"), Worked(5, "DK5AB", "JN48QT"), Worked(65, "S51ZO", "JN86DT"),
      Worked(66, "IK4XYZ/P", "JN54PD"), Worked(24 * 60 + 1, "9A2AA", "JN85EF")};
  const Statistics made = MakeStatistics(rule, Of(contacts), nullptr);
  EXPECT_EQ(made.score.points, 490 + 479 + 51 + 427);
  ASSERT_THAT(made.hours, SizeIs(24));
  EXPECT_EQ(made.hours[0].all, 2);
  EXPECT_EQ(made.hours[0].points, 490);
  EXPECT_THAT(made.hours[1].contacts, ElementsAre(2));
  EXPECT_EQ(made.hours[1].points, 530);
  EXPECT_THAT(made.distances, ElementsAre(1, 0, 0, 0, 3));
  EXPECT_EQ(made.best[0].call, "DK5AB");
  EXPECT_EQ(made.best[0].km, 489);
  EXPECT_THAT(made.best, SizeIs(4));
  EXPECT_EQ(made.squares.at("JN48"), 1);
  EXPECT_EQ(made.bands[0].bestCall, "DK5AB");
  EXPECT_EQ(made.bands[0].meanKm, 361);
}

TEST_F(StatisticsTest, AnotherYearStandsBesideThisOne) {
  const std::vector<Contact> contacts = {Worked(0, "DK5AB", "JN48QT")};
  WorkedContest before = Of(contacts);
  before.begin = base::DateTime::Of(2023, 9, 2, 14, 0, 0);
  before.end = before.begin.Later(24 * 3600);
  const std::vector<Contact> old = [&] {
    Contact contact = contacts[0];
    contact.time = before.begin.Later(2 * 3600);
    return std::vector{contact};
  }();
  before.contacts = old;
  const Statistics made = MakeStatistics(rule, Of(contacts), &before);
  ASSERT_TRUE(made.before);
  EXPECT_EQ(made.before->score.points, 490);
  EXPECT_EQ(made.before->points[2], 490);
  EXPECT_EQ(made.before->points[0], 0);
  const std::string page = StatisticsPage(made);
  EXPECT_THAT(page, HasSubstr("<td>02/09/2023</td><td>1</td><td>0</td><td>490</td>"));
  EXPECT_THAT(page, HasSubstr("barre: 2024, linea: 2023"));
}

TEST_F(StatisticsTest, ThePageHoldsTablesAndPicturesAndNoLetterOfItsOwnRight) {
  const std::vector<Contact> contacts = {Worked(0, "DK5AB", "JN48QT"),
                                         Worked(65, "S51ZO", "JN86DT")};
  const std::string page = StatisticsPage(MakeStatistics(rule, Of(contacts), nullptr));
  EXPECT_THAT(page, HasSubstr("<h1>Prova &lt;1&gt;, 07/09/2024: IK4ABC in JN54MN</h1>"));
  EXPECT_THAT(page, Not(HasSubstr("<1>")));
  EXPECT_THAT(page, HasSubstr("<td>DK5AB</td><td>JN48QT</td><td>2 m</td><td>489</td>"));
  EXPECT_THAT(page, HasSubstr(">JN86</text>"));
  std::size_t pictures = 0;
  for (std::size_t at = page.find("<svg"); at != std::string::npos;
       at = page.find("<svg", at + 1)) {
    ++pictures;
  }
  EXPECT_EQ(pictures, 3u);  // hours, distances, squares
}

TEST_F(StatisticsTest, AnEmptyContestHasAPageToo) {
  const Statistics made = MakeStatistics(rule, Of({}), nullptr);
  EXPECT_THAT(StatisticsPage(made), HasSubstr("0 QSO"));
}

TEST_F(GaraStation, StatisticsAreShownAsAPageAndPrinted) {
  machine.SetNow(base::DateTime::Of(2023, 9, 2, 16, 5, 0));
  Begin("IARU Region 1 145 MHz", "02/09/2023");
  Work("DK5AB", "12", "JN48QT");
  machine.SetNow(base::DateTime::Of(2024, 9, 7, 16, 5, 0));
  Begin("IARU Region 1 145 MHz", "07/09/2024");
  Work("S51ZO", "3", "JN86DT");
  Lines();
  Press(*window, "cmStatistiche");
  EXPECT_EQ(window->Avviso.Text(), "Scritto Statistiche-iaru-145-20240907.html");
  EXPECT_THAT(Lines(), ElementsAre("open \"Statistiche-iaru-145-20240907.html\""));
  EXPECT_THAT(ReadBytes(directory.Path() / "Statistiche-iaru-145-20240907.html"),
              HasSubstr("<td>02/09/2023</td><td>1</td>"));
  Press(*window, "cmStampa");
  const std::vector<std::string> lines = Lines();
  EXPECT_THAT(lines.back(), "print end");
  EXPECT_THAT(lines, Contains(HasSubstr("\"S51ZO\"")));
  EXPECT_THAT(lines, Contains(StartsWith("print box")));
}

}  // namespace
}  // namespace brenvo::gara
