#include "sql_writer.h"

#include <algorithm>
#include <cstdint>

#include "dialect/convert.h"
#include "dialect/functions.h"
#include "read_schema.h"
#include "sqlite_functions.h"

namespace brenvo {

std::string_view SymbolOf(NodeKind kind) {
  switch (kind) {
    case NodeKind::kEqual:
      return " = ";
    case NodeKind::kNotEqual:
      return " <> ";
    case NodeKind::kLess:
      return " < ";
    case NodeKind::kLessEqual:
      return " <= ";
    case NodeKind::kGreater:
      return " > ";
    case NodeKind::kGreaterEqual:
      return " >= ";
    case NodeKind::kAdd:
      return " + ";
    case NodeKind::kSubtract:
      return " - ";
    case NodeKind::kMultiply:
      return " * ";
    default:
      return " ";
  }
}

void SqlWriter::Name(std::string_view name) { sql += QuotedName(name); }

void SqlWriter::Parameter(Value value) {
  sql += '?';
  parameters.push_back(std::move(value));
}

void SqlWriter::ColumnName(const Node& node) {
  if (!node.qualifier.empty()) {
    Name(node.qualifier);
    sql += '.';
  }
  Add(node.table->columns[node.column].quoted);
}

void SqlWriter::Join(const Node& node, std::string_view word) {
  for (std::size_t i = 0; i < node.children.size(); ++i) {
    if (i > 0) Add(word);
    const Node& child = *node.children[i];
    const bool bracket = node.kind == NodeKind::kAnd && child.kind == NodeKind::kOr;
    if (bracket) Add("(");
    Condition(child);
    if (bracket) Add(")");
  }
}

void SqlWriter::Condition(const Node& node) {
  switch (node.kind) {
    case NodeKind::kOr:
      return Join(node, " OR ");
    case NodeKind::kAnd:
      return Join(node, " AND ");
    case NodeKind::kNot:
      Add("NOT (");
      Condition(*node.children[0]);
      return Add(")");
    case NodeKind::kEqual:
    case NodeKind::kNotEqual:
    case NodeKind::kLess:
    case NodeKind::kLessEqual:
    case NodeKind::kGreater:
    case NodeKind::kGreaterEqual:
      return Comparison(node);
    case NodeKind::kLike:
      return Like(node);
    case NodeKind::kBetween:
      return Between(node);
    case NodeKind::kInList:
    case NodeKind::kInSelect:
      return In(node);
    case NodeKind::kIsNull:
      Operand(*node.children[0]);
      return Add(node.negated ? " IS NOT NULL" : " IS NULL");
    case NodeKind::kExists:
      Add("EXISTS (");
      Select(*node.select);
      return Add(")");
    case NodeKind::kColumn:
      ColumnName(node);
      // Yes is stored as -1: an equality is what an index serves.
      return Add(node.type == ValueType::kYesNo ? " = -1" : " <> 0");
    case NodeKind::kCall:
      if (node.function->kind == Function::Kind::kIsNull) {
        Operand(*node.children[0]);
        return Add(" IS NULL");
      }
      break;
    default:
      break;
  }
  Operand(node);
  Add(" <> 0");
}

void SqlWriter::Operand(const Node& node) {
  switch (node.kind) {
    case NodeKind::kAdd:
    case NodeKind::kSubtract:
    case NodeKind::kMultiply:
    case NodeKind::kDivide:
    case NodeKind::kConcatenate:
    case NodeKind::kNegate:
      Add("(");
      Plain(node);
      return Add(")");
    default:
      return Plain(node);
  }
}

void SqlWriter::Text(const Node& node) {
  if (node.type == ValueType::kText) return Operand(node);
  Add("dialect_text(");
  Plain(node);
  Add(")");
}

void SqlWriter::Plain(const Node& node) {
  switch (node.kind) {
    case NodeKind::kText:
      return Parameter(Value(node.text));
    case NodeKind::kInteger:
      return Parameter(Value(node.integer));
    case NodeKind::kReal:
      return Parameter(Value(node.real));
    case NodeKind::kBoolean:
      return Add(node.integer != 0 ? "-1" : "0");
    case NodeKind::kNull:
      return Add("NULL");
    case NodeKind::kDate:
      return Parameter(Value(node.date));
    case NodeKind::kColumn:
      return ColumnName(node);
    case NodeKind::kCall:
      return Call(node);
    case NodeKind::kNegate:
      // The blank keeps two signs from becoming a comment.
      Add("- ");
      return Operand(*node.children[0]);
    case NodeKind::kAdd:
      if (node.type == ValueType::kText) {
        Operand(*node.children[0]);
        Add(" || ");
        return Operand(*node.children[1]);
      }
      [[fallthrough]];
    case NodeKind::kSubtract:
    case NodeKind::kMultiply:
      Operand(*node.children[0]);
      Add(SymbolOf(node.kind));
      return Operand(*node.children[1]);
    case NodeKind::kDivide:
      Add("CAST(");
      Plain(*node.children[0]);
      Add(" AS REAL) / ");
      return Operand(*node.children[1]);
    case NodeKind::kConcatenate:
      Add("coalesce(");
      Text(*node.children[0]);
      Add(", '') || coalesce(");
      Text(*node.children[1]);
      return Add(", '')");
    case NodeKind::kSubselect:
      Add("(");
      Select(*node.select);
      return Add(")");
    default:
      // A condition as a value is yes or no.
      Add("-(");
      Condition(node);
      return Add(")");
  }
}

void SqlWriter::LeftCall(const Node& node) {
  Add("substr(");
  Plain(*node.children[0]);
  const Node& count = *node.children[1];
  if (count.kind == NodeKind::kInteger) {
    Add(", 1, ");
    Add(std::to_string(std::max<std::int64_t>(0, count.integer)));
  } else {
    Add(", 1, max(0, ");
    Plain(count);
    Add(")");
  }
  Add(")");
}

void SqlWriter::Call(const Node& node) {
  const Function& function = *node.function;
  switch (function.kind) {
    case Function::Kind::kLeft:
      return LeftCall(node);
    case Function::Kind::kIsNull:
      Add("-(");
      Condition(node);
      return Add(")");
    case Function::Kind::kDate:
      // A date column is one already.
      if (node.children[0]->kind == NodeKind::kColumn &&
          node.children[0]->type == ValueType::kDate) {
        return ColumnName(*node.children[0]);
      }
      break;
    case Function::Kind::kExtreme:
      Add(SqlOf(function.id));
      Add("(");
      SortKey(*node.children[0]);
      return Add(")");
    case Function::Kind::kCondition:
      Add("iif(");
      Condition(*node.children[0]);
      Add(", ");
      Plain(*node.children[1]);
      Add(", ");
      Plain(*node.children[2]);
      return Add(")");
    default:
      break;
  }
  Add(SqlOf(function.id));
  Add("(");
  if (node.star) Add("*");
  for (std::size_t i = 0; i < node.children.size(); ++i) {
    if (i > 0) Add(", ");
    Plain(*node.children[i]);
  }
  Add(")");
}

void SqlWriter::SortKey(const Node& node) {
  if (node.type == ValueType::kText) return Comparand(node, SortOrder(node));
  Plain(node);
}

void SqlWriter::Select(const SelectTree& select) {
  Add("SELECT ");
  for (std::size_t i = 0; i < select.items.size(); ++i) {
    if (i > 0) Add(", ");
    Plain(*select.items[i].value);
  }
  Rows(select);
  OrderBy(select);
}

void SqlWriter::Rows(const SelectTree& select) {
  for (std::size_t i = 0; i < select.tables.size(); ++i) {
    Add(i == 0 ? " FROM " : ", ");
    Add(select.tables[i].table->quoted);
    if (select.tables[i].alias.empty()) continue;
    Add(" AS ");
    Name(select.tables[i].alias);
  }
  if (select.where != nullptr) {
    Add(" WHERE ");
    Condition(*select.where);
  }
  bool first = true;
  const auto group = [&](const Node& node) {
    Add(first ? " GROUP BY " : ", ");
    first = false;
    SortKey(node);
  };
  for (const Node* node : select.groupBy) group(*node);
  // Texts that differ in case or trailing blanks are one, which SQLite's own DISTINCT ignores.
  if (select.distinct) {
    for (const SelectItem& item : select.items) group(*item.value);
  }
  if (select.having != nullptr) {
    Add(" HAVING ");
    Condition(*select.having);
  }
}

void SqlWriter::OrderBy(const SelectTree& select) {
  for (std::size_t i = 0; i < select.orderBy.size(); ++i) {
    Add(i == 0 ? " ORDER BY " : ", ");
    SortKey(*select.orderBy[i].value);
    if (select.orderBy[i].descending) Add(" DESC");
  }
}

void SqlWriter::Stored(const Node& node, const Column& column) {
  switch (node.kind) {
    case NodeKind::kText:
      return Parameter(ToColumn(Value(node.text), column.type, column.name));
    case NodeKind::kInteger:
    case NodeKind::kBoolean:
      return Parameter(ToColumn(Value(node.integer), column.type, column.name));
    case NodeKind::kReal:
      return Parameter(ToColumn(Value(node.real), column.type, column.name));
    case NodeKind::kDate:
      return Parameter(ToColumn(Value(node.date), column.type, column.name));
    case NodeKind::kNull:
      return Parameter(ToColumn(Value(), column.type, column.name));
    default:
      break;
  }
  const ValueType wanted = TypeOfColumn(column.type);
  if (node.type == wanted && wanted == ValueType::kYesNo) {
    Add("coalesce(");
    Plain(node);
    return Add(", 0)");
  }
  if (node.type == wanted || (wanted == ValueType::kReal && node.type == ValueType::kInteger)) {
    return Plain(node);
  }
  if (wanted == ValueType::kText) return Text(node);
  Add("dialect_store(");
  Add(std::to_string(static_cast<int>(column.type)));
  Add(", ");
  Plain(node);
  Add(")");
}

}  // namespace brenvo
