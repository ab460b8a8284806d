#include "row_appender.h"

#include <utility>

#include "dialect/convert.h"

namespace brenvo::file {

TableAppender::TableAppender(std::shared_ptr<Connection> connection, std::string_view table)
    : connection_(std::move(connection)), table_(&connection_->RequireTable(table)) {
  std::string names, marks;
  for (const dialect::Column& column : table_->columns) {
    if (column.type == dialect::ColumnType::kCounter) continue;
    columns_.push_back(&column);
    names += (names.empty() ? "" : ", ") + column.quoted;
    marks += marks.empty() ? "?" : ", ?";
  }
  insert_ = Running(*connection_,
                    "INSERT INTO " + table_->quoted + " (" + names + ") VALUES (" + marks + ")");
}

std::int64_t TableAppender::Append(const std::vector<engine::Value>& row) {
  connection_->PrepareToWrite(*table_);
  const engine::Value null;
  std::vector<engine::Value> values;
  values.reserve(columns_.size());
  for (std::size_t i = 0; i < columns_.size(); ++i) {
    const engine::Value& value = i < row.size() ? row[i] : null;
    values.push_back(dialect::ToColumn(value, columns_[i]->type, columns_[i]->name));
  }
  insert_.Restart(std::move(values));
  connection_->StepWriter(insert_, table_);
  return connection_->LastKey();
}

}  // namespace brenvo::file
