// What counting and recounting both ask of a contact: the rule's own words, nothing counted.
#pragma once

#include <string>

#include "gara/count.h"

namespace brenvo::gara {

// What a multiplier of that kind has in a contact; empty for nothing.
std::string MultiplierOf(const Multiplier& multiplier, const Contact& contact);

}  // namespace brenvo::gara
