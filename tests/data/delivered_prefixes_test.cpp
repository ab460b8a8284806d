#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <string_view>

#include "tests/data/sqlite_query.h"
#include "tests/support/places.h"
#include "tools/measure_prefixes/prefix_table.h"

namespace brenvo {
namespace {

using testing::IsEmpty;

struct KnownCall {
  std::string_view Call;
  measure_prefixes::Answer Tells;
};

const KnownCall knownCalls[] = {
    {"IK3ABC", {"I", 15, 28, "EU"}},   {"I1ABC", {"I", 15, 28, "EU"}},
    {"IW0ABC", {"I", 15, 28, "EU"}},   {"IQ0XX", {"I", 15, 28, "EU"}},
    {"IT9ABC", {"I", 15, 28, "EU"}},   {"IG9A", {"I", 33, 37, "AF"}},
    {"IH9P", {"I", 33, 37, "AF"}},     {"IS0ABC", {"IS0", 15, 28, "EU"}},
    {"IM0A", {"IS0", 15, 28, "EU"}},   {"HV0A", {"HV", 15, 28, "EU"}},
    {"T77C", {"T7", 15, 28, "EU"}},    {"1A0KM", {"1A", 15, 28, "EU"}},
    {"W1AW", {"K", 5, 8, "NA"}},       {"K3LR", {"K", 5, 8, "NA"}},
    {"N4ABC", {"K", 5, 8, "NA"}},      {"K5ZD", {"K", 4, 7, "NA"}},
    {"K6XX", {"K", 3, 6, "NA"}},       {"W7RN", {"K", 3, 6, "NA"}},
    {"K9ABC", {"K", 4, 8, "NA"}},      {"W0AIH", {"K", 4, 7, "NA"}},
    {"KG4ABC", {"K", 5, 8, "NA"}},     {"VE3ABC", {"VE", 4, 4, "NA"}},
    {"VE2IM", {"VE", 5, 4, "NA"}},     {"VE7GL", {"VE", 3, 2, "NA"}},
    {"VO1MP", {"VE", 5, 9, "NA"}},     {"VY1JA", {"VE", 1, 2, "NA"}},
    {"KH6LC", {"KH6", 31, 61, "OC"}},  {"KL7RA", {"KL", 1, 1, "NA"}},
    {"KP4ABC", {"KP4", 8, 11, "NA"}},  {"KP2M", {"KP2", 8, 11, "NA"}},
    {"KH2L", {"KH2", 27, 64, "OC"}},   {"KH0W", {"KH0", 27, 64, "OC"}},
    {"JA1ABC", {"JA", 25, 45, "AS"}},  {"JR6ABC", {"JA", 25, 45, "AS"}},
    {"7J1ABC", {"JA", 25, 45, "AS"}},  {"JD1BMH", {"JD/O", 27, 45, "AS"}},
    {"UA3ABC", {"UA", 16, 29, "EU"}},  {"RA1A", {"UA", 16, 29, "EU"}},
    {"RA2FA", {"UA2", 15, 29, "EU"}},  {"UA2FB", {"UA2", 15, 29, "EU"}},
    {"UA9ABC", {"UA9", 17, 30, "AS"}}, {"OH2BH", {"OH", 15, 18, "EU"}},
    {"OH0X", {"OH0", 15, 18, "EU"}},   {"OJ0B", {"OJ0", 15, 18, "EU"}},
    {"TK5KP", {"TK", 15, 28, "EU"}},   {"F5ABC", {"F", 14, 27, "EU"}},
    {"EA3ABC", {"EA", 14, 37, "EU"}},  {"EA8ABC", {"EA8", 33, 36, "AF"}},
    {"EA6ABC", {"EA6", 14, 37, "EU"}}, {"EA9IB", {"EA9", 33, 37, "AF"}},
    {"CT1ABC", {"CT", 14, 37, "EU"}},  {"CT3MD", {"CT3", 33, 36, "AF"}},
    {"CU2AF", {"CU", 14, 36, "EU"}},   {"9A2AA", {"9A", 15, 28, "EU"}},
    {"S57AL", {"S5", 15, 28, "EU"}},   {"S51AB", {"S5", 15, 28, "EU"}},
    {"E73ABC", {"E7", 15, 28, "EU"}},  {"YU1ABC", {"YU", 15, 28, "EU"}},
    {"Z35M", {"Z3", 15, 28, "EU"}},    {"Z61AA", {"Z6", 15, 28, "EU"}},
    {"4O3A", {"4O", 15, 28, "EU"}},    {"ZA1A", {"ZA", 15, 28, "EU"}},
    {"3A2MW", {"3A", 14, 27, "EU"}},   {"4U1ITU", {"4U1I", 14, 28, "EU"}},
    {"OE3ABC", {"OE", 15, 28, "EU"}},  {"HB9ABC", {"HB", 14, 28, "EU"}},
    {"HB0ABC", {"HB0", 14, 28, "EU"}}, {"DL1ABC", {"DL", 14, 28, "EU"}},
    {"DK8AB", {"DL", 14, 28, "EU"}},   {"G3ABC", {"G", 14, 27, "EU"}},
    {"M0ABC", {"G", 14, 27, "EU"}},    {"2E0ABC", {"G", 14, 27, "EU"}},
    {"GM3ABC", {"GM", 14, 27, "EU"}},  {"GW4ABC", {"GW", 14, 27, "EU"}},
    {"GI0ABC", {"GI", 14, 27, "EU"}},  {"GD3ABC", {"GD", 14, 27, "EU"}},
    {"GJ3ABC", {"GJ", 14, 27, "EU"}},  {"GU3ABC", {"GU", 14, 27, "EU"}},
    {"EI2ABC", {"EI", 14, 27, "EU"}},  {"PA3ABC", {"PA", 14, 27, "EU"}},
    {"ON4UN", {"ON", 14, 27, "EU"}},   {"LX1NO", {"LX", 14, 27, "EU"}},
    {"OZ1ABC", {"OZ", 14, 18, "EU"}},  {"OY1CT", {"OY", 14, 18, "EU"}},
    {"LA1ABC", {"LA", 14, 18, "EU"}},  {"JW1ABC", {"JW", 40, 18, "EU"}},
    {"SM5ABC", {"SM", 14, 18, "EU"}},  {"TF3ABC", {"TF", 40, 17, "EU"}},
    {"OX3ABC", {"OX", 40, 5, "NA"}},   {"ES1ABC", {"ES", 15, 29, "EU"}},
    {"YL2ABC", {"YL", 15, 29, "EU"}},  {"LY2ABC", {"LY", 15, 29, "EU"}},
    {"SP5ABC", {"SP", 15, 28, "EU"}},  {"OK1ABC", {"OK", 15, 28, "EU"}},
    {"OM3ABC", {"OM", 15, 28, "EU"}},  {"HA5ABC", {"HA", 15, 28, "EU"}},
    {"YO3ABC", {"YO", 20, 28, "EU"}},  {"LZ1ABC", {"LZ", 20, 28, "EU"}},
    {"SV1ABC", {"SV", 20, 28, "EU"}},  {"SV5ABC", {"SV5", 20, 28, "EU"}},
    {"SV9ABC", {"SV9", 20, 28, "EU"}}, {"TA1ABC", {"TA", 20, 39, "EU"}},
    {"TA2ABC", {"TA", 20, 39, "AS"}},  {"5B4ABC", {"5B", 20, 39, "AS"}},
    {"4X4ABC", {"4X", 20, 39, "AS"}},  {"OD5ABC", {"OD", 20, 39, "AS"}},
    {"UR5ABC", {"UR", 16, 29, "EU"}},  {"EU1ABC", {"EU", 16, 29, "EU"}},
    {"ER1ABC", {"ER", 16, 29, "EU"}},  {"4L1ABC", {"4L", 21, 29, "AS"}},
    {"UN7ABC", {"UN", 17, 30, "AS"}},  {"A61ABC", {"A6", 21, 39, "AS"}},
    {"A45XR", {"A4", 21, 39, "AS"}},   {"HZ1AB", {"HZ", 21, 39, "AS"}},
    {"EP2ABC", {"EP", 21, 40, "AS"}},  {"VU2ABC", {"VU", 22, 41, "AS"}},
    {"4S7ABC", {"4S", 22, 41, "AS"}},  {"HS0ZIA", {"HS", 26, 49, "AS"}},
    {"9V1ABC", {"9V", 28, 54, "AS"}},  {"9M2ABC", {"9M2", 28, 54, "AS"}},
    {"9M6ABC", {"9M6", 28, 54, "OC"}}, {"YB0ABC", {"YB", 28, 54, "OC"}},
    {"DU1ABC", {"DU", 27, 50, "OC"}},  {"BY1AA", {"BY", 24, 44, "AS"}},
    {"BV2ABC", {"BV", 24, 44, "AS"}},  {"VR2ABC", {"VR", 24, 44, "AS"}},
    {"HL1ABC", {"HL", 25, 44, "AS"}},  {"JT1ABC", {"JT", 23, 32, "AS"}},
    {"VK2ABC", {"VK", 30, 59, "OC"}},  {"VK6ABC", {"VK", 29, 58, "OC"}},
    {"VK9NT", {"VK9N", 32, 60, "OC"}}, {"ZL1ABC", {"ZL", 32, 60, "OC"}},
    {"ZL7ABC", {"ZL7", 32, 60, "OC"}}, {"3D2AG", {"3D2", 32, 56, "OC"}},
    {"FK8ABC", {"FK", 32, 56, "OC"}},  {"FO5ABC", {"FO", 32, 63, "OC"}},
    {"LU1ABC", {"LU", 13, 14, "SA"}},  {"PY2ABC", {"PY", 11, 15, "SA"}},
    {"CE3ABC", {"CE", 12, 14, "SA"}},  {"CX2ABC", {"CX", 13, 14, "SA"}},
    {"HC2ABC", {"HC", 10, 12, "SA"}},  {"HC8ABC", {"HC8", 10, 12, "SA"}},
    {"YV5ABC", {"YV", 9, 12, "SA"}},   {"HK3ABC", {"HK", 9, 12, "SA"}},
    {"P40L", {"P4", 9, 11, "SA"}},     {"PJ2T", {"PJ2", 9, 11, "SA"}},
    {"V31MA", {"V3", 7, 11, "NA"}},    {"XE1ABC", {"XE", 6, 10, "NA"}},
    {"CO2ABC", {"CM", 8, 11, "NA"}},   {"6Y5WJ", {"6Y", 8, 11, "NA"}},
    {"C6AGU", {"C6", 8, 11, "NA"}},    {"VP9KF", {"VP9", 5, 11, "NA"}},
    {"VP8LP", {"VP8", 13, 16, "SA"}},  {"ZS6ABC", {"ZS", 38, 57, "AF"}},
    {"5Z4ABC", {"5Z", 37, 48, "AF"}},  {"CN8ABC", {"CN", 33, 37, "AF"}},
    {"3V8BB", {"3V", 33, 37, "AF"}},   {"7X2ABC", {"7X", 33, 37, "AF"}},
    {"5A1A", {"5A", 34, 38, "AF"}},    {"SU1ABC", {"SU", 34, 38, "AF"}},
    {"FR5ABC", {"FR", 39, 53, "AF"}},  {"D44AC", {"D4", 35, 46, "AF"}},
};

std::optional<measure_prefixes::Answer> Resolved(std::string_view call) {
  static const measure_prefixes::PrefixTable table =
      measure_prefixes::PrefixTable::Load(BuildDir() / "delivered" / "Brenvo.mdb");
  return table.Resolve(call);
}

TEST(DeliveredPrefixes, WellKnownCallsFindTheirCountryZonesAndContinent) {
  for (const auto& [call, tells] : knownCalls) {
    const std::optional<measure_prefixes::Answer> found = Resolved(call);
    ASSERT_TRUE(found) << call;
    EXPECT_EQ(*found, tells) << call << " gives " << found->Country << " " << found->ZoneCq << "/"
                             << found->ZoneItu << " " << found->Continent;
  }
}

TEST(DeliveredPrefixes, EveryItalianCallAreaIsItalyOrSardinia) {
  for (const std::string_view letters : {"I", "IK", "IZ", "IW", "IU", "IN", "IV", "IQ", "II"}) {
    for (char area = '0'; area <= '9'; ++area) {
      const std::string call = std::string(letters) + area + "ABC";
      ASSERT_TRUE(Resolved(call)) << call;
      EXPECT_EQ(Resolved(call)->Country, "I") << call;
    }
  }
}

TEST(DeliveredPrefixes, SpecialCallsWithSeveralDigitsAreFoundInTheirCountry) {
  EXPECT_EQ(Resolved("OE20XYZ")->Country, "OE");
  EXPECT_EQ(Resolved("TM24JO")->Country, "F");
  EXPECT_EQ(Resolved("9A50AA")->Country, "9A");
  EXPECT_EQ(Resolved("DL75DARC")->Country, "DL");
}

TEST(DeliveredPrefixes, EachBelongsToACountryOfTheTable) {
  EXPECT_THAT(DeliveredColumn("SELECT Prefisso FROM Prefissi WHERE Country NOT IN "
                              "(SELECT Country FROM Country)"),
              IsEmpty());
}

TEST(DeliveredPrefixes, NoneBelongsToADeletedCountry) {
  EXPECT_THAT(DeliveredColumn("SELECT Prefisso FROM Prefissi JOIN Country USING (Country) "
                              "WHERE Deleted <> ''"),
              IsEmpty());
}

TEST(DeliveredPrefixes, EachIsUpperCaseOfAtMostFiveCharactersAndEndsInItsDigit) {
  for (const std::string& prefix : DeliveredColumn("SELECT Prefisso FROM Prefissi")) {
    EXPECT_EQ(measure_prefixes::PrefixOf(prefix + "A"), prefix);
    EXPECT_LE(prefix.size(), 5U) << prefix;
    EXPECT_EQ(prefix.find_first_not_of("ABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789"), std::string::npos)
        << prefix;
  }
}

TEST(DeliveredPrefixes, ZonesAndContinentsExist) {
  EXPECT_THAT(DeliveredColumn("SELECT Prefisso FROM Prefissi "
                              "WHERE NOT ([Zona CQ] BETWEEN 1 AND 40 AND [Zona ITU] BETWEEN 1 AND "
                              "90 AND Continente IN ('AF', 'AN', 'AS', 'EU', 'NA', 'OC', 'SA'))"),
              IsEmpty());
}

TEST(DeliveredPrefixes, CountriesWithoutARowAreThoseThatShareAPrefix) {
  // Their calls differ from another country's by letters behind the digit, and the zones are the
  // other's too or sort before it.
  EXPECT_THAT(DeliveredColumn("SELECT Country FROM Country WHERE Deleted = '' AND Country NOT IN "
                              "(SELECT Country FROM Prefissi) ORDER BY Country"),
              testing::ElementsAre("3D2/R", "3Y/P", "BV9P", "CE0X", "CE0Z", "E5/N", "FO/C", "FT/G",
                                   "FT/J", "FT/Z", "KH7K", "KH8/S", "PY0S", "SV/A", "VK9L", "VK9X",
                                   "VP2E", "VP2V", "VP6/D", "VP8/O", "VP8/S"));
}

}  // namespace
}  // namespace brenvo
