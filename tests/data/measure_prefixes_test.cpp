#include "tools/measure_prefixes/measure.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>

namespace brenvo {
namespace {

using testing::ElementsAre;
using testing::Field;

constexpr std::string_view kCountryFile =
    "Italy:        15:  28:  EU:   42.82:   -12.58:    -1.0:  I:\n"
    "    I,=II0X/MM(40);\n"
    "African Italy: 33:  37:  AF:   35.67:   -12.67:    -1.0:  *IG9:\r\n"
    "    IG9;\n"
    "Sardinia:     15:  28:  EU:   40.15:    -9.27:    -1.0:  IS:\n"
    "    IM0,IS0,\n"
    "    =II0C;\n"
    "United States:  05:  08:  NA:   37.60:    91.87:     5.0:  K:\n"
    "    K,K6(3)[6],=K6AA(4)[7]{OC};\n"
    "Guantanamo Bay: 08:  11:  NA:   20.00:    75.00:     5.0:  KG4:\n"
    "    KG4;\n";

TEST(PrefixRule, TakesEverythingUpToTheFirstDigits) {
  EXPECT_EQ(measure_prefixes::PrefixOf("IK3ABC"), "IK3");
  EXPECT_EQ(measure_prefixes::PrefixOf("4U1ITU"), "4U1");
  EXPECT_EQ(measure_prefixes::PrefixOf("OE20XYZ"), "OE20");
  EXPECT_EQ(measure_prefixes::PrefixOf("DL/K1ABC"), "DL/K1");
  EXPECT_EQ(measure_prefixes::PrefixOf("K1ABC2"), "K1");
}

TEST(PrefixRule, FindsNothingWithoutDigitsOrWithoutAnythingBehindThem) {
  for (const std::string_view call : {"", "I", "I1", "IW1", "3A", "IK33"}) {
    EXPECT_EQ(measure_prefixes::PrefixOf(call), "") << call;
  }
}

TEST(PrefixTable, GivesTheFirstRowInTheOrderOfZonesAndContinent) {
  const measure_prefixes::PrefixTable table({{"UA9", {"UA9", 18, 31, "AS"}},
                                             {"UA9", {"UA", 17, 30, "EU"}},
                                             {"UA9", {"UA9", 17, 30, "AS"}}});
  EXPECT_EQ(table.Resolve("UA9ABC"), (measure_prefixes::Answer{"UA9", 17, 30, "AS"}));
}

TEST(PrefixTable, DoesNotTakeALongerPrefixForAShorterOne) {
  const measure_prefixes::PrefixTable table({{"DL10", {"DL", 14, 28, "EU"}}});
  EXPECT_EQ(table.Resolve("DL1ABC"), std::nullopt);
}

TEST(CountryFile, GivesTheLongestPrefixWithItsOwnZones) {
  const measure_prefixes::CtyFile file = measure_prefixes::CtyFile::Parse(kCountryFile);
  EXPECT_EQ(file.Find("K6XX"), (measure_prefixes::Answer{"K", 3, 6, "NA"}));
  EXPECT_EQ(file.Find("K1XX"), (measure_prefixes::Answer{"K", 5, 8, "NA"}));
}

TEST(CountryFile, PutsAWholeCallBeforeItsPrefix) {
  const measure_prefixes::CtyFile file = measure_prefixes::CtyFile::Parse(kCountryFile);
  EXPECT_EQ(file.Find("K6AA"), (measure_prefixes::Answer{"K", 4, 7, "OC"}));
  EXPECT_EQ(file.Find("II0X/MM"), (measure_prefixes::Answer{"I", 40, 28, "EU"}));
  EXPECT_TRUE(file.Lists("K6AA"));
  EXPECT_FALSE(file.Lists("K6XX"));
}

TEST(CountryFile, TurnsItsNamesIntoOurCodes) {
  const measure_prefixes::CtyFile file = measure_prefixes::CtyFile::Parse(kCountryFile);
  EXPECT_EQ(file.Find("IS0ABC"), (measure_prefixes::Answer{"IS0", 15, 28, "EU"}));
  EXPECT_EQ(file.Find("IG9A"), (measure_prefixes::Answer{"I", 33, 37, "AF"}));
}

TEST(CountryFile, TellsGuantanamoBayByTwoLetters) {
  const measure_prefixes::CtyFile file = measure_prefixes::CtyFile::Parse(kCountryFile);
  EXPECT_EQ(file.Find("KG4AB")->Country, "KG4");
  EXPECT_EQ(file.Find("KG4AB/P")->Country, "KG4");
  EXPECT_EQ(file.Find("KG4ABC"), (measure_prefixes::Answer{"K", 5, 8, "NA"}));
  EXPECT_EQ(file.Find("KG4A")->Country, "K");
}

TEST(CountryFile, KnowsNothingOfAnUnknownPrefix) {
  EXPECT_EQ(measure_prefixes::CtyFile::Parse(kCountryFile).Find("1N7N"), std::nullopt);
}

TEST(CountryFile, RefusesOtherText) {
  EXPECT_THROW((void)measure_prefixes::CtyFile::Parse("Codice,Modo\n1,SSB\n"), std::runtime_error);
}

TEST(Measuring, CountsCountriesAndZonesApart) {
  const measure_prefixes::PrefixTable table(
      {{"K6", {"K", 3, 6, "NA"}}, {"I0", {"IS0", 15, 28, "EU"}}});
  const measure_prefixes::Measurement result = measure_prefixes::Measure(
      table, measure_prefixes::CtyFile::Parse(kCountryFile), {"K6XX", "K6AA", "I0AA"});
  EXPECT_EQ(result.All.Calls, 3U);
  EXPECT_EQ(result.All.RightCountry, 2U);
  EXPECT_EQ(result.All.RightCountryAndZones, 1U);
  EXPECT_THAT(result.Misses, ElementsAre(Field(&measure_prefixes::Miss::Call, "K6AA"),
                                         Field(&measure_prefixes::Miss::Call, "I0AA")));
  EXPECT_EQ(result.WithoutOwnEntry.Calls, 2U);
  EXPECT_EQ(result.WithoutOwnEntry.RightCountry, 1U);
}

TEST(Measuring, CountsACallWithoutAnyAnswerAsRightOnlyIfNobodyKnowsIt) {
  const measure_prefixes::PrefixTable table({{"K6", {"K", 3, 6, "NA"}}});
  const measure_prefixes::Measurement result = measure_prefixes::Measure(
      table, measure_prefixes::CtyFile::Parse(kCountryFile), {"1N7N", "K1AA", "I0"});
  EXPECT_EQ(result.All.RightCountry, 1U);
  EXPECT_EQ(result.WithoutPrefix, 1U);
  EXPECT_EQ(result.NotInTable, 2U);
  EXPECT_EQ(result.UnknownToFile, 1U);
  EXPECT_EQ(result.UnknownToBoth, 1U);
}

TEST(Measuring, KnowsWhatOneAnswerForAPrefixCanReach) {
  const measure_prefixes::PrefixTable table(std::vector<measure_prefixes::PrefixTable::Row>{});
  const measure_prefixes::Measurement result =
      measure_prefixes::Measure(table, measure_prefixes::CtyFile::Parse(kCountryFile),
                                {"K6XX", "K6YY", "K6AA", "II0C", "II0D"});
  EXPECT_EQ(result.Ceiling.RightCountry, 4U);
  EXPECT_EQ(result.Ceiling.RightCountryAndZones, 3U);
}

}  // namespace
}  // namespace brenvo
