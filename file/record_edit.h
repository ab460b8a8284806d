// A record while it is being written.
#pragma once

#include <cstdint>
#include <vector>

#include "connection.h"
#include "dialect/schema.h"
#include "engine/value.h"

namespace brenvo::file {

class RecordEdit {
 public:
  explicit RecordEdit(const dialect::TableSchema& table) : table_(table) {}

  bool IsNew() const { return mode_ == Mode::kNew; }
  void BeginNew();
  void BeginChange(std::int64_t key);
  void Cancel();

  // DatabaseError 3020 outside AddNew and Edit, 3421 when the column cannot hold the value, 3219
  // for the counter.
  void Set(std::size_t column, const engine::Value& value);
  // Whether the record holds a value of its own for the column: always, when it is new.
  bool Has(std::size_t column) const;
  engine::Value Get(std::size_t column) const;

  // Writes the record, which is then over whatever happens, and returns its key.
  std::int64_t Write(Connection& connection);

 private:
  enum class Mode { kNone, kNew, kChange };

  std::int64_t Insert(Connection& connection);
  std::string InsertStatement() const;
  void Change(Connection& connection);

  const dialect::TableSchema& table_;
  Mode mode_ = Mode::kNone;
  std::int64_t key_ = 0;
  std::vector<engine::Value> values_;  // as stored
  std::vector<bool> touched_;
  std::string insert_;  // the statement, made when it is needed
};

// DatabaseError 3167 when the row is gone; what it reports else is that of Connection::Write.
void DeleteRow(Connection& connection, const dialect::TableSchema& table, std::int64_t key);

}  // namespace brenvo::file
