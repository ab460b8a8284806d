// Where the antenna looks, drawn onto the map of the world.
#pragma once

#include <string>
#include <vector>

#include "base/units.h"
#include "core/session.h"
#include "geo/locator.h"

namespace brenvo::maps {

// The way of a beam over the globe: positions every 200 km from the first one on, to shortly before
// the point opposite to it. `direction` is degrees from north.
std::vector<geo::Position> BeamPath(const geo::Position& from, double direction);

// The squares that it crosses, in their order, each once in a row.
std::vector<std::string> SquaresOf(const std::vector<geo::Position>& path);

inline constexpr base::Colour kBeamColour{230, 90, 0};

// The beam of the session's Heading from the own locator; nothing without either. Failures are
// thrown.
void DisplayHeading(core::Session& session);

}  // namespace brenvo::maps
