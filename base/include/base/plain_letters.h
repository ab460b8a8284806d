// Texts in the letters of ASCII, for those who know no others.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace brenvo::base {

struct PlainLetters {
  std::string text;
  std::int64_t changed = 0;  // characters of the text that it came from
};
// Latin letters lose their marks ("à" is "a", "ł" is "l", "ß" is "ss"), Greek and Cyrillic ones
// become Latin, quotes and dashes plain; any other character is "?", a mark alone nothing.
PlainLetters ToPlainLetters(std::string_view text);

}  // namespace brenvo::base
