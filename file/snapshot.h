// A read-only result, read as it is moved through.
#pragma once

#include <memory>

#include "connection.h"
#include "row_store.h"
#include "translate.h"

namespace brenvo::file {

class SnapshotRows final : public engine::Snapshot, private LazyReader {
 public:
  SnapshotRows(std::shared_ptr<Connection> connection, std::string_view select);
  ~SnapshotRows() override;

  void MoveFirst() override;
  void MoveLast() override;
  void MoveNext() override;
  void MovePrevious() override;
  bool BOF() override;
  bool EOF_() override;
  std::int64_t RecordCount() override;
  const std::vector<std::string>& Columns() const override;
  using engine::Snapshot::Field;
  engine::Value Field(std::string_view column) override;
  engine::Value Field(std::size_t column) override;
  engine::Bookmark GetBookmark() override;
  void SetBookmark(engine::Bookmark bookmark) override;
  void Close() override;

 private:
  void ReadRest() override;
  bool ReadOn(std::int64_t) override { return false; }
  const std::vector<const dialect::TableSchema*>& TablesRead() const override {
    return query_.tables;
  }

  void RequireOpen() const;
  void RequireRecord() const;
  // Reads one row more; false at the end, where the statement is given back.
  bool ReadOne();
  // From here on the rows must be in their order.
  void SettleOrder();
  void Reach(std::int64_t place);

  std::shared_ptr<Connection> connection_;
  Query query_;
  mutable std::vector<std::string> names_;  // made when they are asked for
  Running run_;
  RowStore rows_;
  bool orderOpen_ = false;  // the row read so far may not be the first one
  bool complete_ = false;
  std::optional<engine::DatabaseError> failure_;  // what stands behind the rows that could be read
  std::int64_t at_ = 0;  // -1 before the first; the number of rows behind the last
  std::int64_t reached_ = 0;
};

}  // namespace brenvo::file
