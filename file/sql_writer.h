// Writes values and conditions of a bound tree as SQLite's SQL.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "dialect/schema.h"
#include "dialect/tree.h"
#include "engine/value.h"
#include "grouped_walk.h"

namespace brenvo::file {

// Literals become parameters, so that statements that differ in nothing else are one text. What
// must stand in the text to meet an index stays there.
class SqlWriter {
 public:
  std::string sql;
  std::vector<engine::Value> parameters;

  void Select(const dialect::SelectTree& select);
  // "FROM ... WHERE ... GROUP BY ...": the rows without their columns and order.
  void Rows(const dialect::SelectTree& select);
  void OrderBy(const dialect::SelectTree& select);
  // The value as it is.
  void Plain(const dialect::Node& node);
  // True, false or Null.
  void Condition(const dialect::Node& node);
  // The value as texts are compared, ordered and grouped.
  void SortKey(const dialect::Node& node);
  // The value as a column of this type stores it; DatabaseError 3421 for a constant that it cannot.
  void Stored(const dialect::Node& node, const dialect::Column& column);

 private:
  void Add(std::string_view text) { sql += text; }
  void Name(std::string_view name);
  void From(const dialect::SelectTree& select);
  void Groups(const dialect::SelectTree& select);
  // "WHERE rowid IN ..." for "WHERE ...": a row at least of each group.
  void Walk(const GroupedWalk& walk);
  void Level(const GroupedWalk& walk, std::size_t level);
  void OfLevel(const GroupedWalk& walk, std::size_t level);
  void FromBefore(const GroupedWalk& walk, std::size_t level);
  void RowOf(const GroupedWalk& walk, const std::vector<const dialect::Node*>& conditions);
  static std::string PartName(std::size_t part);
  static std::string PartNames(std::size_t end);
  static std::string LevelName(std::size_t level);
  static std::string MetName(std::size_t level);
  void Part(const dialect::TableSchema& table, const dialect::IndexPart& part);
  void All(const std::vector<const dialect::Node*>& conditions, std::string_view word);
  void Parameter(engine::Value value);
  void ColumnName(const dialect::Node& node);

  // Values.
  void Operand(const dialect::Node& node);
  void Call(const dialect::Node& node);
  void Text(const dialect::Node& node);
  void LeftCall(const dialect::Node& node);

  // Texts as they compare, and conditions on them and on days.
  static std::string_view SortOrder(const dialect::Node& node);
  void Comparand(const dialect::Node& node, std::string_view order);
  void Head(const dialect::Node& column, int length);
  void Join(const dialect::Node& node, std::string_view word);
  void Comparison(const dialect::Node& node);
  void DayBound(const dialect::Node& dateValue, std::string_view symbol, const dialect::Node& day,
                bool end);
  bool DayRange(const dialect::Node& node);
  bool PrefixEquality(const dialect::Node& column, std::string_view text);
  void Like(const dialect::Node& node);
  void Prefix(const dialect::Node& value, const std::string& prefix);
  void Between(const dialect::Node& node);
  void In(const dialect::Node& node);
};

// Of a comparison or a sum, with a blank on both sides.
std::string_view SymbolOf(dialect::NodeKind kind);

}  // namespace brenvo::file
