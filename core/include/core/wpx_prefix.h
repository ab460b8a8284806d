// Prefixes as awards and contests count them.
#pragma once

#include <string>
#include <string_view>

namespace brenvo::core {

// The prefix as the WPX counts it: "IK4", "HB0" of "HB0/IK4XYZ", "IK5" of "IK4XYZ/5"; empty for
// what is no call.
std::string WpxPrefix(std::string_view call);

}  // namespace brenvo::core
