// Rows that a snapshot has read, packed.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "engine/value.h"

struct sqlite3_stmt;

namespace brenvo::file {

class RowStore {
 public:
  std::int64_t Size() const { return static_cast<std::int64_t>(rows_.size()); }
  void Clear();
  // The row on which the statement stands.
  void Append(sqlite3_stmt* statement);
  // A cell as the file holds it.
  engine::Value Cell(std::int64_t row, std::size_t column) const;

 private:
  struct Place {
    std::uint32_t block, offset;
  };
  std::vector<std::string> blocks_;
  std::vector<Place> rows_;
  // Where the cell asked for last stands in its block: a row is mostly read in its order.
  struct Reached {
    std::int64_t row = -1;
    std::size_t column = 0, offset = 0;
  };
  mutable Reached reached_;
};

}  // namespace brenvo::file
