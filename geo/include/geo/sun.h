// When the sun rises and sets.
#pragma once

#include <optional>

#include "base/date.h"
#include "geo/locator.h"

namespace brenvo::geo {

// Of the sun's upper edge on a level horizon, in UTC. To within some two minutes, nearer the poles
// less.
struct SunTimes {
  // Nothing on a day on which the sun does not cross the horizon.
  std::optional<base::DateTime> rise, set;
  bool isUpAtNoon = false;
};

// The day on which `when` falls by the sun's own time at the place: its midday is the nearest one.
// Low-precision formulas of the sun's position, as almanacs print them (good to 0.01 degrees from
// 1950 to 2050).
SunTimes SunOn(const Position& place, base::DateTime when);

}  // namespace brenvo::geo
