#include "adif/plain_name.h"

#include <algorithm>

namespace brenvo {
namespace {

constexpr char UpperOf(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 32) : c; }

constexpr bool IsSpace(char c) { return c == ' ' || (c >= '\t' && c <= '\r') || c == '\0'; }

}  // namespace

std::string PlainName(std::string_view name) {
  std::string plain;
  for (const char c : name) {
    const char upper = UpperOf(c);
    const bool counts = (upper >= 'A' && upper <= 'Z') || (upper >= '0' && upper <= '9') ||
                        static_cast<unsigned char>(c) >= 0x80;
    if (counts) plain += upper;
  }
  return plain;
}

std::string UpperAscii(std::string_view text) {
  std::string upper(text);
  std::transform(upper.begin(), upper.end(), upper.begin(), UpperOf);
  return upper;
}

bool SameText(std::string_view a, std::string_view b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    [](char x, char y) { return UpperOf(x) == UpperOf(y); });
}

std::string_view Stripped(std::string_view text) {
  while (!text.empty() && IsSpace(text.front())) text.remove_prefix(1);
  while (!text.empty() && IsSpace(text.back())) text.remove_suffix(1);
  return text;
}

}  // namespace brenvo
