#include "recorder/quote.h"

#include <cmath>

#include "base/number.h"
#include "base/text.h"

namespace brenvo::recorder {
namespace {

constexpr char kHex[] = "0123456789ABCDEF";

void AppendHex(std::string& to, unsigned value) {
  to += kHex[value >> 4 & 15];
  to += kHex[value & 15];
}

// `quote` is what a double quote becomes.
std::string WithEscapes(std::string_view text, std::string_view quote) {
  std::string escaped;
  for (const char32_t c : base::Characters(text)) {
    switch (c) {
      case '\n':
        escaped += "\\n";
        break;
      case '\r':
        escaped += "\\r";
        break;
      case '\t':
        escaped += "\\t";
        break;
      case '\\':
        escaped += "\\\\";
        break;
      case '"':
        escaped += quote;
        break;
      default:
        if (c < 0x20 || (c >= 0x7F && c < 0xA0)) {
          escaped += "\\x";
          AppendHex(escaped, static_cast<unsigned>(c));
        } else {
          escaped += base::FromCharacters(std::u32string_view(&c, 1));
        }
    }
  }
  return escaped;
}

}  // namespace

std::string Escaped(std::string_view text) { return WithEscapes(text, "\""); }

std::string Quoted(std::string_view text) { return '"' + WithEscapes(text, "\\\"") + '"'; }

std::string HexBytes(std::string_view bytes) {
  std::string hex;
  for (const char byte : bytes) {
    if (!hex.empty()) hex += ' ';
    AppendHex(hex, static_cast<unsigned char>(byte));
  }
  return hex;
}

std::string ShortNumber(double value) { return base::PlainNumber(std::round(value * 100) / 100); }

void FileNames::SetDirectory(const std::filesystem::path& directory) {
  directory_ = std::filesystem::absolute(directory).lexically_normal();
}

std::string FileNames::Of(const std::filesystem::path& file) const {
  if (file.empty() || directory_.empty()) return file.generic_string();
  const std::filesystem::path relative =
      std::filesystem::absolute(file).lexically_normal().lexically_relative(directory_);
  if (relative.empty() || *relative.begin() == "..") return file.generic_string();
  return relative == "." ? std::string() : relative.generic_string();
}

}  // namespace brenvo::recorder
