#include "digital/needs.h"

#include <gmock/gmock.h>

namespace brenvo::digital {
namespace {

using ::testing::HasSubstr;

TEST(Needs, AreReadWithTheirScopesAndSounds) {
  const ParsedNeeds parsed = ParseNeeds("Country!, zona cq banda , Square banda modo conferma");
  EXPECT_EQ(parsed.fault, "");
  ASSERT_EQ(parsed.needs.size(), 3u);
  EXPECT_TRUE(parsed.needs[0].sounds);
  EXPECT_EQ(parsed.needs[1].kind, worked::Kind::kZonaCQ);
  EXPECT_TRUE(parsed.needs[1].onBand);
  EXPECT_FALSE(parsed.needs[1].inMode);
  EXPECT_EQ(parsed.needs[2].words, "Square banda modo conferma");
}

TEST(Needs, WhatIsNotUnderstoodIsNamed) {
  EXPECT_THAT(ParseNeeds("Country, Prato").fault, HasSubstr("Prato"));
  EXPECT_THAT(ParseNeeds("Country sempre").fault, HasSubstr("sempre"));
  EXPECT_THAT(ParseNeeds("Countryx").fault, HasSubstr("Countryx"));
  EXPECT_NE(ParseNeeds(" , ").fault, "");
}

class OfAStation : public ::testing::Test {
 protected:
  OfAStation() {
    index.Add({.Call = "DL1ABC",
               .Prefisso = "DL1",
               .Country = "DL",
               .Continente = "EU",
               .Provincia = {},
               .Locator = "JO31",
               .Banda = " 20 m",
               .Modo = "FT8",
               .Propagazione = {},
               .Note = {},
               .ZonaCQ = 14,
               .ZonaITU = 28,
               .confirmedBy = 0});
  }
  std::string First(std::string_view needs, const Heard& heard) {
    const ParsedNeeds parsed = ParseNeeds(needs);
    const auto first = FirstNeed(parsed.needs, index, heard);
    return first ? parsed.needs[*first].words : "none";
  }
  worked::WorkedIndex index{std::make_shared<const worked::Rules>()};
  Heard same{.call = "DL1ABC",
             .prefisso = "DL1",
             .country = "DL",
             .continente = "EU",
             .provincia = {},
             .locator = "JO31",
             .zonaCQ = 14,
             .zonaITU = 28,
             .banda = " 20 m",
             .modo = "FT8"};
};

TEST_F(OfAStation, WhatIsWorkedIsNone) {
  EXPECT_EQ(First("Country, Zona CQ, Zona ITU, Continente, Prefisso, Square, Call", same), "none");
}

TEST_F(OfAStation, AnotherBandMeetsTheNeedsOfTheBandAlone) {
  Heard other = same;
  other.banda = " 40 m";
  EXPECT_EQ(First("Country, Country banda", other), "Country banda");
}

TEST_F(OfAStation, WhatIsNotConfirmedMeetsANeedOfConfirmation) {
  EXPECT_EQ(First("Country, Country conferma", same), "Country conferma");
}

TEST_F(OfAStation, TheFirstOneCounts) {
  Heard other = same;
  other.country = "K";
  other.zonaCQ = 5;
  EXPECT_EQ(First("Zona CQ, Country", other), "Zona CQ");
  EXPECT_EQ(First("Country, Zona CQ", other), "Country");
}

TEST_F(OfAStation, WhatIsNotKnownIsNoNeed) {
  EXPECT_EQ(First("Country, Zona CQ, Square, Square banda, Country modo, Prefisso", Heard{}),
            "none");
}

}  // namespace
}  // namespace brenvo::digital
