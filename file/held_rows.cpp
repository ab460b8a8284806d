#include "held_rows.h"

#include <algorithm>
#include <numeric>

namespace brenvo::file {
namespace {

constexpr std::size_t kNone = dialect::TableSchema::kNone;

}  // namespace

HeldRows::HeldRows(const Keyset& keyset) : keyset_(keyset), cellOf_(keyset.columns.size(), kNone) {}

void HeldRows::Drop() {
  rows_.Clear();
  keys_.clear();
  stamp_ = -1;
  row_ = 0;
}

bool HeldRows::Has(const Connection& connection, std::int64_t key) {
  if (stamp_ != connection.ChangeStamp()) return false;
  const auto asked = static_cast<std::size_t>(row_);
  if (asked < keys_.size() && keys_[asked] == key) return true;
  const auto found = std::lower_bound(keys_.begin(), keys_.end(), key);
  if (found == keys_.end() || *found != key) return false;
  row_ = found - keys_.begin();
  return true;
}

bool HeldRows::Has(const Connection& connection, std::int64_t key, std::size_t column) {
  return cellOf_[column] != kNone && Has(connection, key);
}

void HeldRows::Fetch(Connection& connection, std::int64_t key) {
  Drop();
  std::vector<engine::Value> parameters = keyset_.row.parameters;
  parameters.emplace_back(key);
  Running run(connection, keyset_.row.text, std::move(parameters));
  if (!run.Step()) return;
  rows_.Append(run.Handle());
  keys_.push_back(key);
  std::iota(cellOf_.begin(), cellOf_.end(), std::size_t{0});
  stamp_ = connection.ChangeStamp();
}

void HeldRows::PrepareAhead(const std::vector<bool>& wanted) {
  if (wanted == wantedAhead_) return;
  wantedAhead_ = wanted;
  const dialect::TableSchema& table = *keyset_.table;
  ahead_ = "SELECT rowid";
  for (std::size_t i = 0; i < wanted.size(); ++i) {
    if (!wanted[i]) continue;
    const std::size_t column = keyset_.columns[i].tableColumn;
    if (column == kNone) return ahead_.clear();
    ahead_ += ", " + table.columns[column].quoted;
  }
  ahead_ += " FROM " + table.quoted + " WHERE rowid IN (?";
  for (std::size_t i = 1; i < kMost; ++i) ahead_ += ", ?";
  ahead_ += ") ORDER BY rowid";
}

bool HeldRows::FetchAhead(Connection& connection, std::span<const std::int64_t> keys,
                          const std::vector<bool>& wanted) {
  Drop();
  PrepareAhead(wanted);
  if (ahead_.empty()) return false;
  std::size_t cell = 0;
  for (std::size_t i = 0; i < wanted.size(); ++i) cellOf_[i] = wanted[i] ? ++cell : kNone;
  try {
    // Marks without a key are Null, which no row's key is.
    Running run(connection, ahead_, std::vector<engine::Value>(keys.begin(), keys.end()));
    while (run.Step()) {
      rows_.Append(run.Handle());
      keys_.push_back(run.Key());
    }
  } catch (const engine::DatabaseError&) {
    Drop();
    return false;
  }
  stamp_ = connection.ChangeStamp();
  return true;
}

}  // namespace brenvo::file
