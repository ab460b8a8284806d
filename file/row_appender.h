// New rows of a table, through one statement that stays compiled.
#pragma once

#include <memory>
#include <string_view>
#include <vector>

#include "engine/recordset.h"
#include "connection.h"

namespace brenvo {

// Row by row: of a statement for several rows SQLite keeps a copy of each page that it changes, and
// of a log's twenty indexes each row changes twenty.
class TableAppender : public RowAppender {
 public:
  TableAppender(std::shared_ptr<Connection> connection, std::string_view table);

  std::int64_t Append(const std::vector<Value>& row) override;

 private:
  std::shared_ptr<Connection> connection_;
  const TableSchema* table_;
  std::vector<const Column*> columns_;  // those that are written
  Running insert_;
};

}  // namespace brenvo
