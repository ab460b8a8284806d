// Writes values and conditions of a bound tree as SQLite's SQL.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "dialect/schema.h"
#include "dialect/tree.h"
#include "engine/value.h"

namespace brenvo {

// Literals become parameters, so that statements that differ in nothing else are one text. What
// must stand in the text to meet an index stays there.
class SqlWriter {
 public:
  std::string sql;
  std::vector<Value> parameters;

  void Select(const SelectTree& select);
  // "FROM ... WHERE ... GROUP BY ...": the rows without their columns and order.
  void Rows(const SelectTree& select);
  void OrderBy(const SelectTree& select);
  // The value as it is.
  void Plain(const Node& node);
  // True, false or Null.
  void Condition(const Node& node);
  // The value as texts are compared, ordered and grouped.
  void SortKey(const Node& node);
  // The value as a column of this type stores it; DatabaseError 3421 for a constant that it cannot.
  void Stored(const Node& node, const Column& column);

 private:
  void Add(std::string_view text) { sql += text; }
  void Name(std::string_view name);
  void Parameter(Value value);
  void ColumnName(const Node& node);

  // Values.
  void Operand(const Node& node);
  void Call(const Node& node);
  void Text(const Node& node);
  void LeftCall(const Node& node);

  // Texts as they compare, and conditions on them and on days.
  static std::string_view SortOrder(const Node& node);
  void Comparand(const Node& node, std::string_view order);
  void Head(const Node& column, int length);
  void Join(const Node& node, std::string_view word);
  void Comparison(const Node& node);
  void DayBound(const Node& dateValue, std::string_view symbol, const Node& day, bool end);
  bool DayRange(const Node& node);
  bool PrefixEquality(const Node& column, std::string_view text);
  void Like(const Node& node);
  void Prefix(const Node& value, const std::string& prefix);
  void Between(const Node& node);
  void In(const Node& node);
};

// Of a comparison or a sum, with a blank on both sides.
std::string_view SymbolOf(NodeKind kind);

}  // namespace brenvo
