#include "table_text.h"

#include <fmt/format.h>

#include <algorithm>
#include <charconv>

#include "base/text.h"
#include "entities/read_tables.h"
#include "prefix_trie.h"

namespace brenvo::entities {

void Refuse(std::int64_t line, std::string_view what) {
  throw TableError(fmt::format("riga {}: {}", line, what));
}

std::string_view Trimmed(std::string_view text) {
  constexpr std::string_view kWhite = " \t\r\n";
  const std::size_t first = text.find_first_not_of(kWhite);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(kWhite) - first + 1);
}

std::vector<std::string_view> SplitAt(std::string_view text, char separator) {
  std::vector<std::string_view> parts;
  for (std::size_t start = 0;;) {
    const std::size_t end = text.find(separator, start);
    parts.push_back(text.substr(start, end - start));
    if (end == std::string_view::npos) return parts;
    start = end + 1;
  }
}

std::string Capitals(std::string_view text) { return base::UpperAscii(text); }

std::optional<int> WholeNumber(std::string_view text, int least, int most) {
  text = Trimmed(text);
  int value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
  if (value < least || value > most) return std::nullopt;
  return value;
}

bool IsContinent(std::string_view text) {
  constexpr std::string_view kAll[] = {"EU", "AS", "AF", "NA", "SA", "OC", "AN"};
  return std::ranges::find(kAll, text) != std::end(kAll);
}

std::optional<base::DateTime> DayIn(std::string_view text) {
  std::string iso(Trimmed(text));
  std::ranges::replace(iso, '/', '-');
  constexpr std::size_t kLength = 10;
  if (iso.size() != kLength) return std::nullopt;
  return base::ParseIso(iso);
}

std::string Shown(std::string_view text) {
  constexpr std::size_t kLongest = 40;
  std::string shown = base::ValidUtf8(base::Left(Trimmed(text), kLongest));
  std::ranges::replace_if(
      shown, [](char c) { return static_cast<unsigned char>(c) < ' '; }, ' ');
  return shown;
}

void RuleTaker::Take(Rule rule) {
  if (rule.kind == RuleKind::kPrefix && ++prefixes_ > kMostPrefixes) {
    Refuse(rule.line, fmt::format("più di {} prefissi", kMostPrefixes));
  }
  if (table_.rules.size() == kMostRules) {
    Refuse(rule.line, fmt::format("più di {} nominativi", kMostRules));
  }
  if (!ParsePattern(rule.text)) {
    Refuse(rule.line, fmt::format("\"{}\" non è un prefisso né un nominativo", Shown(rule.text)));
  }
  table_.rules.push_back(std::move(rule));
}

}  // namespace brenvo::entities
