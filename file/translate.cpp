#include "file/translate.h"

#include <algorithm>

#include "base/text.h"
#include "dialect/binder.h"
#include "dialect/parser.h"
#include "engine/database_error.h"
#include "file/sql_writer.h"

namespace brenvo {
namespace {

// A statement as valid UTF-8, whatever bytes it was pasted from.
class CleanText {
 public:
  explicit CleanText(std::string_view text) : text_(text) {
    if (IsAscii(text)) return;
    owned_ = ValidUtf8(text);
    text_ = owned_;
  }
  CleanText(const CleanText&) = delete;
  CleanText& operator=(const CleanText&) = delete;
  operator std::string_view() const { return text_; }

 private:
  std::string owned_;
  std::string_view text_;
};

void ParseSelect(const Schema& schema, std::string_view statement, StatementTree& tree) {
  ParseStatement(statement, tree);
  if (tree.kind != StatementKind::kSelect) {
    throw DatabaseError(DatabaseError::kInvalidOperation,
                        "Operazione non valida: qui e' ammessa solo una selezione.");
  }
  BindStatement(schema, tree);
}

std::vector<OutputColumn> Columns(const SelectTree& select) {
  std::vector<OutputColumn> columns;
  columns.reserve(select.items.size());
  for (const SelectItem& item : select.items) {
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

bool EndsWithKey(const SelectTree& select) {
  const TableSchema& table = *select.tables[0].table;
  return std::any_of(select.orderBy.begin(), select.orderBy.end(), [&](const OrderTerm& term) {
    return term.value->kind == NodeKind::kColumn && term.value->column == table.rowidColumn;
  });
}

// Whether each row of the result is a row of one table: it has an order of entry then.
bool IsOfOneTable(const SelectTree& select) {
  return select.tables.size() == 1 && !select.distinct && !IsGrouped(select);
}

// Rows of one table follow each other as they were entered where nothing else is asked for.
void OrderOfRows(const SelectTree& select, SqlWriter& writer) {
  writer.OrderBy(select);
  if (EndsWithKey(select)) return;
  writer.sql += select.orderBy.empty() ? kOrderOfEntry : std::string_view(", rowid");
}

SelectTree& KeysetSelect(const Schema& schema, std::string_view statement, StatementTree& tree) {
  ParseSelect(schema, statement, tree);
  SelectTree& select = *tree.select;
  if (!IsOfOneTable(select)) {
    throw DatabaseError(DatabaseError::kInvalidOperation,
                        "Operazione non valida: la selezione non si puo' aggiornare.");
  }
  return select;
}

Sql Finished(SqlWriter&& writer) { return {std::move(writer.sql), std::move(writer.parameters)}; }

void WriteInsert(const TableSchema& table, const StatementTree& tree, SqlWriter& writer) {
  // Columns that cannot be Null are yes/no columns, which take a "no" for it: what is left to be
  // ignored is the repeated key.
  writer.sql = "INSERT OR IGNORE INTO " + table.quoted + " (";
  std::vector<const Column*> columns;
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
  if (IsOfOneTable(*tree.select)) {
    OrderOfRows(*tree.select, writer);
  } else {
    writer.OrderBy(*tree.select);
  }
}

}  // namespace

Action TranslateAction(const Schema& schema, std::string_view statement) {
  const CleanText text(statement);
  StatementTree tree;
  ParseStatement(text, tree);
  if (tree.kind == StatementKind::kSelect) {
    throw DatabaseError(DatabaseError::kExecuteOfSelect, "Una selezione non si puo' eseguire.");
  }
  BindStatement(schema, tree);
  const TableSchema& table = *schema.FindTable(tree.table);
  SqlWriter writer;
  switch (tree.kind) {
    case StatementKind::kInsert:
      WriteInsert(table, tree, writer);
      break;
    case StatementKind::kUpdate:
      writer.sql = "UPDATE " + table.quoted + " SET ";
      for (const Assignment& assignment : tree.assignments) {
        if (&assignment != &tree.assignments.front()) writer.sql += ", ";
        const Column& column = table.columns[table.FindColumn(assignment.column)];
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

Query TranslateQuery(const Schema& schema, std::string_view statement) {
  const CleanText text(statement);
  StatementTree tree;
  ParseSelect(schema, text, tree);
  const SelectTree& select = *tree.select;
  Query query;
  query.columns = Columns(select);
  query.tables.assign(tree.read.begin(), tree.read.end());
  SqlWriter writer;
  writer.sql.reserve(512);
  writer.parameters.reserve(8);
  writer.Select(select);
  if (IsOfOneTable(select)) {
    if (!select.orderBy.empty()) {
      if (!EndsWithKey(select)) writer.sql += ", rowid";
    } else if (select.where == nullptr) {
      writer.sql += kOrderOfEntry;
    } else {
      query.orderLeftOut = true;
    }
  }
  query.sql = Finished(std::move(writer));
  return query;
}

Keyset TranslateKeyset(const Schema& schema, std::string_view statement) {
  const CleanText text(statement);
  StatementTree tree;
  const SelectTree& select = KeysetSelect(schema, text, tree);
  Keyset keyset;
  keyset.table = select.tables[0].table;
  keyset.columns = Columns(select);
  keyset.tables.assign(tree.read.begin(), tree.read.end());
  SqlWriter keys;
  keys.sql = "SELECT rowid";
  keys.Rows(select);
  OrderOfRows(select, keys);
  keyset.keys = Finished(std::move(keys));
  SqlWriter row;
  SelectTree one = select;
  one.where = nullptr;
  one.orderBy.clear();
  row.Select(one);
  row.sql += " WHERE rowid = ?";
  keyset.row = Finished(std::move(row));
  return keyset;
}

Sql TranslateFind(const Schema& schema, std::string_view statement, std::string_view condition,
                  bool inOrder) {
  const CleanText text(statement);
  StatementTree tree;
  const SelectTree& select = KeysetSelect(schema, text, tree);
  const CleanText conditionText(condition);
  StatementTree found;
  ParseCondition(conditionText, found);
  BindCondition(schema, *select.tables[0].table, found);
  SelectTree both = select;
  both.where = found.where;
  if (select.where != nullptr) {
    both.where = tree.NewNode(NodeKind::kAnd);
    both.where->children = {select.where, found.where};
  }
  SqlWriter writer;
  writer.sql = "SELECT rowid";
  writer.Rows(both);
  if (inOrder) {
    OrderOfRows(select, writer);
    writer.sql += " LIMIT 1";
  }
  return Finished(std::move(writer));
}

}  // namespace brenvo
