#include "engine/row_appender.h"

#include <algorithm>
#include <bit>
#include <iterator>
#include <utility>

#include "engine/convert.h"

namespace brenvo {

TableAppender::TableAppender(std::shared_ptr<Connection> connection, std::string_view table)
    : connection_(std::move(connection)), table_(&connection_->RequireTable(table)) {
  for (const Column& column : table_->columns) {
    if (column.type != ColumnType::kCounter) columns_.push_back(&column);
  }
}

void TableAppender::Add(const std::vector<Value>& row) {
  connection_->RequireOpen();
  const Value null;
  for (std::size_t i = 0; i < columns_.size(); ++i) {
    const Value& value = i < row.size() ? row[i] : null;
    waiting_.push_back(ToColumn(value, columns_[i]->type, columns_[i]->name));
  }
}

// One that fails leaves the rows before it, so that SQLite need not keep a copy of every page that
// it changes: the transaction is to be rolled back in any case.
std::string TableAppender::Statement(std::size_t rows) const {
  std::string names, marks;
  for (const Column* column : columns_) {
    names += (names.empty() ? "" : ", ") + column->quoted;
    marks += marks.empty() ? "(?" : ", ?";
  }
  std::string sql =
      "INSERT OR FAIL INTO " + table_->quoted + " (" + names + ") VALUES " + marks + ")";
  for (std::size_t i = 1; i < rows; ++i) sql.append(", ").append(marks).append(")");
  return sql;
}

std::int64_t TableAppender::Write() {
  connection_->RequireOpen();
  if (!connection_->InTransaction()) {
    throw DatabaseError(DatabaseError::kNoTransaction, "Nessuna transazione e' aperta.");
  }
  const std::size_t rows = Waiting();
  std::vector<Value> values = std::exchange(waiting_, {});
  // Powers of two, so that the last rows need few statements more.
  std::size_t left = rows;
  auto next = values.begin();
  while (left > 0) {
    const std::size_t some = std::min(std::bit_floor(left), kMostWaiting);
    const auto end = next + static_cast<std::ptrdiff_t>(some * columns_.size());
    connection_->Write(
        *table_, Statement(some),
        std::vector<Value>(std::make_move_iterator(next), std::make_move_iterator(end)));
    next = end;
    left -= some;
  }
  return connection_->LastKey() - static_cast<std::int64_t>(rows) + 1;
}

}  // namespace brenvo
