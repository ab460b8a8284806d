// What the database file says of its tables, columns and indexes.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

struct sqlite3;

namespace brenvo {

enum class ColumnType { kText, kInteger, kReal, kDateTime, kYesNo, kCounter };

struct Column {
  std::string name;
  std::string quoted;  // as SQL names it
  ColumnType type = ColumnType::kText;
};

// One part of an index's key: a whole column, or the first `prefix` characters of a text column.
// Parts on texts are rtrim(...) COLLATE NOCASE.
struct IndexPart {
  std::size_t column = 0;
  int prefix = 0;  // 0: the whole column
  friend bool operator==(const IndexPart&, const IndexPart&) = default;
};

struct Index {
  std::string name;  // as the program knows it
  bool unique = false;
  std::vector<IndexPart> parts;
};

struct TableSchema {
  static constexpr std::size_t kNone = static_cast<std::size_t>(-1);

  std::string name;
  std::string quoted;
  std::vector<Column> columns;
  std::vector<Index> indexes;
  std::size_t rowidColumn = kNone;  // the column that is the row's key itself, if any

  // kNone when there is no such column; case does not count.
  std::size_t FindColumn(std::string_view columnName) const;
  const Index* FindIndex(std::string_view indexName) const;
  // Whether some index holds this part, or begins with it.
  bool IsIndexed(const IndexPart& part) const;
  bool LeadsAnIndex(const IndexPart& part) const;
  // The prefix lengths of `column` with which an index begins.
  std::vector<int> LeadingPrefixes(std::size_t column) const;
};

class Schema {
 public:
  // Reads an open file's own description.
  static Schema Read(sqlite3* file);

  // Null when there is none; case does not count.
  const TableSchema* FindTable(std::string_view name) const;
  const std::vector<TableSchema>& Tables() const { return tables_; }

 private:
  std::vector<TableSchema> tables_;
};

// The SQL of a column or an index part, quoted: "Call", rtrim("Call") COLLATE NOCASE, ...
std::string QuotedName(std::string_view name);
std::string PartSql(const TableSchema& table, const IndexPart& part);

}  // namespace brenvo
