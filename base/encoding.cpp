#include "base/encoding.h"

#include <algorithm>
#include <array>

#include "base/text.h"

namespace brenvo::base {
namespace {

// Windows-1252, bytes 80 to 9F; 0 where the code page defines nothing.
constexpr std::array<char32_t, 32> kHigh = {
    0x20AC, 0,      0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0,      0x017D, 0,      0,      0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0,      0x017E, 0x0178};

}  // namespace

std::string ToWindows1252(std::string_view text) {
  if (IsAscii(text)) return std::string(text);
  std::string bytes;
  for (char32_t c : Characters(text)) {
    if (c < 0x80 || (c >= 0xA0 && c <= 0xFF)) {
      bytes += static_cast<char>(c);
      continue;
    }
    const auto at = std::find(kHigh.begin(), kHigh.end(), c);
    bytes += at == kHigh.end() ? '?' : static_cast<char>(0x80 + (at - kHigh.begin()));
  }
  return bytes;
}

std::string FromWindows1252(std::string_view bytes) {
  std::u32string characters;
  for (char byte : bytes) {
    const auto code = static_cast<unsigned char>(byte);
    const char32_t high = code >= 0x80 && code <= 0x9F ? kHigh[code - 0x80u] : code;
    characters += high == 0 ? char32_t{0xFFFD} : high;
  }
  return FromCharacters(characters);
}

std::string ToLatin1(std::string_view text) {
  std::string bytes;
  for (char32_t c : Characters(text)) bytes += c <= 0xFF ? static_cast<char>(c) : '?';
  return bytes;
}

std::string FromLatin1(std::string_view bytes) {
  std::u32string characters;
  for (char byte : bytes) characters += static_cast<unsigned char>(byte);
  return FromCharacters(characters);
}

std::string_view WithoutByteOrderMark(std::string_view bytes) {
  constexpr std::string_view kMark = "\xEF\xBB\xBF";
  return bytes.starts_with(kMark) ? bytes.substr(kMark.size()) : bytes;
}

}  // namespace brenvo::base
