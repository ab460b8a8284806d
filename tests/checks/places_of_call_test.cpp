#include "checks/places_of_call.h"

#include <gtest/gtest.h>

namespace brenvo::checks {
namespace {

TEST(Locators, AreFourSixOrMoreCharactersOfTheRightKinds) {
  for (const char* text : {"JN65", "JN65AA", "RR99XX", "JN65AA00", "JN65AA00XX"}) {
    EXPECT_TRUE(IsLocator(text)) << text;
  }
  for (const char* text : {"", "JN", "JN6", "JN65A", "JN65YA", "SN65AA", "JN6AAA", "jn65aa",
                           "JN65AAAA", "JN65 A", "65JNAA"}) {
    EXPECT_FALSE(IsLocator(text)) << text;
  }
}

TEST(Locators, ComeBackFromTheirNumbers) {
  for (const char* text : {"AA00AA", "JN65AA", "RR99XX", "IO91WM"}) {
    EXPECT_EQ(LocatorOf(PackedLocator(text)), text);
  }
  EXPECT_EQ(PackedLocator("JN65"), 0u);
  EXPECT_EQ(PackedLocator("JN65A?"), 0u);
  EXPECT_EQ(PackedLocator("JN65AA12"), PackedLocator("JN65AA"));
}

TEST(Locators, HaveADistanceWhereverTheyLie) {
  EXPECT_EQ(KmBetween(PackedLocator("JN65AA"), PackedLocator("JN65AA")), 0);
  EXPECT_EQ(KmBetween(PackedLocator("JN65AA"), PackedLocator("JO65AA")), 1111);
  // Opposite each other, half the way round.
  EXPECT_NEAR(KmBetween(PackedLocator("JJ00AA"), PackedLocator("AI09AX")), 20004, 2);
}

}  // namespace
}  // namespace brenvo::checks
