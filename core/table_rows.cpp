#include "core/table_rows.h"

#include <algorithm>

#include "base/number.h"

namespace brenvo::core {
namespace {

const std::string& CellOf(const MemoryRows::Row& row, std::size_t field) {
  static const std::string kNone;
  return field < row.size() ? row[field] : kNone;
}

bool Holds(const MemoryRows::Row& row, const std::vector<std::string>& words,
           const std::vector<std::size_t>& searched) {
  if (words.empty()) return true;
  std::string all;
  if (searched.empty()) {
    for (const std::string& cell : row) all += Folded(cell) + '\n';
  } else {
    for (const std::size_t field : searched) all += Folded(CellOf(row, field)) + '\n';
  }
  return std::all_of(words.begin(), words.end(),
                     [&](const std::string& word) { return all.find(word) != std::string::npos; });
}

// What a column's cells are ordered by.
struct OrderKey {
  double number = 0;
  std::string text;
  friend bool operator<(const OrderKey& a, const OrderKey& b) {
    return a.number != b.number ? a.number < b.number : a.text < b.text;
  }
};

OrderKey KeyOf(const std::string& cell, ColumnKind kind) {
  switch (kind) {
    case ColumnKind::kNumber:
      return {base::Val(cell), {}};
    case ColumnKind::kDate: {
      const auto date = base::ParseDate(cell);
      return {date ? static_cast<double>(date->Seconds()) : -1e18, {}};
    }
    case ColumnKind::kText:
    case ColumnKind::kYesNo:
      break;
  }
  return {0, Folded(cell)};
}

}  // namespace

void MemoryRows::SetRows(std::vector<Row> rows) {
  rows_ = std::move(rows);
  Arrange({});
}

void MemoryRows::PutFirst(Row row, std::size_t most) {
  shown_.clear();
  rows_.insert(rows_.begin(), std::move(row));
  if (rows_.size() > most) rows_.resize(most);
}

bool MemoryRows::Arrange(const Arrangement& wanted) {
  const std::vector<std::string> words = WordsOf(wanted.words);
  shown_.clear();
  for (std::size_t i = 0; i < rows_.size(); ++i) {
    const Row& row = rows_[i];
    const auto passes = [&](const Arrangement::Filter& each) {
      return each.filter.Passes(CellOf(row, each.field));
    };
    if (Holds(row, words, wanted.searched) &&
        std::all_of(wanted.filters.begin(), wanted.filters.end(), passes)) {
      shown_.push_back(i);
    }
  }
  for (auto order = wanted.order.rbegin(); order != wanted.order.rend(); ++order) {
    std::vector<OrderKey> keys(rows_.size());
    for (const std::size_t i : shown_) keys[i] = KeyOf(CellOf(rows_[i], order->field), order->kind);
    std::stable_sort(shown_.begin(), shown_.end(), [&](std::size_t a, std::size_t b) {
      return order->descending ? keys[b] < keys[a] : keys[a] < keys[b];
    });
  }
  return true;
}

std::int64_t MemoryRows::KeyAt(std::int64_t row) {
  return static_cast<std::int64_t>(shown_.at(static_cast<std::size_t>(row)));
}

std::optional<std::int64_t> MemoryRows::RowOf(std::int64_t key) {
  const auto at = std::find(shown_.begin(), shown_.end(), static_cast<std::size_t>(key));
  if (key < 0 || at == shown_.end()) return std::nullopt;
  return at - shown_.begin();
}

std::string MemoryRows::CellText(std::int64_t row, std::size_t field) {
  if (row < 0 || row >= RowCount()) return {};
  return CellOf(rows_[shown_[static_cast<std::size_t>(row)]], field);
}

void KeyedRows::SetKeyed(std::vector<Keyed> rows) {
  keys_.clear();
  places_.clear();
  std::vector<Row> cells;
  cells.reserve(rows.size());
  for (Keyed& each : rows) {
    places_.emplace(each.key, std::ssize(keys_));
    keys_.push_back(each.key);
    cells.push_back(std::move(each.cells));
  }
  SetRows(std::move(cells));
}

std::int64_t KeyedRows::KeyAt(std::int64_t row) {
  return keys_.at(static_cast<std::size_t>(MemoryRows::KeyAt(row)));
}

std::optional<std::int64_t> KeyedRows::RowOf(std::int64_t key) {
  const auto at = places_.find(key);
  return at == places_.end() ? std::nullopt : MemoryRows::RowOf(at->second);
}

}  // namespace brenvo::core
