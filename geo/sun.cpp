#include "geo/sun.h"

#include <cmath>
#include <numbers>

namespace brenvo::geo {
namespace {

constexpr double kDegree = std::numbers::pi / 180;
constexpr double kSecondsOfDay = 86400;
// Half the sun's disc, and what the air bends of its light.
constexpr double kBelowHorizon = -0.833 * kDegree;

// Days since noon of 1 January 2000, UTC.
double DaysOf(base::DateTime when) {
  static const auto kEpoch = base::DateTime::Of(2000, 1, 1, 12, 0, 0);
  return static_cast<double>(when.Seconds() - kEpoch.Seconds()) / kSecondsOfDay;
}

base::DateTime MomentOf(double days) {
  static const auto kEpoch = base::DateTime::Of(2000, 1, 1, 12, 0, 0);
  return kEpoch.Later(std::llround(days * kSecondsOfDay));
}

struct Sun {
  double declination = 0;
  double equationOfTime = 0;  // days by which the sun is ahead of the clock
};

Sun SunAt(double days) {
  const double anomaly = (357.528 + 0.9856003 * days) * kDegree;
  const double meanLongitude = 280.460 + 0.9856474 * days;
  const double longitude =
      (meanLongitude + 1.915 * std::sin(anomaly) + 0.020 * std::sin(2 * anomaly)) * kDegree;
  const double obliquity = (23.439 - 0.0000004 * days) * kDegree;
  const double rightAscension =
      std::atan2(std::cos(obliquity) * std::sin(longitude), std::cos(longitude));
  return {std::asin(std::sin(obliquity) * std::sin(longitude)),
          std::remainder(meanLongitude - rightAscension / kDegree, 360) / 360};
}

}  // namespace

SunTimes SunOn(const Position& place, base::DateTime when) {
  const double eastward = place.longitude / (2 * std::numbers::pi);  // days
  // Noon by the sun's time there, of the day that is nearest.
  double noon = std::round(DaysOf(when) + eastward) - eastward;
  noon -= SunAt(noon).equationOfTime;
  // Of the angle that the earth turns between a crossing of the horizon and noon.
  const auto cosineOfHour = [&](double declination) {
    return (std::sin(kBelowHorizon) - std::sin(place.latitude) * std::sin(declination)) /
           (std::cos(place.latitude) * std::cos(declination));
  };
  SunTimes times;
  const double atNoon = cosineOfHour(SunAt(noon).declination);
  times.isUpAtNoon = atNoon < 1;
  if (std::abs(atNoon) >= 1) return times;
  const auto crossing = [&](int side) {
    double moment = noon + side * std::acos(atNoon) / (2 * std::numbers::pi);
    const double there = cosineOfHour(SunAt(moment).declination);
    if (std::abs(there) < 1) moment = noon + side * std::acos(there) / (2 * std::numbers::pi);
    return MomentOf(moment);
  };
  times.rise = crossing(-1);
  times.set = crossing(1);
  return times;
}

}  // namespace brenvo::geo
