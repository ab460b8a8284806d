// The rows of a dynaset that are in memory: the current one, or a few of those to come.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "connection.h"
#include "row_store.h"
#include "translate.h"

namespace brenvo::file {

// Rows count as held until anything is written through the connection.
class HeldRows {
 public:
  // The most rows that FetchAhead takes at a time.
  static constexpr std::size_t kMost = 64;

  // `keyset` outlives it.
  explicit HeldRows(const Keyset& keyset);

  // Whether the row is held, all of it or that column.
  bool Has(const Connection& connection, std::int64_t key);
  bool Has(const Connection& connection, std::int64_t key, std::size_t column);
  // A cell of the row that was asked for last and is held, as the file has it.
  engine::Value Cell(std::size_t column) const { return rows_.Cell(row_, cellOf_[column]); }

  // Holds this row alone, whole; none when it is gone.
  void Fetch(Connection& connection, std::int64_t key);
  // Holds those of the rows that are there, with the columns that are `wanted`. False when nothing
  // is held: a wanted column is worked out, or there is a failure, which may be another row's.
  bool FetchAhead(Connection& connection, std::span<const std::int64_t> keys,
                  const std::vector<bool>& wanted);
  void Drop();

 private:
  void PrepareAhead(const std::vector<bool>& wanted);

  const Keyset& keyset_;
  RowStore rows_;
  std::vector<std::int64_t> keys_;   // of the rows, rising
  std::vector<std::size_t> cellOf_;  // of a column; kNone when it is not held
  std::int64_t stamp_ = -1;          // the connection's when they were read
  std::int64_t row_ = 0;             // that was asked for last
  std::vector<bool> wantedAhead_;    // what ahead_ selects
  std::string ahead_;
};

}  // namespace brenvo::file
