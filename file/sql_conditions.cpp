#include <algorithm>

#include "base/text.h"
#include "dialect/folding.h"
#include "dialect/functions.h"
#include "dialect/like_pattern.h"
#include "index_part.h"
#include "sql_writer.h"
#include "sqlite_functions.h"

namespace brenvo::file {
namespace {

constexpr std::string_view kAsciiOrder = "NOCASE";

bool IsTextual(const dialect::Node& node) { return node.type == dialect::ValueType::kText; }

bool IsIndexed(const dialect::Node& node) {
  const PartOfNode part = PartOf(node);
  return part.table != nullptr && part.table->IsIndexed(part.part);
}

std::string_view OrderForComparison(const dialect::Node* const* nodes, std::size_t count) {
  bool constant = false;
  bool indexed = false;
  for (std::size_t i = 0; i < count; ++i) {
    if (nodes[i]->kind == dialect::NodeKind::kText) {
      if (dialect::NeedsFolding(nodes[i]->text)) return kFoldingOrder;
      constant = true;
    }
    indexed = indexed || IsIndexed(*nodes[i]);
  }
  return constant || indexed ? kAsciiOrder : kFoldingOrder;
}

dialect::NodeKind Mirrored(dialect::NodeKind kind) {
  switch (kind) {
    case dialect::NodeKind::kLess:
      return dialect::NodeKind::kGreater;
    case dialect::NodeKind::kLessEqual:
      return dialect::NodeKind::kGreaterEqual;
    case dialect::NodeKind::kGreater:
      return dialect::NodeKind::kLess;
    case dialect::NodeKind::kGreaterEqual:
      return dialect::NodeKind::kLessEqual;
    default:
      return kind;
  }
}

bool IsDateValueOfColumn(const dialect::Node& node) {
  return node.kind == dialect::NodeKind::kCall &&
         node.function->kind == dialect::Function::Kind::kDateValue &&
         node.children[0]->kind == dialect::NodeKind::kColumn &&
         node.children[0]->type == dialect::ValueType::kDate;
}

bool IsDay(const dialect::Node& node) {
  return node.kind == dialect::NodeKind::kDate && node.date.TimePart() == base::DateTime();
}

// The first text, in SQLite's own order without regard to case, behind all that begin so.
std::string Successor(std::string prefix) {
  for (char& c : prefix) {
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c + 32);
  }
  char& last = prefix.back();
  // Capitals do not occur in that order.
  last = last == '@' ? '[' : static_cast<char>(last + 1);
  return prefix;
}

}  // namespace

PartOfNode PartOf(const dialect::Node& node) {
  if (node.kind == dialect::NodeKind::kColumn) return {node.table, {node.column, 0}};
  if (node.kind == dialect::NodeKind::kCall &&
      node.function->kind == dialect::Function::Kind::kLeft &&
      node.children[0]->kind == dialect::NodeKind::kColumn && IsTextual(*node.children[0]) &&
      node.children[1]->kind == dialect::NodeKind::kInteger && node.children[1]->integer > 0 &&
      node.children[1]->integer < 256) {
    const dialect::Node& column = *node.children[0];
    return {column.table, {column.column, static_cast<int>(node.children[1]->integer)}};
  }
  return {};
}

// Indexes hold texts in the order that SQLite brings along. Where no index can serve, letters
// outside ASCII are folded too.
std::string_view SqlWriter::SortOrder(const dialect::Node& node) {
  return IsIndexed(node) ? kAsciiOrder : kFoldingOrder;
}

void SqlWriter::Comparand(const dialect::Node& node, std::string_view order) {
  if (node.kind == dialect::NodeKind::kText) {
    Parameter(engine::Value(base::RTrim(node.text)));
  } else {
    Add("rtrim(");
    Plain(node);
    Add(")");
  }
  Add(" COLLATE ");
  Add(order);
}

