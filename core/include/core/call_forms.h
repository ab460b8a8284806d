// The forms of one station's call: IK3ABC, IK3ABC/P, F/IK3ABC, F/IK3ABC/QRP.
#pragma once

#include <string>
#include <string_view>

namespace brenvo::core {

// The call without what stands before and behind its slashes, in capitals and without blanks: of
// the parts the longest; of equal ones one that ends in a letter, as every call does, else the
// first. Empty for an empty text.
std::string BaseCall(std::string_view call);

}  // namespace brenvo::core
