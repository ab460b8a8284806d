// A statement's tree as text, so that a table of cases can say what each statement means.
#pragma once

#include <fmt/format.h>

#include <string>

#include "base/date.h"
#include "dialect/functions.h"
#include "dialect/tree.h"

namespace brenvo::dialect {

std::string Written(const SelectTree& select);

// "(kind child child)" and behind it the type: t text, i whole, r real, d date, y yes/no, ? open.
inline std::string Written(const Node& node) {
  static constexpr const char* kKinds[] = {
      "text", "integer", "real", "boolean", "null", "date", "column", "call", "neg",  "not",
      "or",   "and",     "=",    "<>",      "<",    "<=",   ">",      ">=",   "like", "between",
      "in",   "in",      "null", "+",       "-",    "*",    "/",      "&",    "sub",  "exists"};
  const char type = "?tirdy"[static_cast<int>(node.type)];
  switch (node.kind) {
    case NodeKind::kText:
      return fmt::format("'{}'{}", node.text, type);
    case NodeKind::kInteger:
      return fmt::format("{}{}", node.integer, type);
    case NodeKind::kReal:
      return fmt::format("{}{}", node.real, type);
    case NodeKind::kBoolean:
      return fmt::format("{}{}", node.integer != 0 ? "yes" : "no", type);
    case NodeKind::kNull:
      return fmt::format("null{}", type);
    case NodeKind::kDate:
      return fmt::format("#{}#{}", base::IsoText(node.date), type);
    case NodeKind::kColumn:
      return fmt::format("{}{}{}:{}", node.qualifier, node.qualifier.empty() ? "" : ".",
                         node.table->columns[node.column].name, type);
    default:
      break;
  }
  std::string text = node.kind == NodeKind::kCall ? std::string(node.function->name)
                                                  : kKinds[static_cast<int>(node.kind)];
  text = (node.negated ? "(not " : "(") + text + (node.star ? " *" : "");
  for (const Node* child : node.children) text += " " + Written(*child);
  if (node.select != nullptr) text += " " + Written(*node.select);
  return text + ")" + type;
}

inline std::string Written(const SelectTree& select) {
  std::string text = select.distinct ? "select distinct" : "select";
  for (const SelectItem& item : select.items) {
    text += " " + Written(*item.value);
    if (!item.alias.empty()) text += fmt::format(" as {}", item.alias);
  }
  for (const TableReference& each : select.tables) {
    text += fmt::format("{}{}{}{}", &each == &select.tables.front() ? " from " : ", ",
                        each.table->name, each.alias.empty() ? "" : " as ", each.alias);
  }
  if (select.where != nullptr) text += " where " + Written(*select.where);
  for (const Node* each : select.groupBy) text += " group " + Written(*each);
  if (select.having != nullptr) text += " having " + Written(*select.having);
  for (const OrderTerm& each : select.orderBy) {
    text += fmt::format(" {} {}", each.descending ? "falling" : "rising", Written(*each.value));
  }
  return text;
}

inline std::string Written(const StatementTree& tree) {
  if (tree.kind == StatementKind::kSelect) return Written(*tree.select);
  std::string text = tree.kind == StatementKind::kInsert   ? "insert "
                     : tree.kind == StatementKind::kUpdate ? "update "
                                                           : "delete ";
  text += tree.table;
  for (const std::string_view column : tree.columns) text += fmt::format(" [{}]", column);
  if (tree.select != nullptr) text += " " + Written(*tree.select);
  for (const Node* value : tree.values) text += " " + Written(*value);
  for (const Assignment& each : tree.assignments) {
    text += fmt::format(" {}:={}", each.column, Written(*each.value));
  }
  if (tree.where != nullptr) text += " where " + Written(*tree.where);
  return text;
}

}  // namespace brenvo::dialect
