// Many new rows of a table in one statement.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "engine/connection.h"
#include "engine/recordset.h"

namespace brenvo {

class TableAppender : public RowAppender {
 public:
  TableAppender(std::shared_ptr<Connection> connection, std::string_view table);

  void Add(const std::vector<Value>& row) override;
  std::size_t Waiting() const override { return waiting_.size() / columns_.size(); }
  std::int64_t Write() override;

 private:
  std::string Statement(std::size_t rows) const;

  std::shared_ptr<Connection> connection_;
  const TableSchema* table_;
  std::vector<const Column*> columns_;  // those that are written
  std::vector<Value> waiting_;          // row after row
};

}  // namespace brenvo
