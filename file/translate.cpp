#include "translate.h"

#include "dialect/plan.h"
#include "sql_writer.h"

namespace brenvo::file {
namespace {

// Rows of one table follow each other as they were entered where nothing else is asked for.
void OrderOfRows(const dialect::SelectTree& select, SqlWriter& writer) {
  writer.OrderBy(select);
  if (!dialect::FollowsEntry(select)) return;
  writer.sql += select.orderBy.empty() ? kOrderOfEntry : std::string_view(", rowid");
}

// The same rows from the last one to the first.
void OrderBackwards(const dialect::SelectTree& select, SqlWriter& writer) {
  dialect::SelectTree turned = select;
  for (auto& each : turned.orderBy) each.descending = !each.descending;
  OrderOfRows(turned, writer);
  if (dialect::FollowsEntry(turned)) writer.sql += " DESC";
}

Sql Finished(SqlWriter&& writer) { return {std::move(writer.sql), std::move(writer.parameters)}; }

void WriteInsert(const dialect::TableSchema& table, const dialect::StatementTree& tree,
                 SqlWriter& writer) {
  // Columns that cannot be Null are yes/no columns, which take a "no" for it: what is left to be
  // ignored is the repeated key.
  writer.sql = "INSERT OR IGNORE INTO " + table.quoted + " (";
  std::vector<const dialect::Column*> columns;
  for (const std::string_view name : tree.columns) {
    columns.push_back(&table.columns[table.FindColumn(name)]);
    if (columns.size() > 1) writer.sql += ", ";
    writer.sql += columns.back()->quoted;
  }
  writer.sql += tree.select != nullptr ? ") SELECT " : ") VALUES (";
  for (std::size_t i = 0; i < columns.size(); ++i) {
    if (i > 0) writer.sql += ", ";
    writer.Stored(tree.select != nullptr ? *tree.select->items[i].value : *tree.values[i],
                  *columns[i]);
  }
  if (tree.select == nullptr) {
    writer.sql += ")";
    return;
  }
  writer.Rows(*tree.select);
  OrderOfRows(*tree.select, writer);
}

}  // namespace

Action TranslateAction(const dialect::Schema& schema, std::string_view statement) {
  const dialect::ActionPlan plan(schema, statement);
  const dialect::StatementTree& tree = plan.Statement();
  const dialect::TableSchema& table = plan.Table();
  SqlWriter writer;
  switch (tree.kind) {
    case dialect::StatementKind::kInsert:
      WriteInsert(table, tree, writer);
      break;
    case dialect::StatementKind::kUpdate:
      writer.sql = "UPDATE " + table.quoted + " SET ";
      for (const dialect::Assignment& assignment : tree.assignments) {
        if (&assignment != &tree.assignments.front()) writer.sql += ", ";
        const dialect::Column& column = table.columns[table.FindColumn(assignment.column)];
        writer.sql += column.quoted + " = ";
        writer.Stored(*assignment.value, column);
      }
      break;
    default:
      writer.sql = "DELETE FROM " + table.quoted;
      break;
  }
  if (tree.where != nullptr) {
    writer.sql += " WHERE ";
    writer.Condition(*tree.where);
  }
  return {Finished(std::move(writer)), &table};
}

Query TranslateQuery(const dialect::Schema& schema, std::string_view statement) {
  const dialect::SelectPlan plan(schema, statement);
  const dialect::SelectTree& select = plan.Select();
  Query query;
  query.columns = plan.Columns();
  query.tables = plan.TablesRead();
  SqlWriter writer;
  writer.sql.reserve(512);
  writer.parameters.reserve(8);
  writer.Select(select);
  if (dialect::FollowsEntry(select)) {
    if (!select.orderBy.empty()) {
      writer.sql += ", rowid";
    } else if (select.where == nullptr) {
      writer.sql += kOrderOfEntry;
    } else {
      query.orderLeftOut = true;
    }
  }
  query.sql = Finished(std::move(writer));
  return query;
}

Keyset TranslateKeyset(const dialect::Schema& schema, std::string_view statement) {
  const dialect::KeysetPlan plan(schema, statement);
  const dialect::SelectTree& select = plan.Select();
  Keyset keyset;
  keyset.table = &plan.Table();
  keyset.columns = plan.Columns();
  keyset.tables = plan.TablesRead();
  SqlWriter keys;
  keys.sql = "SELECT rowid";
  keys.Rows(select);
  OrderOfRows(select, keys);
  keyset.keys = Finished(std::move(keys));
  if (select.where == nullptr) {
    SqlWriter backwards, count;
    backwards.sql = "SELECT rowid";
    backwards.Rows(select);
    OrderBackwards(select, backwards);
    keyset.backwards = Finished(std::move(backwards));
    count.sql = "SELECT count(*)";
    count.Rows(select);
    keyset.count = Finished(std::move(count));
  }
  SqlWriter row;
  dialect::SelectTree one = select;
  one.where = nullptr;
  one.orderBy.clear();
  row.Select(one);
  row.sql += " WHERE rowid = ?";
  keyset.row = Finished(std::move(row));
  return keyset;
}

Sql TranslateFind(const dialect::Schema& schema, std::string_view statement,
                  std::string_view condition, bool firstInOrder) {
  const dialect::FindPlan plan(schema, statement, condition);
  SqlWriter writer;
  writer.sql = "SELECT rowid";
  writer.Rows(plan.Found());
  if (firstInOrder) {
    OrderOfRows(plan.Found(), writer);
    writer.sql += " LIMIT 1";
  }
  return Finished(std::move(writer));
}

}  // namespace brenvo::file
