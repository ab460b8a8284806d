// Tables of reference facts as comma-separated text.
#pragma once

#include <cstddef>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace brenvo::base {

// A table read from comma-separated text: its first line holds the headings, every further line is
// a row with as many cells. A cell that holds a comma, a quote or a line end stands in double
// quotes, with quotes inside it doubled; blanks belong to their cell.
struct CsvTable {
  struct Row {
    std::size_t Line;  // of the text, counted from 1
    std::vector<std::string> Cells;
  };

  std::vector<std::string> Headings;
  std::vector<Row> Rows;

  // The number of the column under `heading`, compared as it is written. Throws
  // std::runtime_error when there is none.
  [[nodiscard]] std::size_t Column(std::string_view heading) const;
};

// Lines end in LF or CR LF; empty lines and a byte order mark are passed over. Throws
// std::runtime_error, with the line's number, when a row has more or fewer cells than headings, a
// heading is empty or comes twice, or a quote is not closed.
[[nodiscard]] CsvTable ParseCsv(std::string_view text);
// The same of a file; the message of an error begins with the file's name. A file that cannot be
// read is an error too.
[[nodiscard]] CsvTable ReadCsv(const std::filesystem::path& file);

// A row as a line of such a text, with CR LF at its end: ParseCsv gives the cells back.
[[nodiscard]] std::string CsvLine(const std::vector<std::string>& cells);

}  // namespace brenvo::base
