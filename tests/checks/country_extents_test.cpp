#include "checks/country_extents.h"

#include <gmock/gmock.h>

#include "tests/support/golden.h"

namespace brenvo::checks {
namespace {

CountryExtents Delivered() {
  return CountryExtents::Parse(ReadBytes(SourceDir() / "data/rules/Estensioni.csv"));
}

TEST(CountryExtents, HoldsASquareThatLiesInABoxOrTouchesIt) {
  const auto extents = CountryExtents::Parse("Country,Sud,Nord,Ovest,Est\nI,36,49,4,22\n");
  for (const char* square : {"JN65", "JN26", "JN20", "KN08", "JM76"}) {
    EXPECT_TRUE(extents.MayHold("I", square)) << square;
    EXPECT_TRUE(extents.MayHold("i ", square)) << square;
  }
  for (const char* square : {"JO60", "IN95", "KN09", "JM75", "KN15", "JN15", "AA00"}) {
    EXPECT_FALSE(extents.MayHold("I", square)) << square;
  }
}

TEST(CountryExtents, GoesOnBeyondTheDateLine) {
  const auto extents =
      CountryExtents::Parse("Country,Sud,Nord,Ovest,Est\nUA,60,70,170,182\nKL,50,60,-184,-160\n");
  EXPECT_TRUE(extents.MayHold("UA", "AP05"));
  EXPECT_FALSE(extents.MayHold("UA", "AP15"));
  EXPECT_TRUE(extents.MayHold("KL", "RO95"));
  EXPECT_FALSE(extents.MayHold("KL", "RO75"));
}

TEST(CountryExtents, KnowsNothingAgainstACountryThatItDoesNotKnow) {
  EXPECT_TRUE(Delivered().MayHold("9H", "AA00"));
  EXPECT_TRUE(Delivered().MayHold("", "AA00"));
}

TEST(CountryExtents, AreARoughOutlineOfEachCountryAsItIsDelivered) {
  const CountryExtents extents = Delivered();
  struct Place {
    const char* country;
    const char* square;
  };
  for (const Place& place :
       {Place{"I", "JN65"}, Place{"I", "JM68"}, Place{"I", "JN80"}, Place{"IS0", "JM49"},
        Place{"DL", "JO43"}, Place{"DL", "JN67"}, Place{"UA9", "RP73"}, Place{"K", "DM12"},
        Place{"K", "FN54"}, Place{"KL", "BP51"}, Place{"JA", "QN03"}, Place{"VK", "QE37"},
        Place{"OZ", "JO75"}, Place{"SV9", "KM25"}, Place{"G", "IO70"}, Place{"GM", "IP90"},
        Place{"OH", "KQ30"}, Place{"PA", "JO33"}}) {
    EXPECT_TRUE(extents.MayHold(place.country, place.square)) << place.country << place.square;
  }
  for (const Place& place : {Place{"I", "JO65"}, Place{"I", "KN65"}, Place{"DL", "JN65"},
                             Place{"DL", "KO62"}, Place{"F", "JN95"}, Place{"K", "JN65"},
                             Place{"JA", "JN65"}, Place{"OH", "JP20"}, Place{"G", "JO62"}}) {
    EXPECT_FALSE(extents.MayHold(place.country, place.square)) << place.country << place.square;
  }
}

TEST(CountryExtents, RefuseATextThatIsNoSuchTable) {
  EXPECT_THROW(CountryExtents::Parse("Country,Sud\nI,36\n"), std::runtime_error);
  EXPECT_THROW(CountryExtents::Parse("Country,Sud,Nord,Ovest,Est\nI,36,49,4,x\n"),
               std::runtime_error);
}

}  // namespace
}  // namespace brenvo::checks
