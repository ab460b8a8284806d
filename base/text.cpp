#include "base/text.h"

#include <utf8.h>

#include <algorithm>
#include <iterator>

namespace brenvo::base {
namespace {

constexpr char32_t kReplacement = 0xFFFD;

constexpr char UpperByte(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 32) : c; }

// Byte offset of the character at `index` (from 0), or the text's size when it is shorter.
std::size_t OffsetOf(std::string_view text, std::size_t index) {
  std::size_t offset = 0;
  while (index > 0 && offset < text.size()) {
    ++offset;
    while (offset < text.size() && (static_cast<unsigned char>(text[offset]) & 0xC0) == 0x80) {
      ++offset;
    }
    --index;
  }
  return offset;
}

// Ranges in which upper and lower case stand in pairs: upper case on the even or the odd code.
struct Pairs {
  char32_t first, last;
  bool upperIsEven;
};
constexpr Pairs kPairs[] = {
    {0x100, 0x12F, true},  {0x132, 0x137, true}, {0x139, 0x148, false},  {0x14A, 0x177, true},
    {0x179, 0x17E, false}, {0x200, 0x21F, true}, {0x222, 0x233, true},   {0x460, 0x481, true},
    {0x48A, 0x4BF, true},  {0x4D0, 0x52F, true}, {0x1E00, 0x1E95, true}, {0x1EA0, 0x1EFF, true},
};

}  // namespace

std::size_t Len(std::string_view text) {
  return static_cast<std::size_t>(std::count_if(text.begin(), text.end(), [](char c) {
    return (static_cast<unsigned char>(c) & 0xC0) != 0x80;
  }));
}

bool IsAscii(std::string_view text) {
  return std::all_of(text.begin(), text.end(),
                     [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

std::string Left(std::string_view text, std::size_t count) {
  return std::string(text.substr(0, OffsetOf(text, count)));
}

std::string Right(std::string_view text, std::size_t count) {
  const std::size_t length = Len(text);
  return count >= length ? std::string(text) : Mid(text, length - count + 1);
}

std::string Mid(std::string_view text, std::size_t start) {
  return std::string(text.substr(OffsetOf(text, start == 0 ? 0 : start - 1)));
}

std::string Mid(std::string_view text, std::size_t start, std::size_t count) {
  return Left(Mid(text, start), count);
}

std::string LTrim(std::string_view text) {
  const auto first = text.find_first_not_of(' ');
  return first == std::string_view::npos ? std::string() : std::string(text.substr(first));
}

std::string RTrim(std::string_view text) {
  const auto last = text.find_last_not_of(' ');
  return last == std::string_view::npos ? std::string() : std::string(text.substr(0, last + 1));
}

std::string Trim(std::string_view text) { return LTrim(RTrim(text)); }

std::string Space(std::size_t count) { return std::string(count, ' '); }

std::string PadRight(std::string_view text, std::size_t width) {
  const std::size_t length = Len(text);
  return length >= width ? Left(text, width) : std::string(text) + Space(width - length);
}

char32_t UpperChar(char32_t c) {
  if (c >= 'a' && c <= 'z') return c - 32;
  if (c < 0x80) return c;
  if ((c >= 0xE0 && c <= 0xFE && c != 0xF7)) return c - 32;
  if (c == 0xFF) return 0x178;
  for (const Pairs& p : kPairs) {
    if (c >= p.first && c <= p.last) return ((c & 1) != 0) == p.upperIsEven ? c - 1 : c;
  }
  if (c == 0x3C2) return 0x3A3;
  if (c >= 0x3B1 && c <= 0x3CB) return c - 32;
  if (c == 0x3AC) return 0x386;
  if (c >= 0x3AD && c <= 0x3AF) return c - 37;
  if (c == 0x3CC) return 0x38C;
  if (c == 0x3CD || c == 0x3CE) return c - 63;
  if (c >= 0x430 && c <= 0x44F) return c - 32;
  if (c >= 0x450 && c <= 0x45F) return c - 80;
  return c;
}

char32_t LowerChar(char32_t c) {
  if (c >= 'A' && c <= 'Z') return c + 32;
  if (c < 0x80) return c;
  if (c >= 0xC0 && c <= 0xDE && c != 0xD7) return c + 32;
  if (c == 0x178) return 0xFF;
  for (const Pairs& p : kPairs) {
    if (c >= p.first && c <= p.last) return ((c & 1) == 0) == p.upperIsEven ? c + 1 : c;
  }
  if (c >= 0x391 && c <= 0x3AB && c != 0x3A2) return c + 32;
  if (c == 0x386) return 0x3AC;
  if (c >= 0x388 && c <= 0x38A) return c + 37;
  if (c == 0x38C) return 0x3CC;
  if (c == 0x38E || c == 0x38F) return c + 63;
  if (c >= 0x410 && c <= 0x42F) return c + 32;
  if (c >= 0x400 && c <= 0x40F) return c + 80;
  return c;
}

std::string Upper(std::string_view text) {
  if (IsAscii(text)) {
    std::string result(text);
    for (char& c : result) {
      if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 32);
    }
    return result;
  }
  std::u32string characters = Characters(text);
  std::transform(characters.begin(), characters.end(), characters.begin(), UpperChar);
  return FromCharacters(characters);
}

std::string Lower(std::string_view text) {
  if (IsAscii(text)) {
    std::string result(text);
    for (char& c : result) {
      if (c >= 'A' && c <= 'Z') c = static_cast<char>(c + 32);
    }
    return result;
  }
  std::u32string characters = Characters(text);
  std::transform(characters.begin(), characters.end(), characters.begin(), LowerChar);
  return FromCharacters(characters);
}

std::string UpperAscii(std::string_view text) {
  std::string upper(text);
  std::transform(upper.begin(), upper.end(), upper.begin(), UpperByte);
  return upper;
}

bool SameText(std::string_view a, std::string_view b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    [](char x, char y) { return UpperByte(x) == UpperByte(y); });
}

std::size_t InStr(std::size_t start, std::string_view text, std::string_view what) {
  const std::size_t from = OffsetOf(text, start == 0 ? 0 : start - 1);
  const auto at = text.find(what, from);
  return at == std::string_view::npos ? 0 : Len(text.substr(0, at)) + 1;
}

std::size_t InStr(std::string_view text, std::string_view what) { return InStr(1, text, what); }

std::u32string Characters(std::string_view text) {
  std::u32string result;
  result.reserve(text.size());
  const std::string valid = ValidUtf8(text);
  utf8::unchecked::utf8to32(valid.begin(), valid.end(), std::back_inserter(result));
  return result;
}

std::string FromCharacters(std::u32string_view characters) {
  std::string result;
  for (char32_t c : characters) {
    const bool valid = c < 0xD800 || (c > 0xDFFF && c <= 0x10FFFF);
    utf8::unchecked::append(valid ? c : kReplacement, std::back_inserter(result));
  }
  return result;
}

std::string ValidUtf8(std::string_view text) {
  if (utf8::is_valid(text.begin(), text.end())) return std::string(text);
  std::string result;
  utf8::replace_invalid(text.begin(), text.end(), std::back_inserter(result), kReplacement);
  return result;
}

}  // namespace brenvo::base
