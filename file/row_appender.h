// New rows of a table, through one statement that stays compiled.
#pragma once

#include <memory>
#include <string_view>
#include <vector>

#include "connection.h"
#include "engine/recordset.h"

namespace brenvo::file {

// Row by row: of a statement for several rows SQLite keeps a copy of each page that it changes, and
// of a log's twenty indexes each row changes twenty.
class TableAppender : public engine::RowAppender {
 public:
  TableAppender(std::shared_ptr<Connection> connection, std::string_view table);

  std::int64_t Append(const std::vector<engine::Value>& row) override;

 private:
  std::shared_ptr<Connection> connection_;
  const dialect::TableSchema* table_;
  std::vector<const dialect::Column*> columns_;  // those that are written
  Running insert_;
};

}  // namespace brenvo::file
