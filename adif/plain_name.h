// Names as they compare when punctuation, blanks and case do not count.
#pragma once

#include <string>
#include <string_view>

namespace brenvo::adif {

// ASCII only: "St. Kitts & Nevis" is "STKITTSNEVIS"; other bytes stay.
std::string PlainName(std::string_view name);
// Without white space at both ends.
std::string_view Stripped(std::string_view text);

}  // namespace brenvo::adif
