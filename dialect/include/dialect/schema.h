// The tables, columns and indexes that statements are read against, as plain data. A store reads
// them from where it keeps its rows.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace brenvo::dialect {

enum class ColumnType { kText, kInteger, kReal, kDateTime, kYesNo, kCounter };

// What a value is; kAny where that is known only when it is read.
enum class ValueType { kAny, kText, kInteger, kReal, kDate, kYesNo };

ValueType TypeOfColumn(ColumnType type);

struct Column {
  std::string name;
  std::string quoted;  // as the store's own statements write it
  ColumnType type = ColumnType::kText;
};

// One part of an index's key: a whole column, or the first `prefix` characters of a text column.
// Texts count in it without the blanks at their end and without regard to the case of ASCII
// letters.
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
  std::string quoted;  // as the store's own statements write it
  std::vector<Column> columns;
  std::vector<Index> indexes;
  // The column whose numbers are the keys of the rows, rising in the order of entry, if any.
  std::size_t keyColumn = kNone;

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
  Schema() = default;
  explicit Schema(std::vector<TableSchema> tables) : tables_(std::move(tables)) {}

  // Null when there is none; case does not count.
  const TableSchema* FindTable(std::string_view name) const;
  const std::vector<TableSchema>& Tables() const { return tables_; }

 private:
  std::vector<TableSchema> tables_;
};

}  // namespace brenvo::dialect
