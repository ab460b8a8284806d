// When two rows of a grouped query belong to one award entry.
#pragma once

#include <string_view>

#include "base/text.h"

namespace brenvo {

// Keys are one as the file engine compares them: without regard to case and trailing blanks. It
// groups rows by that, and shows each under the spelling that it met first.
inline bool SameEntry(std::string_view a, std::string_view b) {
  return a == b || Lower(RTrim(a)) == Lower(RTrim(b));
}

}  // namespace brenvo
