// When two rows of a grouped query belong to one award entry.
#pragma once

#include <string>
#include <string_view>

#include "base/text.h"

namespace brenvo::core {

// A key as the file engine compares it: without regard to case and trailing blanks. It groups rows
// by that, and shows each group under the spelling that it met first.
inline std::string ComparedKey(std::string_view key) { return base::Lower(base::RTrim(key)); }

inline bool SameEntry(std::string_view a, std::string_view b) {
  return a == b || ComparedKey(a) == ComparedKey(b);
}

}  // namespace brenvo::core
