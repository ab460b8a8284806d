// A country's own map.
#pragma once

#include <string_view>

namespace brenvo::core {

class Session;

// Shows the map of the country whose code stands in the first five characters, with its pointer;
// nothing when the country is unknown or has no map.
void ShowCountryMap(Session& session, std::string_view country);

}  // namespace brenvo::core
