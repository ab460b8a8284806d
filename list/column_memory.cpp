#include "column_memory.h"

#include <algorithm>
#include <limits>
#include <numeric>

#include "base/number.h"
#include "contact_columns.h"

namespace brenvo::list {
namespace {

constexpr std::int64_t kNoDate = std::numeric_limits<std::int64_t>::min();
constexpr std::int64_t kDay = 24 * 60 * 60;

std::optional<base::DateTime> DateOf(std::int64_t seconds) {
  if (seconds == kNoDate) return std::nullopt;
  return base::DateTime::FromSeconds(seconds);
}

std::int64_t DayOf(std::int64_t seconds) {
  return seconds >= 0 ? seconds / kDay : (seconds - kDay + 1) / kDay;
}

}  // namespace

ColumnMemory::ColumnMemory(core::ColumnKind kind) : kind_(kind) {}

void ColumnMemory::Resize(std::size_t contacts) {
  if (IsDate()) {
    seconds_.resize(contacts, kNoDate);
  } else {
    texts_.resize(contacts, 0);
  }
}

void ColumnMemory::Set(Slot slot, std::optional<base::DateTime> date) {
  seconds_[slot] = date ? date->Seconds() : kNoDate;
}

void ColumnMemory::Set(Slot slot, std::string_view text) {
  if (words_[last_] == text) {
    texts_[slot] = last_;
    return;
  }
  auto at = places_.find(text);
  if (at == places_.end()) {
    at = places_.emplace(std::string(text), static_cast<std::uint32_t>(words_.size())).first;
    words_.emplace_back(text);
  }
  texts_[slot] = last_ = at->second;
}

std::string ColumnMemory::Text(Slot slot) const {
  if (!IsDate()) return words_[texts_[slot]];
  const auto date = DateOf(seconds_[slot]);
  return date ? ShownDate(*date) : std::string();
}

void ColumnMemory::Fold() const {
  for (std::size_t i = folded_.size(); i < words_.size(); ++i) {
    folded_.push_back(core::Folded(words_[i]));
  }
}

void ColumnMemory::Keep(const core::ColumnFilter& filter, std::vector<char>& passes) const {
  if (IsDate()) {
    for (std::size_t slot = 0; slot < seconds_.size(); ++slot) {
      if (passes[slot] && !filter.PassesDate(DateOf(seconds_[slot]))) passes[slot] = 0;
    }
    return;
  }
  std::vector<char> word(words_.size());
  if (kind_ == core::ColumnKind::kText) {
    Fold();
    for (std::size_t i = 0; i < words_.size(); ++i) word[i] = filter.PassesText(folded_[i]);
  } else {
    for (std::size_t i = 0; i < words_.size(); ++i) word[i] = filter.Passes(words_[i]);
  }
  for (std::size_t slot = 0; slot < texts_.size(); ++slot) {
    passes[slot] = static_cast<char>(passes[slot] & word[texts_[slot]]);
  }
}

void ColumnMemory::Note(const std::string& wanted, std::vector<char>& found) const {
  if (IsDate()) {
    std::int64_t first = std::numeric_limits<std::int64_t>::max(), last = kNoDate;
    for (const std::int64_t seconds : seconds_) {
      if (seconds == kNoDate) continue;
      first = std::min(first, DayOf(seconds));
      last = std::max(last, DayOf(seconds));
    }
    constexpr std::int64_t kMostDays = 4000000;  // some thousand years
    if (first > last || last - first > kMostDays) return;
    std::vector<char> day(static_cast<std::size_t>(last - first + 1));
    for (std::int64_t i = first; i <= last; ++i) {
      day[static_cast<std::size_t>(i - first)] =
          base::DateText(base::DateTime::FromSeconds(i * kDay)).find(wanted) != std::string::npos;
    }
    for (std::size_t slot = 0; slot < seconds_.size(); ++slot) {
      if (seconds_[slot] != kNoDate &&
          day[static_cast<std::size_t>(DayOf(seconds_[slot]) - first)]) {
        found[slot] = 1;
      }
    }
    return;
  }
  Fold();
  std::vector<char> word(words_.size());
  for (std::size_t i = 0; i < words_.size(); ++i) {
    word[i] = folded_[i].find(wanted) != std::string::npos;
  }
  for (std::size_t slot = 0; slot < texts_.size(); ++slot) {
    found[slot] = static_cast<char>(found[slot] | word[texts_[slot]]);
  }
}

// Words that count alike have one rank.
const std::vector<std::uint32_t>& ColumnMemory::Ranks() const {
  if (ranks_.size() == words_.size()) return ranks_;
  Fold();
  const bool isNumber = kind_ == core::ColumnKind::kNumber;
  std::vector<double> numbers;
  if (isNumber) {
    for (const std::string& word : words_) numbers.push_back(base::Val(word));
  }
  std::vector<std::uint32_t> inOrder(words_.size());
  std::iota(inOrder.begin(), inOrder.end(), 0u);
  const auto less = [&](std::uint32_t a, std::uint32_t b) {
    return isNumber ? numbers[a] < numbers[b] : folded_[a] < folded_[b];
  };
  std::sort(inOrder.begin(), inOrder.end(), less);
  ranks_.assign(words_.size(), 0);
  std::uint32_t rank = 0;
  for (std::size_t i = 1; i < inOrder.size(); ++i) {
    if (less(inOrder[i - 1], inOrder[i])) ++rank;
    ranks_[inOrder[i]] = rank;
  }
  return ranks_;
}

void ColumnMemory::Sort(std::vector<Slot>& slots, bool descending) const {
  if (IsDate()) {
    std::vector<std::pair<std::int64_t, Slot>> pairs;
    pairs.reserve(slots.size());
    for (const Slot slot : slots) pairs.emplace_back(seconds_[slot], slot);
    const auto less = [&](const auto& a, const auto& b) {
      return descending ? b.first < a.first : a.first < b.first;
    };
    std::stable_sort(pairs.begin(), pairs.end(), less);
    for (std::size_t i = 0; i < slots.size(); ++i) slots[i] = pairs[i].second;
    return;
  }
  const std::vector<std::uint32_t>& ranks = Ranks();
  const std::uint32_t most = static_cast<std::uint32_t>(ranks.size());
  const auto rankOf = [&](Slot slot) {
    const std::uint32_t rank = ranks[texts_[slot]];
    return descending ? most - rank : rank;
  };
  // By counting: how many have each rank, and so where each begins.
  std::vector<std::uint32_t> begins(std::size_t{most} + 2);
  for (const Slot slot : slots) ++begins[rankOf(slot) + 1];
  std::partial_sum(begins.begin(), begins.end(), begins.begin());
  std::vector<Slot> sorted(slots.size());
  for (const Slot slot : slots) sorted[begins[rankOf(slot)]++] = slot;
  slots = std::move(sorted);
}

}  // namespace brenvo::list
