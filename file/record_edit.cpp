#include "record_edit.h"

#include "dialect/convert.h"
#include "engine/recordset_errors.h"

namespace brenvo::file {

void RecordEdit::BeginNew() {
  Cancel();
  mode_ = Mode::kNew;
  values_.assign(table_.columns.size(), engine::Value());
  touched_.assign(table_.columns.size(), false);
  for (std::size_t i = 0; i < values_.size(); ++i) {
    values_[i] = dialect::ToColumn(engine::Value(), table_.columns[i].type, table_.columns[i].name);
  }
}

void RecordEdit::BeginChange(std::int64_t key) {
  Cancel();
  mode_ = Mode::kChange;
  key_ = key;
  values_.assign(table_.columns.size(), engine::Value());
  touched_.assign(table_.columns.size(), false);
}

void RecordEdit::Cancel() { mode_ = Mode::kNone; }

void RecordEdit::Set(std::size_t column, const engine::Value& value) {
  if (mode_ == Mode::kNone) {
    throw engine::DatabaseError(engine::DatabaseError::kUpdateWithoutEdit,
                                "Aggiornamento senza nuovo record e senza modifica.");
  }
  const dialect::Column& target = table_.columns[column];
  if (target.type == dialect::ColumnType::kCounter) {
    throw engine::DatabaseError(engine::DatabaseError::kInvalidOperation,
                                "Il contatore '" + target.name + "' non si può scrivere.");
  }
  values_[column] = dialect::ToColumn(value, target.type, target.name);
  touched_[column] = true;
}

bool RecordEdit::Has(std::size_t column) const {
  return mode_ == Mode::kNew || (mode_ == Mode::kChange && touched_[column]);
}

engine::Value RecordEdit::Get(std::size_t column) const {
  return FromRaw(values_[column], dialect::TypeOfColumn(table_.columns[column].type));
}

std::int64_t RecordEdit::Write(Connection& connection) {
  const Mode mode = mode_;
  mode_ = Mode::kNone;
  switch (mode) {
    case Mode::kNone:
      break;
    case Mode::kNew:
      return Insert(connection);
    case Mode::kChange:
      Change(connection);
      return key_;
  }
  throw engine::DatabaseError(engine::DatabaseError::kUpdateWithoutEdit,
                              "Aggiornamento senza nuovo record e senza modifica.");
}

std::int64_t RecordEdit::Insert(Connection& connection) {
  std::vector<engine::Value> parameters;
  parameters.reserve(values_.size());
  for (std::size_t i = 0; i < values_.size(); ++i) {
    if (table_.columns[i].type == dialect::ColumnType::kCounter) continue;
    parameters.push_back(std::move(values_[i]));
  }
  if (insert_.empty()) insert_ = InsertStatement();
  connection.Write(table_, insert_, std::move(parameters));
  return connection.LastKey();
}

std::string RecordEdit::InsertStatement() const {
  std::string names;
  std::string marks;
  for (const dialect::Column& column : table_.columns) {
    if (column.type == dialect::ColumnType::kCounter) continue;
    names += (names.empty() ? "" : ", ") + column.quoted;
    marks += marks.empty() ? "?" : ", ?";
  }
  return "INSERT INTO " + table_.quoted + " (" + names + ") VALUES (" + marks + ")";
}

void RecordEdit::Change(Connection& connection) {
  std::string sql = "UPDATE " + table_.quoted + " SET ";
  std::vector<engine::Value> parameters;
  for (std::size_t i = 0; i < values_.size(); ++i) {
    if (!touched_[i]) continue;
    if (!parameters.empty()) sql += ", ";
    sql += table_.columns[i].quoted + " = ?";
    parameters.push_back(std::move(values_[i]));
  }
  if (parameters.empty()) return;
  parameters.emplace_back(key_);
  if (connection.Write(table_, sql + " WHERE rowid = ?", std::move(parameters)) == 0) {
    engine::FailRecordDeleted();
  }
}

void DeleteRow(Connection& connection, const dialect::TableSchema& table, std::int64_t key) {
  const std::string sql = "DELETE FROM " + table.quoted + " WHERE rowid = ?";
  if (connection.Write(table, sql, {engine::Value(key)}) == 0) engine::FailRecordDeleted();
}

}  // namespace brenvo::file
