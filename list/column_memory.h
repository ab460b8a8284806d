// A column of all contacts in memory: each text once, and for each contact which of them it has.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "base/date.h"
#include "core/column_filter.h"

namespace brenvo::list {

// A contact's place among all that have been read.
using Slot = std::uint32_t;

class ColumnMemory {
 public:
  explicit ColumnMemory(core::ColumnKind kind);

  // Those that come are empty.
  void Resize(std::size_t contacts);
  // The text as the list shows it; of dates a date.
  void Set(Slot slot, std::string_view text);
  void Set(Slot slot, std::optional<base::DateTime> date);

  // Works out now what filters will want, and else would when they come.
  void Prepare() const {
    if (kind_ == core::ColumnKind::kText) Fold();
  }

  // Takes away what does not pass.
  void Keep(const core::ColumnFilter& filter, std::vector<char>& passes) const;
  // Notes the contacts whose text holds a folded word; of dates the day counts.
  void Note(const std::string& word, std::vector<char>& found) const;
  // What is alike stays in its order.
  void Sort(std::vector<Slot>& slots, bool descending) const;
  // As the list shows it.
  std::string Text(Slot slot) const;

 private:
  bool IsDate() const { return kind_ == core::ColumnKind::kDate; }
  void Fold() const;
  const std::vector<std::uint32_t>& Ranks() const;

  struct Hash {
    using is_transparent = void;
    std::size_t operator()(std::string_view text) const {
      return std::hash<std::string_view>()(text);
    }
  };

  core::ColumnKind kind_;
  std::vector<std::int64_t> seconds_;  // of dates
  std::vector<std::uint32_t> texts_;   // of all others, a place in words_
  std::uint32_t last_ = 0;             // the one set last: neighbours are often alike
  std::vector<std::string> words_{""};
  std::unordered_map<std::string, std::uint32_t, Hash, std::equal_to<>> places_{{"", 0}};
  // Worked out when they are wanted, as long as the words are.
  mutable std::vector<std::string> folded_;
  mutable std::vector<std::uint32_t> ranks_;
};

}  // namespace brenvo::list
