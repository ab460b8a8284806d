// Where a station was, by the locators that were noted of it.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace brenvo::checks {

// Four characters, six, or more by twos, in capitals.
bool IsLocator(std::string_view locator);

// A locator of six characters as a number, and back; 0 for any other text.
std::uint32_t PackedLocator(std::string_view locator);
std::string LocatorOf(std::uint32_t packed);
// Whole km between the middles of two.
int KmBetween(std::uint32_t a, std::uint32_t b);

// A call with "/" tells another place or country than its letters do.
inline bool HasSlash(std::string_view call) { return call.find('/') != std::string_view::npos; }

}  // namespace brenvo::checks
