// Universally unique names, as RFC 9562 writes them: 32 hexadecimal digits, small, in five groups.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace brenvo::base {

// The name of what `text` describes, the same wherever it is made from the same text (version 5,
// in this program's own name space).
std::string NameUuid(std::string_view text);

// A name that nobody else gives (version 7): names given later sort behind those given before.
// `milliseconds` since 1970, of which the lowest 48 bits count; of `chance` 74 bits.
struct Chance {
  std::uint64_t high = 0, low = 0;
};
std::string TimeUuid(std::uint64_t milliseconds, Chance chance);

// Whether the text is such a name, in either case and whichever version.
bool IsUuid(std::string_view text);

}  // namespace brenvo::base
