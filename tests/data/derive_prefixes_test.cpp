#include "tools/derive_prefixes/derive.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <tuple>

namespace brenvo {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::string_view countries =
    "England:        14:  27:  EU:   52.77:     1.47:     0.0:  G:\n"
    "    G,=GB75VE;\n"
    "Slovenia:       15:  28:  EU:   46.00:   -14.00:    -1.0:  S5:\n"
    "    S5;\n"
    "Kingdom of Eswatini: 38:  57:  AF:  -26.65:   -31.48:    -2.0:  3DA:\n"
    "    3DA;\n"
    "European Russia: 16:  29:  EU:   53.65:   -41.37:    -4.0:  UA:\n"
    "    UA,UA2A,UA9X(17)[20];\n"
    "Kaliningrad:    15:  29:  EU:   54.72:   -20.52:    -3.0:  UA2:\n"
    "    UA2;\n"
    "Asiatic Russia: 17:  30:  AS:   55.88:   -84.08:    -7.0:  UA9:\n"
    "    UA9,UA9U(18)[31],UA9V(18)[31];\n"
    "France:         14:  27:  EU:   46.00:    -2.00:    -1.0:  F:\n"
    "    F,TO;\n"
    "Martinique:     08:  11:  NA:   14.70:    61.03:     4.0:  FM:\n"
    "    FM,=TO5A;\n"
    "Fiji:           32:  56:  OC:  -17.78:  -177.92:   -12.0:  3D2:\n"
    "    3D2;\n"
    "Rotuma Island:  32:  56:  OC:  -12.48:  -177.08:   -12.0:  3D2/r:\n"
    "    =3D2R;\n";

// Deriving takes its time: it is done once for the same calls.
const std::vector<measure_prefixes::PrefixTable::Row>& Derived(
    const std::vector<std::string>& calls) {
  static std::map<std::vector<std::string>, std::vector<measure_prefixes::PrefixTable::Row>> known;
  const auto [entry, isNew] = known.try_emplace(calls);
  if (isNew)
    entry->second =
        derive_prefixes::DerivePrefixes(measure_prefixes::CtyFile::Parse(countries), calls);
  return entry->second;
}

// The answers for a prefix, as "country CQ/ITU".
std::vector<std::string> RowsOf(std::string_view prefix, const std::vector<std::string>& calls) {
  std::vector<std::string> answers;
  for (const auto& row : Derived(calls)) {
    if (row.Prefix != prefix) continue;
    answers.push_back(row.Tells.Country + " " + std::to_string(row.Tells.ZoneCq) + "/" +
                      std::to_string(row.Tells.ZoneItu));
  }
  return answers;
}

TEST(DerivingPrefixes, GivesEveryCallAreaOfALetterAndOfTwo) {
  for (const std::string_view prefix : {"G0", "G9", "GM3", "GZ0", "F5"}) {
    EXPECT_THAT(RowsOf(prefix, {}), testing::SizeIs(1)) << prefix;
  }
  EXPECT_THAT(RowsOf("G12", {}), IsEmpty());
  EXPECT_THAT(RowsOf("H1", {}), IsEmpty());
}

TEST(DerivingPrefixes, PutsTheCallAreaBehindAnAllocationThatEndsInADigit) {
  for (const std::string_view prefix : {"S5", "S50", "S59"}) {
    EXPECT_THAT(RowsOf(prefix, {}), ElementsAre("S5 15/28")) << prefix;
  }
  EXPECT_THAT(RowsOf("3DA0", {}), ElementsAre("3DA 38/57"));
}

TEST(DerivingPrefixes, TakesWhatMostLettersTellWhenNoCallsAreKnown) {
  EXPECT_THAT(RowsOf("UA2", {}), ElementsAre("UA2 15/29", "UA 16/29"));
}

TEST(DerivingPrefixes, LetsCallsOverruleLettersAndDropsWhatWouldSortBeforeThem) {
  EXPECT_THAT(RowsOf("UA9", {}), ElementsAre("UA9 17/30", "UA9 18/31"));
  EXPECT_THAT(RowsOf("UA9", {"UA9UAA", "UA9UAB", "UA9VAA", "UA9AAA"}), ElementsAre("UA9 18/31"));
}

TEST(DerivingPrefixes, GivesOneAnswerToCountriesOfTheSameZones) {
  EXPECT_THAT(RowsOf("3D2", {"3D2R", "3D2AA", "3D2BB"}), ElementsAre("3D2 32/56"));
}

TEST(DerivingPrefixes, AddsNumbersHeardInSpecialCalls) {
  EXPECT_THAT(RowsOf("GB75", {}), ElementsAre("G 14/27"));
  EXPECT_THAT(RowsOf("GB60", {"GB60AA"}), ElementsAre("G 14/27"));
  EXPECT_THAT(RowsOf("GB60", {}), IsEmpty());
  EXPECT_THAT(RowsOf("TM24", {}), IsEmpty());  // nobody has TM in these countries
}

TEST(DerivingPrefixes, LeavesOutWhatIsTooLongPortableOrMistyped) {
  for (const std::string call : {"GB1000A", "G/S57AA", "G02AAA"}) {
    EXPECT_THAT(RowsOf(measure_prefixes::PrefixOf(call), {call}), IsEmpty()) << call;
  }
}

TEST(DerivingPrefixes, SeesFrenchOverseasCallsOverseas) {
  EXPECT_THAT(RowsOf("TO5", {}), ElementsAre("FM 8/11"));
  EXPECT_THAT(RowsOf("TO1", {}), ElementsAre("F 14/27"));
}

TEST(DerivingPrefixes, OrdersRowsAsTheTableDoes) {
  const auto& rows = Derived({});
  ASSERT_FALSE(rows.empty());
  EXPECT_TRUE(std::is_sorted(rows.begin(), rows.end(), [](const auto& a, const auto& b) {
    return std::tie(a.Prefix, a.Tells.ZoneCq, a.Tells.ZoneItu, a.Tells.Continent) <
           std::tie(b.Prefix, b.Tells.ZoneCq, b.Tells.ZoneItu, b.Tells.Continent);
  }));
}

}  // namespace
}  // namespace brenvo
