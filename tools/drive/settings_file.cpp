#include "drive/settings_file.h"

#include <fmt/format.h>

#include <algorithm>
#include <charconv>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>

#include "base/text.h"
#include "recorder/refused.h"

namespace brenvo::drive {
namespace {

bool IsPlain(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_' ||
         c == '-' || c == '.';
}

// The character of the hexadecimal digits that `text` begins with, at most `most`; they are taken
// off it.
char32_t TakeHex(std::string_view& text, std::size_t most) {
  unsigned code = 0;
  const auto [end, error] =
      std::from_chars(text.data(), text.data() + std::min(most, text.size()), code, 16);
  if (error == std::errc()) text.remove_prefix(static_cast<std::size_t>(end - text.data()));
  return code;
}

std::string NameOf(std::string_view escaped) {
  std::string name;
  while (!escaped.empty()) {
    const char c = escaped.front();
    escaped.remove_prefix(1);
    if (c != '%') {
      name += c;
      continue;
    }
    const bool wide = escaped.starts_with('U');
    if (wide) escaped.remove_prefix(1);
    name += base::FromCharacters(std::u32string(1, TakeHex(escaped, wide ? 4 : 2)));
  }
  return name;
}

std::string EscapedName(std::string_view name) {
  std::string escaped;
  for (const char32_t c : base::Characters(name)) {
    if (c < 0x80 && IsPlain(static_cast<char>(c))) {
      escaped += static_cast<char>(c);
    } else if (c < 0x100) {
      escaped += fmt::format("%{:02X}", static_cast<unsigned>(c));
    } else {
      escaped += fmt::format("%U{:04X}", static_cast<unsigned>(c));
    }
  }
  return escaped;
}

// What follows a backslash, and what it stands for.
struct Escape {
  char letter, character;
};
constexpr Escape kEscapes[] = {{'n', '\n'}, {'r', '\r'}, {'t', '\t'}, {'"', '"'}, {'\\', '\\'}};

std::string ValueOf(std::string_view written) {
  std::string value;
  const bool quoted = written.starts_with('"');
  if (quoted) written.remove_prefix(1);
  while (!written.empty() && !(quoted && written.front() == '"')) {
    const char c = written.front();
    written.remove_prefix(1);
    if (c != '\\' || written.empty()) {
      value += c;
      continue;
    }
    const char letter = written.front();
    written.remove_prefix(1);
    if (letter == 'x') {
      value += base::FromCharacters(std::u32string(1, TakeHex(written, 8)));
      continue;
    }
    const auto* escape = std::ranges::find(kEscapes, letter, &Escape::letter);
    value += escape == std::end(kEscapes) ? letter : escape->character;
  }
  // A single @ begins what is no text.
  if (value.starts_with("@@")) value.erase(0, 1);
  return value;
}

std::string WrittenValue(std::string_view value) {
  std::string written = value.starts_with('@') ? "\"@" : "\"";
  for (const char c : value) {
    const auto* escape = std::ranges::find(kEscapes, c, &Escape::character);
    if (escape == std::end(kEscapes)) {
      written += c;
    } else {
      written += {'\\', escape->letter};
    }
  }
  return written + '"';
}

}  // namespace

recorder::MemorySettings::Values ReadSettings(const std::filesystem::path& file) {
  recorder::MemorySettings::Values values;
  std::ifstream in(file, std::ios::binary);
  std::string section;
  for (std::string line; std::getline(in, line);) {
    if (line.ends_with('\r')) line.pop_back();
    line = base::Trim(line);
    const std::size_t equals = line.find('=');
    if (line.starts_with('[') && line.ends_with(']')) {
      section = NameOf(std::string_view(line).substr(1, line.size() - 2));
    } else if (!line.starts_with(';') && equals != std::string::npos) {
      const std::string_view whole = line;
      values[{section, NameOf(base::Trim(whole.substr(0, equals)))}] =
          ValueOf(base::LTrim(whole.substr(equals + 1)));
    }
  }
  return values;
}

void WriteSettings(const std::filesystem::path& file,
                   const recorder::MemorySettings::Values& values) {
  std::ofstream out(file, std::ios::binary | std::ios::trunc);
  std::string_view section;
  bool first = true;
  for (const auto& [place, value] : values) {
    if (first || place.first != section) {
      out << (first ? "[" : "\n[") << EscapedName(place.first) << "]\n";
      section = place.first;
      first = false;
    }
    out << EscapedName(place.second) << '=' << WrittenValue(value) << '\n';
  }
  out.close();
  if (!out) throw recorder::Refused{file.filename().string() + " cannot be written"};
}

}  // namespace brenvo::drive
