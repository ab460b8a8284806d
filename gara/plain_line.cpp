#include "plain_line.h"

#include <algorithm>

#include "base/encoding.h"
#include "base/plain_letters.h"
#include "base/text.h"

namespace brenvo::gara {

bool FitsEdi(std::string_view text) {
  return std::ranges::all_of(text, [](char c) { return c >= ' ' && c < 0x7F && c != ';'; });
}

std::string PlainLine(std::string_view field, std::string_view text, char parting,
                      std::vector<WrittenOtherwise>& changes) {
  std::string plain = base::ToPlainLetters(text).text;
  for (char& c : plain) {
    if (static_cast<unsigned char>(c) < ' ' || c == 0x7F) c = ' ';
    if (parting != kNoParting && c == parting) c = ',';
  }
  plain = base::Trim(plain);
  if (plain != base::Trim(text)) {
    changes.push_back({std::string(field), std::string(text), plain});
  }
  return plain;
}

std::string TextOfBytes(std::string_view bytes) {
  const std::string_view body = base::WithoutByteOrderMark(bytes);
  std::string text = base::ValidUtf8(body);
  if (text != body) text = base::FromWindows1252(body);
  std::erase(text, '\0');
  return text;
}

std::vector<std::string_view> LinesOf(std::string_view text) {
  std::vector<std::string_view> lines;
  while (!text.empty()) {
    const std::size_t end = std::min(text.find_first_of("\r\n"), text.size());
    lines.push_back(text.substr(0, end));
    const bool both = text.substr(end).starts_with("\r\n");
    text.remove_prefix(std::min(end + (both ? 2 : 1), text.size()));
  }
  return lines;
}

std::vector<std::string_view> Split(std::string_view line, char between) {
  std::vector<std::string_view> parts;
  for (;;) {
    const std::size_t end = line.find(between);
    parts.push_back(line.substr(0, end));
    if (end == std::string_view::npos) return parts;
    line.remove_prefix(end + 1);
  }
}

bool IsNumber(std::string_view text, std::size_t most) {
  return !text.empty() && text.size() <= most &&
         std::ranges::all_of(text, [](char c) { return c >= '0' && c <= '9'; });
}

std::int64_t NumberOf(std::string_view digits) {
  std::int64_t number = 0;
  for (const char c : digits) number = number * 10 + (c - '0');
  return number;
}

bool LooksLikeCall(std::string_view text) {
  bool letter = false, digit = false;
  for (const char c : text) {
    const bool isLetter = (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
    const bool isDigit = c >= '0' && c <= '9';
    if (!isLetter && !isDigit && c != '/') return false;
    letter = letter || isLetter;
    digit = digit || isDigit;
  }
  return letter && digit && text.size() >= 3 && text.size() <= 15;
}

}  // namespace brenvo::gara
