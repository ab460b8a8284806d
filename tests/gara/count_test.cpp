#include "gara/count.h"

#include <fmt/format.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <random>

#include "core/wpx_prefix.h"
#include "tests/gara/rules.h"

namespace brenvo::gara {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

TEST(ContestDistance, TheSphereOfTheRulesMeasuresIt) {
  struct Case {
    const char *from, *to;
    double km;
    int points, ring;
  };
  const Case kCases[] = {
      {"JO55WW", "JO65FR", 43.17, 44, 2},         {"JN61FV", "JN61FV", 0.00, 1, 1},
      {"JN61FV", "JN61GV", 6.90, 7, 1},           {"JN61FV", "JN62AA", 37.15, 38, 2},
      {"JN61FV", "JO31NF", 1114.35, 1115, 11},    {"JN54AA", "JN45XX", 217.87, 218, 2},
      {"JM67LX", "JN66QI", 931.93, 932, 10},      {"JN61FV", "IM67AA", 1829.67, 1830, 11},
      {"JN61FV", "KM18UA", 1050.17, 1051, 6},     {"JN45OO", "JN55AA", 91.95, 92, 2},
      {"AA00AA", "RR99XX", 20011.37, 20012, 180}, {"JN61FV", "FN42AA", 6666.01, 6667, 43}};
  const Rule rule = DeliveredRule("iaru-145");
  const Rule rings = DeliveredRule("lombardia-144");
  for (const Case& each : kCases) {
    SCOPED_TRACE(fmt::format("{} {}", each.from, each.to));
    const auto km = DistanceKm(each.from, each.to, 111.2);
    ASSERT_TRUE(km);
    EXPECT_NEAR(*km, each.km, 0.005);
    const OwnEntry own{"IK4ABC", each.from, "", {}};
    EXPECT_EQ(PointsOf(rule, own, Made("2 m", "I2AB", each.to)), each.points);
    EXPECT_EQ(PointsOf(rings, own, Made("2 m", "I2AB", each.to)), each.ring);
  }
}

TEST(ContestDistance, ALocatorOfFourSignsMakesNoPoints) {
  EXPECT_FALSE(DistanceKm("JN54", "JN54MN", 111.2));
  EXPECT_FALSE(DistanceKm("JN54MN", "JN54ZZ", 111.2));
  const Rule rule = DeliveredRule("iaru-50-70");
  EXPECT_EQ(PointsOf(rule, {"IK4ABC", "JN54MN", "", {}}, Made("6 m", "F5AB", "JN03")), 0);
}

TEST(ContestPrefix, IsTheOneThatTheWpxCounts) {
  const std::pair<const char*, const char*> kCases[] = {{"IK4XYZ", "IK4"},
                                                        {"I1ABC", "I1"},
                                                        {"HB9XY", "HB9"},
                                                        {"9A2AA", "9A2"},
                                                        {"S51ZO", "S51"},
                                                        {"DF1ZZ", "DF1"},
                                                        {"4X4AB", "4X4"},
                                                        {"IK4XYZ/5", "IK5"},
                                                        {"IW2AAA/P", "IW2"},
                                                        {"HB0/IK4XYZ", "HB0"},
                                                        {"PA/IK4XYZ", "PA0"},
                                                        {"IK4XYZ/HB0", "HB0"},
                                                        {"LY1000A", "LY1000"},
                                                        {"RAEM", "RA0"},
                                                        {"9A/IK4XYZ", "9A0"},
                                                        {"iz7aaa/8", "IZ8"},
                                                        {"F/IK4XYZ", "F0"},
                                                        {"12", ""},
                                                        {"", ""}};
  for (const auto& [call, prefix] : kCases) EXPECT_EQ(core::WpxPrefix(call), prefix) << call;
}

TEST(ContestCount, AStrokeMakesNoOtherStation) {
  const Rule rule = DeliveredRule("iaru-145");
  Count count(rule, {"IK4ABC", "JN54MN", "", {}});
  count.Add(Made("2 m", "S50AAA", "JN76AA"));
  EXPECT_EQ(count.Try(Made("2 m", "DL/S50AAA", "JN59AA", "CW")).duplicateOf, 0u);
  EXPECT_EQ(count.Add(Made("2 m", "S50AAA/P", "JN76AA", "CW")).points, 0);
  EXPECT_EQ(count.Total().duplicates, 1);
}

TEST(ContestCount, AStationOfAnotherBandIsNone) {
  const Rule rule = DeliveredRule("iaru-uhf-microonde");
  Count count(rule, {"IK4ABC", "JN54MN", "", {}});
  count.Add(Made("70cm", "S50AAA", "JN76AA"));
  EXPECT_FALSE(count.Add(Made("23cm", "S50AAA", "JN76AA")).duplicateOf);
  const Score score = count.Total();
  ASSERT_EQ(score.bands.size(), 2u);
  EXPECT_EQ(score.bands[0].band, "70cm");
  EXPECT_EQ(score.total, score.bands[0].points + score.bands[1].points);
}

TEST(ContestCount, TheModesFactorAndTheScoreOfEachBandAreTheRules) {
  const Rule rule = DeliveredRule("veneto");
  const OwnEntry own{"IK3ABC", "JN65AW", "", {}};
  Count count(rule, own);
  const auto ssb = count.Add(Made("2 m", "S50AAA", "JN76AA", "USB"));
  const auto cw = count.Add(Made("2 m", "S51BBB", "JN76AA", "CW"));
  EXPECT_EQ(cw.points, 2 * ssb.points);
  EXPECT_THAT(ssb.multipliers, ElementsAre("JN76"));
  EXPECT_THAT(cw.multipliers, IsEmpty());
  count.Add(Made("70cm", "S50AAA", "JN76AA", "USB"));
  // A band's points times its own squares.
  EXPECT_EQ(count.Total().total, 3 * ssb.points + ssb.points);
}

TEST(ContestCount, TheHigherFactorOfTheTwoZonesCounts) {
  Rule rule = DeliveredRule("lazio-432");
  rule.points.zoneFactor = {{"RM", 2}, {"PA", 3}};
  const std::int64_t plain =
      PointsOf(rule, {"IK4ABC", "JN54MN", "BO", {}}, Made("70cm", "I4B", "JN61FV", "SSB", "FE"));
  const auto points = [&](const char* own, const char* theirs) {
    return PointsOf(rule, {"IK4ABC", "JN54MN", own, {}},
                    Made("70cm", "I4B", "JN61FV", "SSB", theirs));
  };
  EXPECT_EQ(points("BO", "RM"), 2 * plain);
  EXPECT_EQ(points("RM", "pa "), 3 * plain);
  EXPECT_EQ(points("PA", "RM"), 3 * plain);
}

// Contacts of a small world, so that calls, squares and provinces come again.
std::vector<Contact> RandomContacts(std::mt19937& random, const Rule& rule, int count) {
  const char* const kCalls[] = {"IK4%", "IW2%/P", "DL1%", "HB9%/5", "S5%", "F/I4%", "IT9%"};
  const char* const kModes[] = {"CW", "USB", "FM", "RTTY", "FT8"};
  const char* const kProvinces[] = {"BO", "RM", "MI", "", "pa"};
  const char* const kCountries[] = {"I", "DL", "K", "", "F"};
  std::vector<Contact> contacts;
  for (int i = 0; i < count; ++i) {
    std::string call = kCalls[random() % std::size(kCalls)];
    call.replace(call.find('%'), 1, fmt::format("A{}", static_cast<char>('A' + random() % 9)));
    std::string locator = fmt::format(
        "J{}{}{}{}{}", static_cast<char>('M' + random() % 4), random() % 3, random() % 3,
        static_cast<char>('A' + random() % 24), static_cast<char>('A' + random() % 24));
    if (random() % 20 == 0) locator.resize(4);
    Contact contact =
        Made(rule.bands[random() % std::min<std::size_t>(3, rule.bands.size())], call, locator,
             kModes[random() % std::size(kModes)], kProvinces[random() % std::size(kProvinces)]);
    contact.place = {kCountries[random() % std::size(kCountries)], random() % 2 ? "EU" : "NA"};
    contacts.push_back(std::move(contact));
  }
  return contacts;
}

TEST(ContestCount, TheSlowRecountSaysTheSameOfEveryRule) {
  std::mt19937 random(26);
  for (const auto& entry : std::filesystem::directory_iterator(DeliveredRules())) {
    SCOPED_TRACE(entry.path().filename().string());
    Rule rule = DeliveredRule(entry.path().stem().string());
    for (const Per per : {Per::kContest, Per::kBand, Per::kBandAndMode}) {
      rule.duplicates = per;
      for (Multiplier& multiplier : rule.multipliers) {
        multiplier.per = static_cast<Per>(random() % 3);
      }
      rule.scorePerBand = random() % 2 == 0;
      const OwnEntry own{"IK4ABC", "JN54MN", "BO", {"I", "EU"}};
      const auto contacts = RandomContacts(random, rule, 400);
      Count count(rule, own);
      for (const Contact& contact : contacts) {
        const Worth tried = count.Try(contact);
        EXPECT_EQ(count.Add(contact), tried);
      }
      const Recounted again = Recount(rule, own, contacts);
      EXPECT_EQ(again.worths, count.Worths());
      EXPECT_EQ(again.score, count.Total());
      EXPECT_GT(again.score.duplicates, 0);
    }
  }
}

}  // namespace
}  // namespace brenvo::gara
