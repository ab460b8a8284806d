#include "geo/locator.h"

#include <gtest/gtest.h>

#include <cmath>
#include <stdexcept>
#include <string>

namespace brenvo::geo {
namespace {

TEST(Locator, PairsAreComparedAsTextsAndNotAsClasses) {
  EXPECT_FALSE(IsValidLocator("jn65aa"));
  EXPECT_FALSE(IsValidLocator("JN65A"));
  EXPECT_TRUE(IsValidLocator("JN65AA"));
  EXPECT_TRUE(IsValidLocator("J165AA"));  // "J1" sorts between "AA" and "ZZ"
  EXPECT_TRUE(IsValidLocator("B765AA"));
  EXPECT_TRUE(IsValidLocator("JN0ZAA"));
  EXPECT_FALSE(IsValidLocator("JN65aa"));
  EXPECT_FALSE(IsValidLocator("JNA5AA"));
  EXPECT_FALSE(IsValidLocator(""));
  EXPECT_FALSE(IsValidLocator("èàùòì"));
  EXPECT_FALSE(IsValidLocator("èàùòìé"));
}

TEST(Locator, WhatFollowsTheSixthCharacterIsIgnored) {
  EXPECT_TRUE(IsValidLocator("JN65AA12"));
  const Position six = LocatorToRadians("JN65AA");
  const Position eight = LocatorToRadians("JN65AA12");
  EXPECT_EQ(six.longitude, eight.longitude);
  EXPECT_EQ(six.latitude, eight.latitude);
}

TEST(Locator, ThePositionIsTheCentreOfTheSubsquare) {
  const Position position = LocatorToRadians("JN65AA");
  EXPECT_NEAR(position.longitude * 180 / kPiValue, 12.0417, 0.00005);
  EXPECT_NEAR(position.latitude * 180 / kPiValue, 45.0208, 0.00005);
}

TEST(Locator, ItTrustsWhateverSixCharactersItFinds) {
  EXPECT_NO_THROW(LocatorToRadians("JN65aa"));
  EXPECT_THROW(LocatorToRadians("JN65A"), std::out_of_range);
}

TEST(Locator, AShorterTextIsToldInItalian) {
  try {
    QrbKm("", "JN65AA");
    FAIL();
  } catch (const std::out_of_range& failure) {
    EXPECT_STREQ(failure.what(), "Il locator \"\" non ha sei caratteri");
  }
}

struct Distance {
  const char* from;
  const char* to;
  int km;
};

TEST(Locator, DistancesAreTheSystemsOwn) {
  const Distance cases[] = {{"JN65AA", "JN55AA", 157},  {"JN65AA", "IO91AA", 1233},
                            {"JN65AA", "FN31AA", 6657}, {"JN65AA", "JN65AB", 5},
                            {"JN65AA", "JN65AA", 1},    {"JN65AA", "", 0}};
  for (const Distance& c : cases) EXPECT_EQ(QrbKm(c.from, c.to), c.km) << c.to;
}

TEST(Locator, ABlankDestinationIsNoDistanceWhateverTheOrigin) {
  EXPECT_EQ(QrbKm("", ""), 0);
  EXPECT_EQ(QrbKm("", "   "), 0);
}

TEST(Locator, EqualTextsAreOneKilometreEvenIfTheyAreNoLocators) { EXPECT_EQ(QrbKm("X", "X"), 1); }

TEST(Locator, TwoTextsForOnePlaceAreAFailure) {
  EXPECT_THROW(QrbKm("JN65AA", "JN65AA12"), std::domain_error);
}

struct Bearings {
  const char* to;
  int shortPath, longPath;
};

TEST(Locator, BearingsAreWholeDegrees) {
  const Bearings cases[] = {{"IO91AA", 308, 128}, {"FN31AA", 300, 120}, {"PM95AA", 41, 221}};
  for (const Bearings& c : cases) {
    const Bearing bearing = BearingSpLp("JN65AA", c.to);
    EXPECT_EQ(bearing.shortPath, c.shortPath) << c.to;
    EXPECT_EQ(bearing.longPath, c.longPath) << c.to;
  }
}

TEST(Locator, DueSouthOnTheSameLongitudeIsNotTurnedRound) {
  // Equal longitudes: the bearing is taken as it is, near 180, never as 360 less it.
  EXPECT_NEAR(BearingSpLp("JN65AA", "JN61AA").shortPath, 180, 1);
}

TEST(Locator, ALongPathOf360IsNotWrappedTo0) {
  int found = 0;
  // Due south the bearing lies at 180 within the last digits: some of the places reach it.
  for (char square = '0'; square <= '4'; ++square) {
    for (char subsquare = 'A'; subsquare <= 'X'; ++subsquare) {
      try {
        const Bearing bearing =
            BearingSpLp("JN65AA", std::string("JN6") + square + 'A' + subsquare);
        if (bearing.shortPath != 180) continue;
        ++found;
        EXPECT_EQ(bearing.longPath, 360);
      } catch (const std::domain_error&) {
        // Rounding has left the arc cosine's range.
      }
    }
  }
  EXPECT_GT(found, 0);
}

TEST(Locator, AShortPathOf0HasALongPathOf180) {
  const Bearing bearing = BearingSpLp("JN65AA", "JP65BA");
  EXPECT_EQ(bearing.shortPath, 0);
  EXPECT_EQ(bearing.longPath, 180);
}

TEST(Locator, ThePositionLineKeepsTheBlanksOfItsNumbers) {
  EXPECT_EQ(PositionLine("JN65AA", "IO91AA"), "SP 308°/LP 128°  -  LAT 51°/LONG-2°  -  Km. 1233");
}

}  // namespace
}  // namespace brenvo::geo
