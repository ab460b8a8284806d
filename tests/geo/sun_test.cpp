#include "geo/sun.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

namespace brenvo::geo {
namespace {

constexpr double kDegree = std::numbers::pi / 180;

struct Day {
  const char* place;
  double latitude, longitude;  // degrees
  base::DateTime noon, rise, set;
};

// From published almanacs, to the minute.
TEST(Sun, RisesAndSetsAsTheAlmanacsSay) {
  const auto at = base::DateTime::Of;
  const Day days[] = {
      {"London, June", 51.5, -0.13, at(2024, 6, 20, 12, 0, 0), at(2024, 6, 20, 3, 43, 0),
       at(2024, 6, 20, 20, 21, 0)},
      {"London, December", 51.5, -0.13, at(2024, 12, 21, 12, 0, 0), at(2024, 12, 21, 8, 4, 0),
       at(2024, 12, 21, 15, 53, 0)},
      {"New York, June", 40.71, -74.01, at(2024, 6, 20, 17, 0, 0), at(2024, 6, 20, 9, 25, 0),
       at(2024, 6, 21, 0, 31, 0)},
      {"Sydney, December", -33.87, 151.21, at(2024, 12, 21, 2, 0, 0), at(2024, 12, 20, 18, 41, 0),
       at(2024, 12, 21, 9, 5, 0)},
  };
  for (const Day& day : days) {
    const SunTimes sun = SunOn({day.longitude * kDegree, day.latitude * kDegree}, day.noon);
    ASSERT_TRUE(sun.rise && sun.set) << day.place;
    EXPECT_NEAR(static_cast<double>(sun.rise->Seconds() - day.rise.Seconds()), 0, 120) << day.place;
    EXPECT_NEAR(static_cast<double>(sun.set->Seconds() - day.set.Seconds()), 0, 120) << day.place;
    EXPECT_TRUE(sun.isUpAtNoon) << day.place;
  }
}

TEST(Sun, NearThePolesItStaysUpInSummerAndDownInWinter) {
  const Position north{25 * kDegree, 78 * kDegree};
  const SunTimes summer = SunOn(north, base::DateTime::Of(2024, 6, 20, 12, 0, 0));
  EXPECT_FALSE(summer.rise || summer.set);
  EXPECT_TRUE(summer.isUpAtNoon);
  const SunTimes winter = SunOn(north, base::DateTime::Of(2024, 12, 20, 12, 0, 0));
  EXPECT_FALSE(winter.rise || winter.set);
  EXPECT_FALSE(winter.isUpAtNoon);
}

TEST(Sun, OnThePoleItselfNothingIsDividedByZero) {
  for (const double pole : {90.0, -90.0}) {
    const SunTimes sun = SunOn({0, pole * kDegree}, base::DateTime::Of(2024, 6, 20, 12, 0, 0));
    EXPECT_EQ(sun.isUpAtNoon, pole > 0);
  }
}

TEST(Sun, WhateverTheHourItIsTheNearestDaysRiseAndSetInTheirOrder) {
  for (int hour = 0; hour < 48; ++hour) {
    for (int longitude = -180; longitude <= 180; longitude += 15) {
      const auto when = base::DateTime::Of(2026, 3, 1, 0, 0, 0).Later(hour * 3600);
      const SunTimes sun = SunOn({longitude * kDegree, 45 * kDegree}, when);
      ASSERT_TRUE(sun.rise && sun.set);
      EXPECT_LT(*sun.rise, *sun.set);
      const double noon =
          (static_cast<double>(sun.rise->Seconds()) + static_cast<double>(sun.set->Seconds())) / 2;
      EXPECT_LE(std::abs(noon - static_cast<double>(when.Seconds())), 12 * 3600 + 1200)
          << hour << ' ' << longitude;
    }
  }
}

}  // namespace
}  // namespace brenvo::geo
