// The rows of a window that shows a table.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "core/column_filter.h"
#include "forms/grid.h"

namespace brenvo::core {

// Which rows are wanted, and in which order.
struct Arrangement {
  // Each of these stands somewhere in these cells of the row, in any cell where none are named.
  std::string words{};
  std::vector<std::size_t> searched{};
  struct Filter {
    std::size_t field = 0;
    ColumnFilter filter{};
  };
  std::vector<Filter> filters{};
  struct Order {
    std::size_t field = 0;
    ColumnKind kind = ColumnKind::kText;
    bool descending = false;
  };
  // The first one counts most; rows that are alike in all of them, and all rows without any, stand
  // as they come.
  std::vector<Order> order{};
};

// What a table shows. Rows count from 0, and each has a key that it keeps while others come and go.
class TableRows : public forms::GridRows {
 public:
  // False when it takes its time: the rows stay as they are, and OnReady runs once the same can be
  // had at once.
  virtual bool Arrange(const Arrangement& wanted) = 0;
  std::function<void()> OnReady;
  virtual std::int64_t KeyAt(std::int64_t row) = 0;
  // Nothing for a row that is not shown.
  virtual std::optional<std::int64_t> RowOf(std::int64_t key) = 0;
  // Of all rows, shown or not.
  virtual std::int64_t CountOfAll() const = 0;

  // The cells are only read.
  void SetCellText(std::int64_t, std::size_t, std::string_view) override {}
  void AddRow(std::size_t, std::string_view) override {}
  void DeleteRow(std::int64_t) override {}
};

// Rows in memory. A row's key is its place among all of them. Case and accents do not count.
class MemoryRows : public TableRows {
 public:
  using Row = std::vector<std::string>;  // a text a column
  // All of them are shown until they are arranged.
  void SetRows(std::vector<Row> rows);
  // One before all others, of which no more than `most` stay. What is shown is none of them until
  // they are arranged.
  void PutFirst(Row row, std::size_t most);

  bool Arrange(const Arrangement& wanted) override;
  std::int64_t KeyAt(std::int64_t row) override;
  std::optional<std::int64_t> RowOf(std::int64_t key) override;
  std::int64_t CountOfAll() const override { return std::ssize(rows_); }
  std::int64_t RowCount() override { return std::ssize(shown_); }
  std::string CellText(std::int64_t row, std::size_t field) override;

 private:
  std::vector<Row> rows_;
  std::vector<std::size_t> shown_;
};

// The same under keys of their own, each once.
class KeyedRows : public MemoryRows {
 public:
  struct Keyed {
    std::int64_t key;
    Row cells;
  };
  void SetKeyed(std::vector<Keyed> rows);
  std::int64_t KeyAt(std::int64_t row) override;
  std::optional<std::int64_t> RowOf(std::int64_t key) override;

 private:
  std::vector<std::int64_t> keys_;
  std::unordered_map<std::int64_t, std::int64_t> places_;  // of the keys
};

}  // namespace brenvo::core
