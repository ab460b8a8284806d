// The words of a text.
#pragma once

#include <algorithm>
#include <string_view>
#include <vector>

namespace brenvo::digital {

// Parted by blanks.
inline std::vector<std::string_view> WordsOf(std::string_view text) {
  std::vector<std::string_view> words;
  while (!text.empty()) {
    const std::size_t end = std::min(text.find(' '), text.size());
    if (end > 0) words.push_back(text.substr(0, end));
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  return words;
}

}  // namespace brenvo::digital
