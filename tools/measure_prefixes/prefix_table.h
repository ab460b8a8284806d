// The prefix table of a database, searched by the program's one rule.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "measure_prefixes/answer.h"

namespace brenvo::measure_prefixes {

// Everything of `call` up to and including its first run of digits; a digit in the first place
// does not count. Empty when there is no such run, or when nothing follows it.
[[nodiscard]] std::string_view PrefixOf(std::string_view call);

class PrefixTable {
 public:
  struct Row {
    std::string Prefix;
    Answer Tells;
  };

  explicit PrefixTable(std::vector<Row> rows);
  // Reads table Prefissi; throws std::runtime_error when it cannot.
  static PrefixTable Load(const std::filesystem::path& database);

  // The first row of the call's prefix in the order of zones and continent; nothing when the
  // table does not hold exactly that prefix.
  [[nodiscard]] std::optional<Answer> Resolve(std::string_view call) const;

 private:
  std::vector<Row> rows_;
};

}  // namespace brenvo::measure_prefixes
