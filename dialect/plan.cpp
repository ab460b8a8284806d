#include "dialect/plan.h"

#include <algorithm>

#include "base/text.h"
#include "binder.h"
#include "engine/database_error.h"
#include "parser.h"

namespace brenvo::dialect {
namespace {

bool EndsWithKey(const SelectTree& select) {
  const TableSchema& table = *select.tables[0].table;
  return std::any_of(select.orderBy.begin(), select.orderBy.end(), [&](const OrderTerm& term) {
    return term.value->kind == NodeKind::kColumn && term.value->column == table.keyColumn;
  });
}

}  // namespace

bool IsOfOneTable(const SelectTree& select) {
  return select.tables.size() == 1 && !select.distinct && !IsGrouped(select);
}

bool FollowsEntry(const SelectTree& select) { return IsOfOneTable(select) && !EndsWithKey(select); }

StatementText::StatementText(std::string_view text) : text_(text) {
  if (base::IsAscii(text)) return;
  owned_ = base::ValidUtf8(text);
  text_ = owned_;
}

SelectPlan::SelectPlan(const Schema& schema, std::string_view select) : text_(select) {
  ParseStatement(text_, tree_);
  if (tree_.kind != StatementKind::kSelect) {
    throw engine::DatabaseError(engine::DatabaseError::kInvalidOperation,
                                "Operazione non valida: qui è ammessa solo una selezione.");
  }
  BindStatement(schema, tree_);
}

std::vector<OutputColumn> SelectPlan::Columns() const {
  std::vector<OutputColumn> columns;
  columns.reserve(Select().items.size());
  for (const SelectItem& item : Select().items) {
    OutputColumn column;
    column.type = item.value->type;
    if (item.value->kind == NodeKind::kColumn) {
      column.name = item.value->table->columns[item.value->column].name;
      column.tableColumn = item.value->column;
    } else {
      column.name = "Expr" + std::to_string(1000 + columns.size());
    }
    if (!item.alias.empty()) column.name = item.alias;
    columns.push_back(std::move(column));
  }
  return columns;
}

std::vector<const TableSchema*> SelectPlan::TablesRead() const {
  return {tree_.read.begin(), tree_.read.end()};
}

KeysetPlan::KeysetPlan(const Schema& schema, std::string_view select) : SelectPlan(schema, select) {
  if (!IsOfOneTable(Select())) {
    throw engine::DatabaseError(engine::DatabaseError::kInvalidOperation,
                                "Operazione non valida: la selezione non si può aggiornare.");
  }
}

FindPlan::FindPlan(const Schema& schema, std::string_view select, std::string_view condition)
    : KeysetPlan(schema, select), conditionText_(condition), found_(Select()) {
  ParseCondition(conditionText_, condition_);
  BindCondition(schema, Table(), condition_);
  found_.where = condition_.where;
  if (Select().where != nullptr) {
    found_.where = tree_.NewNode(NodeKind::kAnd);
    found_.where->children = {Select().where, condition_.where};
  }
}

ActionPlan::ActionPlan(const Schema& schema, std::string_view statement) : text_(statement) {
  ParseStatement(text_, tree_);
  if (tree_.kind == StatementKind::kSelect) {
    throw engine::DatabaseError(engine::DatabaseError::kExecuteOfSelect,
                                "Una selezione non si può eseguire.");
  }
  BindStatement(schema, tree_);
  table_ = schema.FindTable(tree_.table);
}

}  // namespace brenvo::dialect
