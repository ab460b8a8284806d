#include "engine/database.h"

#include <utility>

#include "engine/recordset_errors.h"

namespace brenvo::engine {

Database::Database(std::unique_ptr<Store> store) : store_(std::move(store)) {}

void Database::Close() { store_.reset(); }

Store& Database::Opened() const {
  if (store_ == nullptr) FailClosed();
  return *store_;
}

std::int64_t Database::Execute(std::string_view statement) { return Opened().Execute(statement); }

void Database::BeginTrans() { Opened().BeginTrans(); }
void Database::CommitTrans() { Opened().CommitTrans(); }
void Database::Rollback() { Opened().Rollback(); }
void Database::PutOffIndexes(std::string_view table) { Opened().PutOffIndexes(table); }
bool Database::InTransaction() const { return store_ != nullptr && store_->InTransaction(); }

std::unique_ptr<Table> Database::OpenTable(std::string_view name) {
  return Opened().OpenTable(name);
}

std::unique_ptr<Snapshot> Database::OpenSnapshot(std::string_view select) {
  return Opened().OpenSnapshot(select);
}

std::unique_ptr<Dynaset> Database::OpenDynaset(std::string_view select) {
  return Opened().OpenDynaset(select);
}

std::unique_ptr<RowAppender> Database::OpenAppender(std::string_view table) {
  return Opened().OpenAppender(table);
}

std::unique_ptr<Reader> Database::OpenReader() { return Opened().OpenReader(); }

void Database::WhenUnread(std::function<void()> tell) { Opened().WhenUnread(std::move(tell)); }

bool Database::ReadOn(std::int64_t rows) { return store_ != nullptr && store_->ReadOn(rows); }

void Database::Watch(std::function<bool()> goOn) { Opened().Watch(std::move(goOn)); }

void Database::RefuseWrites() { Opened().RefuseWrites(); }

std::int64_t Database::DataVersion() { return Opened().DataVersion(); }

EngineCounters Database::Counters() const { return Opened().Counters(); }

std::string Database::QueryPlan(std::string_view select) { return Opened().QueryPlan(select); }

}  // namespace brenvo::engine
