// The tags of log files in the ADI form, as they stand among other bytes.
#pragma once

#include <cstddef>
#include <string_view>

namespace brenvo::adif {

struct AdifTag {
  std::string_view name;   // as written
  std::size_t length = 0;  // of the value, as told; huge ones are cut
  bool hasLength = false;
  std::size_t size = 0;  // of the tag itself, in bytes
};

inline constexpr std::size_t kLongestAdifTag = 128;  // bytes
// With room behind it for any length: what is kept of a record is written, and read again.
inline constexpr std::size_t kLongestAdifName = 112;  // bytes of UTF-8

// Reads the tag that begins at bytes[0], which is "<"; false when none does. "<NAME:length>",
// "<NAME:length:type>" or a name alone.
bool ReadAdifTag(std::string_view bytes, AdifTag& tag);

// Where the first tag begins at or behind `from` and before `to` that is likely meant as one: a
// length behind a name of letters, digits and "_", or one of the few that stand without. It may
// end behind `to`. npos when there is none.
std::size_t FindLikelyTag(std::string_view bytes, std::size_t from, std::size_t to);

constexpr bool IsAdifNameCharacter(char c) {
  return c != '<' && c != '>' && c != ':' && static_cast<unsigned char>(c) > ' ';
}

}  // namespace brenvo::adif