void SqlWriter::Comparison(const dialect::Node& node) {
  if (DayRange(node)) return;
  const dialect::Node& left = *node.children[0];
  const dialect::Node& right = *node.children[1];
  if (!IsTextual(left) && !IsTextual(right)) {
    Operand(left);
    Add(SymbolOf(node.kind));
    return Operand(right);
  }
  if (node.kind == dialect::NodeKind::kEqual) {
    if (right.kind == dialect::NodeKind::kText && PrefixEquality(left, right.text)) return;
    if (left.kind == dialect::NodeKind::kText && PrefixEquality(right, left.text)) return;
  }
  const std::string_view order = OrderForComparison(node.children.data(), 2);
  Comparand(left, order);
  Add(SymbolOf(node.kind));
  Comparand(right, order);
}

// The stored texts of a day are those that begin with it: "~" sorts behind whatever follows.
void SqlWriter::DayBound(const dialect::Node& dateValue, std::string_view symbol,
                         const dialect::Node& day, bool end) {
  ColumnName(*dateValue.children[0]);
  Add(symbol);
  std::string bound = base::IsoText(day.date).substr(0, 10);
  if (end) bound += '~';
  Parameter(engine::Value(std::move(bound)));
}

// DateValue(column) against a day is a range of the column, so that its index serves.
bool SqlWriter::DayRange(const dialect::Node& node) {
  const dialect::Node* value = node.children[0];
  const dialect::Node* day = node.children[1];
  dialect::NodeKind kind = node.kind;
  if (!IsDateValueOfColumn(*value)) {
    std::swap(value, day);
    kind = Mirrored(kind);
  }
  if (!IsDateValueOfColumn(*value) || !IsDay(*day)) return false;
  switch (kind) {
    case dialect::NodeKind::kEqual:
      DayBound(*value, " >= ", *day, false);
      Add(" AND ");
      DayBound(*value, " < ", *day, true);
      break;
    case dialect::NodeKind::kNotEqual:
      Add("(");
      DayBound(*value, " < ", *day, false);
      Add(" OR ");
      DayBound(*value, " >= ", *day, true);
      Add(")");
      break;
    case dialect::NodeKind::kLess:
      DayBound(*value, " < ", *day, false);
      break;
    case dialect::NodeKind::kLessEqual:
      DayBound(*value, " < ", *day, true);
      break;
    case dialect::NodeKind::kGreater:
      DayBound(*value, " >= ", *day, true);
      break;
    default:
      DayBound(*value, " >= ", *day, false);
      break;
  }
  return true;
}

// A column that no index holds whole but one by its first characters: they are asked for too.
bool SqlWriter::PrefixEquality(const dialect::Node& column, std::string_view text) {
  if (column.kind != dialect::NodeKind::kColumn || dialect::NeedsFolding(text)) return false;
  if (column.table->LeadsAnIndex({column.column, 0})) return false;
  const std::vector<int> lengths = column.table->LeadingPrefixes(column.column);
  if (lengths.empty()) return false;
  Head(column, lengths.front());
  Add(" = ");
  Parameter(
      engine::Value(base::RTrim(base::Left(text, static_cast<std::size_t>(lengths.front())))));
  Add(" AND ");
  Comparand(column, kAsciiOrder);
  Add(" = ");
  Parameter(engine::Value(base::RTrim(text)));
  return true;
}

void SqlWriter::Like(const dialect::Node& node) {
  const dialect::Node& value = *node.children[0];
  const dialect::Node& pattern = *node.children[1];
  if (node.negated) Add("NOT (");
  bool written = false;
  if (IsTextual(value) && pattern.kind == dialect::NodeKind::kText) {
    const dialect::LikePattern read(pattern.text);
    const bool folds = dialect::NeedsFolding(read.Literal());
    if (read.GetShape() == dialect::LikePattern::Shape::kText) {
      if (!PrefixEquality(value, read.Literal())) {
        const std::string_view order = folds ? kFoldingOrder : kAsciiOrder;
        Comparand(value, order);
        Add(" = ");
        Parameter(engine::Value(base::RTrim(read.Literal())));
      }
      written = true;
    } else if (read.GetShape() == dialect::LikePattern::Shape::kPrefix && !folds &&
               PartOf(value).table != nullptr) {
      Prefix(value, read.Literal());
      written = true;
    }
  }
  if (!written) {
    Add("dialect_like(");
    Plain(pattern);
    Add(", ");
    Text(value);
    Add(")");
  }
  if (node.negated) Add(")");
}

