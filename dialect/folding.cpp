#include "dialect/folding.h"

#include <algorithm>
#include <cstddef>

#include "base/text.h"

namespace brenvo::dialect {
namespace {

// The character at `at`, which moves on behind it; a byte that begins none counts for itself.
char32_t TakeCharacter(std::string_view text, std::size_t& at) {
  const auto byte = [&](std::size_t i) {
    return i < text.size() ? static_cast<unsigned char>(text[i]) : 0U;
  };
  const unsigned first = byte(at);
  const unsigned length = first < 0xC0 ? 1 : first < 0xE0 ? 2 : first < 0xF0 ? 3 : 4;
  if (length == 1) {
    ++at;
    return first;
  }
  char32_t character = first & (0xFFU >> (length + 1));
  for (unsigned i = 1; i < length; ++i) character = character << 6 | (byte(at + i) & 0x3F);
  at = std::min(at + length, text.size());
  return character;
}

}  // namespace

int CompareFolded(std::string_view a, std::string_view b) {
  std::size_t atA = 0;
  std::size_t atB = 0;
  while (atA < a.size() && atB < b.size()) {
    const char32_t fromA = base::LowerChar(TakeCharacter(a, atA));
    const char32_t fromB = base::LowerChar(TakeCharacter(b, atB));
    if (fromA != fromB) return fromA < fromB ? -1 : 1;
  }
  if (atA < a.size()) return 1;
  return atB < b.size() ? -1 : 0;
}

bool NeedsFolding(std::string_view text) {
  for (std::size_t at = 0; at < text.size();) {
    const char32_t character = TakeCharacter(text, at);
    if (character >= 0x80 &&
        (base::LowerChar(character) != character || base::UpperChar(character) != character)) {
      return true;
    }
  }
  return false;
}

}  // namespace brenvo::dialect
