#include "escaped_text.h"

#include <fmt/format.h>

#include <cstdint>

#include "base/text.h"

namespace brenvo::adif {

std::string EscapeText(std::string_view text) {
  std::string escaped;
  for (const char32_t c : base::Characters(text)) {
    if (c == '\\') {
      escaped += "\\\\";
    } else if (c > ' ' && c < 0x7F) {
      escaped += static_cast<char>(c);
    } else if (c == ' ' && !escaped.empty()) {
      escaped += ' ';
    } else {
      escaped += c > 0xFFFF ? fmt::format("\\U{:06X}", static_cast<std::uint32_t>(c))
                            : fmt::format("\\u{:04X}", static_cast<std::uint32_t>(c));
    }
  }
  if (escaped.ends_with(' ')) escaped.replace(escaped.size() - 1, 1, "\\u0020");
  return escaped;
}

std::string UnescapeText(std::string_view text) {
  std::u32string characters;
  const std::u32string escaped = base::Characters(text);
  for (std::size_t i = 0; i < escaped.size(); ++i) {
    if (escaped[i] != '\\' || i + 1 == escaped.size()) {
      characters += escaped[i];
      continue;
    }
    const char32_t kind = escaped[++i];
    const std::size_t digits = kind == 'u' ? 4 : kind == 'U' ? 6 : 0;
    if (digits == 0) {
      characters += kind;
      continue;
    }
    char32_t code = 0;
    for (std::size_t n = 0; n < digits && i + 1 < escaped.size(); ++n) {
      const char32_t c = escaped[++i];
      const char32_t value = c >= '0' && c <= '9'   ? c - '0'
                             : c >= 'A' && c <= 'F' ? c - 'A' + 10
                                                    : 0;
      code = code * 16 + value;
    }
    const bool scalar = code <= 0x10FFFF && (code < 0xD800 || code > 0xDFFF);
    characters += scalar ? code : char32_t{0xFFFD};
  }
  return base::FromCharacters(characters);
}

}  // namespace brenvo::adif
