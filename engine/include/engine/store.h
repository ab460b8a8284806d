// What stands behind a Database: the rows of a file, or of whatever else can keep them.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "engine/reader.h"
#include "engine/recordset.h"

namespace brenvo::engine {

// What tests and benchmarks count.
struct EngineCounters {
  std::int64_t statements = 0;   // statements run
  std::int64_t prepared = 0;     // of these, compiled anew
  std::int64_t rowsStepped = 0;  // rows that the store handed out
};

// Each routine keeps what Database promises under the same name. Destroying a store closes it: an
// open transaction is rolled back, and recordsets still open on it, which may live on, answer
// DatabaseError 3420 from then on.
class Store {
 public:
  Store() = default;
  Store(const Store&) = delete;
  Store& operator=(const Store&) = delete;
  virtual ~Store() = default;

  virtual std::int64_t Execute(std::string_view statement) = 0;

  virtual void BeginTrans() = 0;
  virtual void CommitTrans() = 0;
  virtual void Rollback() = 0;
  virtual void PutOffIndexes(std::string_view table) = 0;
  virtual bool InTransaction() const = 0;

  virtual std::unique_ptr<Table> OpenTable(std::string_view name) = 0;
  virtual std::unique_ptr<Snapshot> OpenSnapshot(std::string_view select) = 0;
  virtual std::unique_ptr<Dynaset> OpenDynaset(std::string_view select) = 0;
  virtual std::unique_ptr<RowAppender> OpenAppender(std::string_view table) = 0;
  virtual std::unique_ptr<Reader> OpenReader() = 0;

  virtual void WhenUnread(std::function<void()> tell) = 0;
  virtual bool ReadOn(std::int64_t rows) = 0;
  virtual void Watch(std::function<bool()> goOn) = 0;
  virtual void RefuseWrites() = 0;
  virtual std::int64_t DataVersion() = 0;

  virtual EngineCounters Counters() const = 0;
  virtual std::string QueryPlan(std::string_view select) = 0;
};

}  // namespace brenvo::engine