// The value begins with the prefix, or is a Null.
void SqlWriter::Prefix(const dialect::Node& value, const std::string& prefix) {
  const bool blankEnd = prefix.ends_with(' ');
  const std::size_t length = base::Len(prefix);
  if (value.kind == dialect::NodeKind::kColumn && !value.table->LeadsAnIndex({value.column, 0}) &&
      length > 0) {
    for (const int held : value.table->LeadingPrefixes(value.column)) {
      const auto count = static_cast<std::size_t>(held);
      if (length > count) {
        Head(value, held);
        Add(" = ");
        Parameter(engine::Value(base::RTrim(base::Left(prefix, count))));
        Add(" AND ");
        break;
      }
      if (blankEnd) continue;
      Head(value, held);
      if (length == count) {
        Add(" = ");
        return Parameter(engine::Value(prefix));
      }
      Add(" >= ");
      Parameter(engine::Value(prefix));
      Add(" AND ");
      Head(value, held);
      Add(" < ");
      return Parameter(engine::Value(Successor(prefix)));
    }
  }
  Comparand(value, kAsciiOrder);
  Add(" >= ");
  Parameter(engine::Value(prefix));
  if (prefix.empty()) return;
  Add(" AND ");
  Comparand(value, kAsciiOrder);
  Add(" < ");
  Parameter(engine::Value(Successor(prefix)));
}

void SqlWriter::Head(const dialect::Node& column, int length) {
  Add("rtrim(substr(");
  ColumnName(column);
  Add(", 1, ");
  Add(std::to_string(length));
  Add(")) COLLATE NOCASE");
}

void SqlWriter::Between(const dialect::Node& node) {
  const dialect::Node& value = *node.children[0];
  const dialect::Node& low = *node.children[1];
  const dialect::Node& high = *node.children[2];
  if (node.negated) Add("NOT (");
  if (IsDateValueOfColumn(value) && IsDay(low) && IsDay(high)) {
    DayBound(value, " >= ", low, false);
    Add(" AND ");
    DayBound(value, " < ", high, true);
  } else if (IsTextual(value) || IsTextual(low) || IsTextual(high)) {
    const std::string_view order = OrderForComparison(node.children.data(), 3);
    Comparand(value, order);
    Add(" BETWEEN ");
    Comparand(low, order);
    Add(" AND ");
    Comparand(high, order);
  } else {
    Operand(value);
    Add(" BETWEEN ");
    Operand(low);
    Add(" AND ");
    Operand(high);
  }
  if (node.negated) Add(")");
}

void SqlWriter::In(const dialect::Node& node) {
  const dialect::Node& value = *node.children[0];
  const auto isText = [](const dialect::Node* child) { return IsTextual(*child); };
  const bool textual = std::any_of(node.children.begin(), node.children.end(), isText) ||
                       (node.select != nullptr && IsTextual(*node.select->items[0].value));
  if (node.negated) Add("NOT (");
  if (textual) {
    Comparand(value, node.select != nullptr
                         ? SortOrder(value)
                         : OrderForComparison(node.children.data(), node.children.size()));
  } else {
    Operand(value);
  }
  Add(" IN (");
  const auto member = [&](const dialect::Node& child) {
    if (textual && child.kind == dialect::NodeKind::kText)
      return Parameter(engine::Value(base::RTrim(child.text)));
    if (textual) Add("rtrim(");
    Plain(child);
    if (textual) Add(")");
  };
  if (node.select != nullptr) {
    Add("SELECT ");
    member(*node.select->items[0].value);
    Rows(*node.select);
  }
  for (std::size_t i = 1; i < node.children.size(); ++i) {
    if (i > 1) Add(", ");
    member(*node.children[i]);
  }
  Add(node.negated ? "))" : ")");
}

}  // namespace brenvo::file
