// A table as a test compares it.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "forms/grid.h"

namespace brenvo {

// Below the headings a text a row, "a|b|c".
inline std::vector<std::string> RowsOf(forms::Grid& grid) {
  std::vector<std::string> rows;
  for (std::int64_t row = 1; row < grid.Rows(); ++row) {
    std::string text;
    for (int i = 0; i < grid.Columns(); ++i) text += (i == 0 ? "" : "|") + grid.Cell(row, i);
    rows.push_back(text);
  }
  return rows;
}

}  // namespace brenvo
