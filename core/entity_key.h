// What makes two contacts one entity of an award.
#pragma once

#include <string>
#include <string_view>

namespace brenvo {

// A key as the file engine groups and compares it: case and blanks at the end do not count, as
// prefixes are stored padded and trimmed.
std::string EntityKey(std::string_view key);

}  // namespace brenvo
