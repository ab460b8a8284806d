#include "plain_name.h"

#include "base/text.h"

namespace brenvo::adif {
namespace {

constexpr bool IsSpace(char c) { return c == ' ' || (c >= '\t' && c <= '\r') || c == '\0'; }

}  // namespace

std::string PlainName(std::string_view name) {
  std::string plain;
  for (const char c : base::UpperAscii(name)) {
    const bool counts =
        (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || static_cast<unsigned char>(c) >= 0x80;
    if (counts) plain += c;
  }
  return plain;
}

std::string_view Stripped(std::string_view text) {
  while (!text.empty() && IsSpace(text.front())) text.remove_prefix(1);
  while (!text.empty() && IsSpace(text.back())) text.remove_suffix(1);
  return text;
}

}  // namespace brenvo::adif
