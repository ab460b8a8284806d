// Rows of texts that their owner sets whole.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "forms/grid.h"

namespace brenvo::rig {

class TextRows : public forms::GridRows {
 public:
  using Row = std::vector<std::string>;
  void Set(std::vector<Row> rows) { rows_ = std::move(rows); }

  std::int64_t RowCount() override { return std::ssize(rows_); }
  std::string CellText(std::int64_t row, std::size_t field) override {
    return rows_.at(static_cast<std::size_t>(row)).at(field);
  }
  // What is written in a cell the owner takes before.
  void SetCellText(std::int64_t, std::size_t, std::string_view) override {}
  void AddRow(std::size_t, std::string_view) override {}
  void DeleteRow(std::int64_t) override {}

 private:
  std::vector<Row> rows_;
};

}  // namespace brenvo::rig
