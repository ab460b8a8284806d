#include "base/csv.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <utility>

#include "base/encoding.h"

namespace brenvo::base {
namespace {

class Reader {
 public:
  explicit Reader(std::string_view text) : text_(WithoutByteOrderMark(text)) {}

  // The cells of the next line that is not empty; false at the end of the text.
  bool Next(CsvTable::Row& row) {
    while (!text_.empty() && SkipLineEnd()) {
    }
    if (text_.empty()) return false;
    row.Line = line_;
    row.Cells.clear();
    do {
      row.Cells.push_back(text_.starts_with('"') ? Quoted() : Plain());
    } while (SkipComma());
    if (!text_.empty() && !SkipLineEnd()) Fail("text behind a closing quote");
    return true;
  }

  [[noreturn]] void Fail(const std::string& what) const { Fail(line_, what); }
  [[noreturn]] static void Fail(std::size_t line, const std::string& what) {
    throw std::runtime_error("line " + std::to_string(line) + ": " + what);
  }

 private:
  bool SkipComma() {
    if (!text_.starts_with(',')) return false;
    text_.remove_prefix(1);
    return true;
  }

  bool SkipLineEnd() {
    if (text_.starts_with("\r\n")) {
      text_.remove_prefix(2);
    } else if (text_.starts_with('\n')) {
      text_.remove_prefix(1);
    } else {
      return false;
    }
    ++line_;
    return true;
  }

  std::string Plain() {
    std::size_t end = std::min(text_.find_first_of(",\n"), text_.size());
    if (end < text_.size() && text_[end] == '\n' && end > 0 && text_[end - 1] == '\r') --end;
    std::string cell(text_.substr(0, end));
    text_.remove_prefix(end);
    return cell;
  }

  std::string Quoted() {
    const std::size_t firstLine = line_;
    std::string cell;
    text_.remove_prefix(1);
    while (true) {
      const std::size_t quote = text_.find('"');
      if (quote == std::string_view::npos) Fail(firstLine, "a quote is not closed");
      const std::string_view part = text_.substr(0, quote);
      line_ += static_cast<std::size_t>(std::count(part.begin(), part.end(), '\n'));
      cell += part;
      text_.remove_prefix(quote + 1);
      if (!text_.starts_with('"')) return cell;
      cell += '"';
      text_.remove_prefix(1);
    }
  }

  std::string_view text_;
  std::size_t line_ = 1;
};

void CheckHeadings(const CsvTable::Row& row) {
  for (auto cell = row.Cells.begin(); cell != row.Cells.end(); ++cell) {
    if (cell->empty()) Reader::Fail(row.Line, "an empty heading");
    if (std::find(row.Cells.begin(), cell, *cell) != cell) {
      Reader::Fail(row.Line, "heading \"" + *cell + "\" comes twice");
    }
  }
}

}  // namespace

std::size_t CsvTable::Column(std::string_view heading) const {
  const auto found = std::find(Headings.begin(), Headings.end(), heading);
  if (found == Headings.end()) {
    throw std::runtime_error("no column \"" + std::string(heading) + "\"");
  }
  return static_cast<std::size_t>(found - Headings.begin());
}

CsvTable ParseCsv(std::string_view text) {
  Reader reader(text);
  CsvTable table;
  CsvTable::Row row;
  if (!reader.Next(row)) reader.Fail("no headings");
  CheckHeadings(row);
  table.Headings = std::move(row.Cells);
  while (reader.Next(row)) {
    if (row.Cells.size() != table.Headings.size()) {
      Reader::Fail(row.Line, std::to_string(row.Cells.size()) + " cells under " +
                                 std::to_string(table.Headings.size()) + " headings");
    }
    table.Rows.push_back(std::move(row));
  }
  return table;
}

CsvTable ReadCsv(const std::filesystem::path& file) {
  std::ifstream in(file, std::ios::binary);
  if (!in) throw std::runtime_error(file.filename().string() + ": cannot be read");
  const std::string text((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
  try {
    return ParseCsv(text);
  } catch (const std::runtime_error& error) {
    throw std::runtime_error(file.filename().string() + ", " + error.what());
  }
}

std::string CsvLine(const std::vector<std::string>& cells) {
  // An empty line would be passed over.
  if (cells.size() == 1 && cells.front().empty()) return "\"\"\r\n";
  std::string line;
  for (const std::string& cell : cells) {
    if (&cell != cells.data()) line += ',';
    if (cell.find_first_of("\",\r\n") == std::string::npos) {
      line += cell;
      continue;
    }
    line += '"';
    for (const char c : cell) line += c == '"' ? "\"\"" : std::string(1, c);
    line += '"';
  }
  return line + "\r\n";
}

}  // namespace brenvo::base
