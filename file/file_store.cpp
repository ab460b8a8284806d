#include "file_store.h"

#include <utility>

#include "connection.h"
#include "dynaset.h"
#include "file_reader.h"
#include "row_appender.h"
#include "snapshot.h"
#include "table.h"
#include "translate.h"

namespace brenvo::file {

FileStore::FileStore(const std::filesystem::path& file)
    : file_(file), connection_(std::make_shared<Connection>(file)) {}

FileStore::~FileStore() { connection_->Close(); }

std::int64_t FileStore::Execute(std::string_view statement) {
  Action action = TranslateAction(connection_->Tables(), statement);
  return connection_->Write(*action.table, action.sql.text, std::move(action.sql.parameters));
}

void FileStore::BeginTrans() { connection_->Begin(); }
void FileStore::CommitTrans() { connection_->Commit(); }
void FileStore::Rollback() { connection_->Rollback(); }
void FileStore::PutOffIndexes(std::string_view table) {
  connection_->PutOffIndexes(connection_->RequireTable(table));
}
bool FileStore::InTransaction() const { return connection_->InTransaction(); }

std::unique_ptr<engine::Table> FileStore::OpenTable(std::string_view name) {
  return std::make_unique<TableRows>(connection_, name);
}

std::unique_ptr<engine::Snapshot> FileStore::OpenSnapshot(std::string_view select) {
  return std::make_unique<SnapshotRows>(connection_, select);
}

std::unique_ptr<engine::Dynaset> FileStore::OpenDynaset(std::string_view select) {
  return std::make_unique<DynasetRows>(connection_, select);
}

std::unique_ptr<engine::RowAppender> FileStore::OpenAppender(std::string_view table) {
  return std::make_unique<TableAppender>(connection_, table);
}

std::unique_ptr<engine::Reader> FileStore::OpenReader() {
  connection_->RequireOpen();
  return std::make_unique<FileReader>(file_, connection_->Tables());
}

void FileStore::WhenUnread(std::function<void()> tell) { connection_->WhenUnread(std::move(tell)); }

bool FileStore::ReadOn(std::int64_t rows) { return connection_->ReadOn(rows); }

void FileStore::Watch(std::function<bool()> goOn) { connection_->Watch(std::move(goOn)); }
void FileStore::RefuseWrites() { connection_->RefuseWrites(); }
std::int64_t FileStore::DataVersion() { return connection_->DataVersion(); }

engine::EngineCounters FileStore::Counters() const { return connection_->Counters(); }

std::string FileStore::QueryPlan(std::string_view select) {
  const Query query = TranslateQuery(connection_->Tables(), select);
  Running run(*connection_, "EXPLAIN QUERY PLAN " + query.sql.text, query.sql.parameters);
  std::string plan;
  while (run.Step()) plan += run.Cell(3, dialect::ValueType::kText).Text() + "\n";
  return plan;
}

}  // namespace brenvo::file
