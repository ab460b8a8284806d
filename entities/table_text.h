// What the readers of tables share.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "entities/table.h"

namespace brenvo::entities {

// Throws TableError "riga N: what".
[[noreturn]] void Refuse(std::int64_t line, std::string_view what);

std::string_view Trimmed(std::string_view text);  // of blanks, tabs and line ends
std::vector<std::string_view> SplitAt(std::string_view text, char separator);
std::string Capitals(std::string_view text);
// A whole number from `least` to `most`; nothing for any other text.
std::optional<int> WholeNumber(std::string_view text, int least, int most);
bool IsContinent(std::string_view text);

// "yyyy-mm-dd" or "yyyy/mm/dd"; nothing when it is no day.
std::optional<base::DateTime> DayIn(std::string_view text);

// A piece of a text for a message: short, in one line.
std::string Shown(std::string_view text);

// Adds rules, and refuses more of them than any world needs.
class RuleTaker {
 public:
  explicit RuleTaker(Table& table) : table_(table) {}
  // The rule stands for each of such calls as its kind says.
  void Take(Rule rule);

 private:
  Table& table_;
  std::size_t prefixes_ = 0;
};

inline constexpr std::size_t kMostPrefixes = 100'000, kMostRules = 500'000, kMostEntities = 5'000;
inline constexpr int kLargestNumber = 9999;

Table ReadCtyDat(std::string_view text, const struct KnownEntities& known);
Table ReadCtyCsv(std::string_view text);
Table ReadExceptions(std::string_view text);
Table ReadBarTable(std::string_view text);

}  // namespace brenvo::entities
