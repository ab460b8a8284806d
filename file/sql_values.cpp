#include "sql_writer.h"

#include <algorithm>
#include <cstdint>

#include "dialect/convert.h"
#include "dialect/functions.h"
#include "read_schema.h"
#include "sqlite_functions.h"

namespace brenvo::file {

std::string_view SymbolOf(dialect::NodeKind kind) {
  switch (kind) {
    case dialect::NodeKind::kEqual:
      return " = ";
    case dialect::NodeKind::kNotEqual:
      return " <> ";
    case dialect::NodeKind::kLess:
      return " < ";
    case dialect::NodeKind::kLessEqual:
      return " <= ";
    case dialect::NodeKind::kGreater:
      return " > ";
    case dialect::NodeKind::kGreaterEqual:
      return " >= ";
    case dialect::NodeKind::kAdd:
      return " + ";
    case dialect::NodeKind::kSubtract:
      return " - ";
    case dialect::NodeKind::kMultiply:
      return " * ";
    default:
      return " ";
  }
}

void SqlWriter::Name(std::string_view name) { sql += QuotedName(name); }

void SqlWriter::Parameter(engine::Value value) {
  sql += '?';
  parameters.push_back(std::move(value));
}

void SqlWriter::ColumnName(const dialect::Node& node) {
  if (!node.qualifier.empty()) {
    Name(node.qualifier);
    sql += '.';
  }
  Add(node.table->columns[node.column].quoted);
}

void SqlWriter::Join(const dialect::Node& node, std::string_view word) {
  for (std::size_t i = 0; i < node.children.size(); ++i) {
    if (i > 0) Add(word);
    const dialect::Node& child = *node.children[i];
    const bool bracket =
        node.kind == dialect::NodeKind::kAnd && child.kind == dialect::NodeKind::kOr;
    if (bracket) Add("(");
    Condition(child);
    if (bracket) Add(")");
  }
}

void SqlWriter::Condition(const dialect::Node& node) {
  switch (node.kind) {
    case dialect::NodeKind::kOr:
      return Join(node, " OR ");
    case dialect::NodeKind::kAnd:
      return Join(node, " AND ");
    case dialect::NodeKind::kNot:
      Add("NOT (");
      Condition(*node.children[0]);
      return Add(")");
    case dialect::NodeKind::kEqual:
    case dialect::NodeKind::kNotEqual:
    case dialect::NodeKind::kLess:
    case dialect::NodeKind::kLessEqual:
    case dialect::NodeKind::kGreater:
    case dialect::NodeKind::kGreaterEqual:
      return Comparison(node);
    case dialect::NodeKind::kLike:
      return Like(node);
    case dialect::NodeKind::kBetween:
      return Between(node);
    case dialect::NodeKind::kInList:
    case dialect::NodeKind::kInSelect:
      return In(node);
    case dialect::NodeKind::kIsNull:
      Operand(*node.children[0]);
      return Add(node.negated ? " IS NOT NULL" : " IS NULL");
    case dialect::NodeKind::kExists:
      Add("EXISTS (");
      Select(*node.select);
      return Add(")");
    case dialect::NodeKind::kColumn:
      ColumnName(node);
      // Yes is stored as -1: an equality is what an index serves.
      return Add(node.type == dialect::ValueType::kYesNo ? " = -1" : " <> 0");
    case dialect::NodeKind::kCall:
      if (node.function->kind == dialect::Function::Kind::kIsNull) {
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

void SqlWriter::Operand(const dialect::Node& node) {
  switch (node.kind) {
    case dialect::NodeKind::kAdd:
    case dialect::NodeKind::kSubtract:
    case dialect::NodeKind::kMultiply:
    case dialect::NodeKind::kDivide:
    case dialect::NodeKind::kConcatenate:
    case dialect::NodeKind::kNegate:
      Add("(");
      Plain(node);
      return Add(")");
    default:
      return Plain(node);
  }
}

void SqlWriter::Text(const dialect::Node& node) {
  if (node.type == dialect::ValueType::kText) return Operand(node);
  Add("dialect_text(");
  Plain(node);
  Add(")");
}

void SqlWriter::Plain(const dialect::Node& node) {
  switch (node.kind) {
    case dialect::NodeKind::kText:
      return Parameter(engine::Value(node.text));
    case dialect::NodeKind::kInteger:
      return Parameter(engine::Value(node.integer));
    case dialect::NodeKind::kReal:
      return Parameter(engine::Value(node.real));
    case dialect::NodeKind::kBoolean:
      return Add(node.integer != 0 ? "-1" : "0");
    case dialect::NodeKind::kNull:
      return Add("NULL");
    case dialect::NodeKind::kDate:
      return Parameter(engine::Value(node.date));
    case dialect::NodeKind::kColumn:
      return ColumnName(node);
    case dialect::NodeKind::kCall:
      return Call(node);
    case dialect::NodeKind::kNegate:
      // The blank keeps two signs from becoming a comment.
      Add("- ");
      return Operand(*node.children[0]);
    case dialect::NodeKind::kAdd:
      if (node.type == dialect::ValueType::kText) {
        Operand(*node.children[0]);
        Add(" || ");
        return Operand(*node.children[1]);
      }
      [[fallthrough]];
    case dialect::NodeKind::kSubtract:
    case dialect::NodeKind::kMultiply:
      Operand(*node.children[0]);
      Add(SymbolOf(node.kind));
      return Operand(*node.children[1]);
    case dialect::NodeKind::kDivide:
      Add("CAST(");
      Plain(*node.children[0]);
      Add(" AS REAL) / ");
      return Operand(*node.children[1]);
    case dialect::NodeKind::kConcatenate:
      Add("coalesce(");
      Text(*node.children[0]);
      Add(", '') || coalesce(");
      Text(*node.children[1]);
      return Add(", '')");
    case dialect::NodeKind::kSubselect:
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

void SqlWriter::LeftCall(const dialect::Node& node) {
  Add("substr(");
  Plain(*node.children[0]);
  const dialect::Node& count = *node.children[1];
  if (count.kind == dialect::NodeKind::kInteger) {
    Add(", 1, ");
    Add(std::to_string(std::max<std::int64_t>(0, count.integer)));
  } else {
    Add(", 1, max(0, ");
    Plain(count);
    Add(")");
  }
  Add(")");
}

void SqlWriter::Call(const dialect::Node& node) {
  const dialect::Function& function = *node.function;
  switch (function.kind) {
    case dialect::Function::Kind::kLeft:
      return LeftCall(node);
    case dialect::Function::Kind::kIsNull:
      Add("-(");
      Condition(node);
      return Add(")");
    case dialect::Function::Kind::kDate:
      // A date column is one already.
      if (node.children[0]->kind == dialect::NodeKind::kColumn &&
          node.children[0]->type == dialect::ValueType::kDate) {
        return ColumnName(*node.children[0]);
      }
      break;
    case dialect::Function::Kind::kExtreme:
      Add(SqlOf(function.id));
      Add("(");
      SortKey(*node.children[0]);
      return Add(")");
    case dialect::Function::Kind::kCondition:
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

void SqlWriter::SortKey(const dialect::Node& node) {
  if (node.type == dialect::ValueType::kText) return Comparand(node, SortOrder(node));
  Plain(node);
}

void SqlWriter::Select(const dialect::SelectTree& select) {
  Add("SELECT ");
  for (std::size_t i = 0; i < select.items.size(); ++i) {
    if (i > 0) Add(", ");
    Plain(*select.items[i].value);
  }
  Rows(select);
  OrderBy(select);
}

void SqlWriter::Rows(const dialect::SelectTree& select) {
  From(select);
  if (const auto walk = PlanGroupedWalk(select)) {
    Walk(*walk);
  } else if (select.where != nullptr) {
    Add(" WHERE ");
    Condition(*select.where);
  }
  Groups(select);
}

void SqlWriter::From(const dialect::SelectTree& select) {
  for (std::size_t i = 0; i < select.tables.size(); ++i) {
    Add(i == 0 ? " FROM " : ", ");
    Add(select.tables[i].table->quoted);
    if (select.tables[i].alias.empty()) continue;
    Add(" AS ");
    Name(select.tables[i].alias);
  }
}

void SqlWriter::Groups(const dialect::SelectTree& select) {
  bool first = true;
  const auto group = [&](const dialect::Node& node) {
    Add(first ? " GROUP BY " : ", ");
    first = false;
    SortKey(node);
  };
  for (const dialect::Node* node : select.groupBy) group(*node);
  // Texts that differ in case or trailing blanks are one, which SQLite's own DISTINCT ignores.
  if (select.distinct) {
    for (const dialect::SelectItem& item : select.items) group(*item.value);
  }
  if (select.having != nullptr) {
    Add(" HAVING ");
    Condition(*select.having);
  }
}

std::string SqlWriter::PartName(std::size_t part) { return "\"part" + std::to_string(part) + "\""; }

// Those before a part, a comma behind each.
std::string SqlWriter::PartNames(std::size_t end) {
  std::string names;
  for (std::size_t i = 0; i < end; ++i) names += PartName(i) + ", ";
  return names;
}

std::string SqlWriter::LevelName(std::size_t level) {
  return "\"level" + std::to_string(level) + "\"";
}

std::string SqlWriter::MetName(std::size_t level) { return "\"met" + std::to_string(level) + "\""; }

void SqlWriter::Part(const dialect::TableSchema& table, const dialect::IndexPart& part) {
  const dialect::Column& column = table.columns[part.column];
  if (column.type != dialect::ColumnType::kText) return Add(column.quoted);
  Add("rtrim(");
  Add(part.prefix > 0 ? "substr(" : "");
  Add(column.quoted);
  if (part.prefix > 0) Add(", 1, " + std::to_string(part.prefix) + ")");
  Add(") COLLATE NOCASE");
}

void SqlWriter::All(const std::vector<const dialect::Node*>& conditions, std::string_view word) {
  for (const dialect::Node* each : conditions) {
    Add(word);
    word = " AND ";
    Add("(");
    Condition(*each);
    Add(")");
  }
}

// Each combination of the parts that there is, found by a step of the index each; what the parts
// answer is asked as soon as they are known. Of each combination one row is taken: the first one
// that meets the conditions which want a row.
void SqlWriter::Walk(const GroupedWalk& walk) {
  Add(" WHERE rowid IN (WITH RECURSIVE ");
  for (std::size_t level = 0; level < walk.parts; ++level) {
    if (level > 0) Add(", ");
    Level(walk, level);
    Add(", ");
    OfLevel(walk, level);
  }
  Add(" SELECT ");
  std::vector<const dialect::Node*> ofRows = walk.ofRows;
  // Where the beginning of a column is not empty, neither is the column.
  const bool asked = walk.beginningFilled != nullptr && !ofRows.empty();
  if (walk.beginningFilled != nullptr && !asked) {
    Add("CASE WHEN \"part0\" > '' THEN ");
    RowOf(walk, {});
    Add(" ELSE ");
  }
  if (walk.beginningFilled != nullptr) ofRows.push_back(walk.beginningFilled);
  RowOf(walk, ofRows);
  if (walk.beginningFilled != nullptr && !asked) Add(" END");
  Add(" FROM " + MetName(walk.parts - 1) + ")");
}

// The values of a part that stand behind each combination of those before it: the lowest, and the
// next ones each from the one before, until there is none; Null where there is one, which "empty"
// tells from that end.
void SqlWriter::Level(const GroupedWalk& walk, std::size_t level) {
  const dialect::IndexPart& own = walk.index->parts[level];
  const std::string before = PartNames(level);
  const auto lowest = [&](std::string_view behind) {
    Add("(SELECT min(");
    Part(*walk.table, own);
    Add(")");
    FromBefore(walk, level);
    if (!behind.empty()) {
      Add(level == 0 ? " WHERE " : " AND ");
      Part(*walk.table, own);
      Add(" > ");
      Add(behind);
    }
    Add("), 0");
  };
  const std::string ofThoseBefore = level == 0 ? "" : " FROM " + MetName(level - 1);
  const bool filled = level == 0 && walk.firstPartFilled;

  Add(LevelName(level) + "(" + before + PartName(level) + ", \"empty\") AS (SELECT " + before);
  lowest(filled ? "''" : "");
  Add(ofThoseBefore);
  if (!filled) {
    Add(" UNION ALL SELECT " + before + "NULL, 1" + ofThoseBefore + " WHERE EXISTS (SELECT 1");
    FromBefore(walk, level);
    Add(level == 0 ? " WHERE " : " AND ");
    Part(*walk.table, own);
    Add(" IS NULL)");
  }
  Add(" UNION ALL SELECT " + before);
  lowest(PartName(level));
  Add(" FROM " + LevelName(level) + " WHERE " + PartName(level) + " IS NOT NULL)");
}

// The combinations of a level that meet what its last part decides, under the names of its columns.
void SqlWriter::OfLevel(const GroupedWalk& walk, std::size_t level) {
  Add(MetName(level) + " AS (SELECT " + PartNames(level) + PartName(level) + " FROM (SELECT *");
  for (std::size_t i = 0; i <= level; ++i) {
    const dialect::IndexPart& each = walk.index->parts[i];
    if (each.prefix == 0)
      Add(", " + PartName(i) + " AS " + walk.table->columns[each.column].quoted);
  }
  Add(" FROM " + LevelName(level) + ") WHERE (" + PartName(level) + " IS NOT NULL OR \"empty\")");
  std::vector<const dialect::Node*> decided;
  for (const GroupedWalk::OfParts& each : walk.ofParts) {
    if (each.last == level) decided.push_back(each.condition);
  }
  All(decided, " AND ");
  Add(")");
}

// The rows of a combination of the parts before this one.
void SqlWriter::FromBefore(const GroupedWalk& walk, std::size_t level) {
  Add(" FROM " + walk.table->quoted + " INDEXED BY ");
  Name(walk.table->name + "." + walk.index->name);
  for (std::size_t i = 0; i < level; ++i) {
    Add(i == 0 ? " WHERE " : " AND ");
    Part(*walk.table, walk.index->parts[i]);
    Add(" IS " + PartName(i));
  }
}

void SqlWriter::RowOf(const GroupedWalk& walk,
                      const std::vector<const dialect::Node*>& conditions) {
  Add("(SELECT rowid");
  FromBefore(walk, walk.parts);
  All(conditions, " AND ");
  Add(" LIMIT 1)");
}

void SqlWriter::OrderBy(const dialect::SelectTree& select) {
  for (std::size_t i = 0; i < select.orderBy.size(); ++i) {
    Add(i == 0 ? " ORDER BY " : ", ");
    SortKey(*select.orderBy[i].value);
    if (select.orderBy[i].descending) Add(" DESC");
  }
}

void SqlWriter::Stored(const dialect::Node& node, const dialect::Column& column) {
  switch (node.kind) {
    case dialect::NodeKind::kText:
      return Parameter(dialect::ToColumn(engine::Value(node.text), column.type, column.name));
    case dialect::NodeKind::kInteger:
    case dialect::NodeKind::kBoolean:
      return Parameter(dialect::ToColumn(engine::Value(node.integer), column.type, column.name));
    case dialect::NodeKind::kReal:
      return Parameter(dialect::ToColumn(engine::Value(node.real), column.type, column.name));
    case dialect::NodeKind::kDate:
      return Parameter(dialect::ToColumn(engine::Value(node.date), column.type, column.name));
    case dialect::NodeKind::kNull:
      return Parameter(dialect::ToColumn(engine::Value(), column.type, column.name));
    default:
      break;
  }
  const dialect::ValueType wanted = dialect::TypeOfColumn(column.type);
  if (node.type == wanted && wanted == dialect::ValueType::kYesNo) {
    Add("coalesce(");
    Plain(node);
    return Add(", 0)");
  }
  if (node.type == wanted ||
      (wanted == dialect::ValueType::kReal && node.type == dialect::ValueType::kInteger)) {
    return Plain(node);
  }
  if (wanted == dialect::ValueType::kText) return Text(node);
  Add("dialect_store(");
  Add(std::to_string(static_cast<int>(column.type)));
  Add(", ");
  Plain(node);
  Add(")");
}

}  // namespace brenvo::file
