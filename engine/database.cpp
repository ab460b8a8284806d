#include "engine/database.h"

#include "engine/connection.h"
#include "engine/dynaset.h"
#include "engine/row_appender.h"
#include "engine/snapshot.h"
#include "engine/table.h"

namespace brenvo {
namespace {

Connection& Opened(const std::shared_ptr<Connection>& connection) {
  if (connection == nullptr) Connection().RequireOpen();
  return *connection;
}

}  // namespace

Database::Database(std::shared_ptr<Connection> connection) : connection_(std::move(connection)) {}

Database Database::Open(const std::filesystem::path& file) {
  return Database(std::make_shared<Connection>(file));
}

Database& Database::operator=(Database&& other) noexcept {
  if (this == &other) return *this;
  Close();
  connection_ = std::move(other.connection_);
  return *this;
}

Database::~Database() { Close(); }

void Database::Close() {
  // Recordsets keep the connection's object, but not the file.
  if (connection_ != nullptr) connection_->Close();
  connection_.reset();
}

std::int64_t Database::Execute(std::string_view statement) {
  Connection& connection = Opened(connection_);
  Action action = TranslateAction(connection.Tables(), statement);
  return connection.Write(*action.table, action.sql.text, std::move(action.sql.parameters));
}

void Database::BeginTrans() { Opened(connection_).Begin(); }
void Database::CommitTrans() { Opened(connection_).Commit(); }
void Database::Rollback() { Opened(connection_).Rollback(); }

bool Database::InTransaction() const {
  return connection_ != nullptr && connection_->InTransaction();
}

std::unique_ptr<Table> Database::OpenTable(std::string_view name) {
  Opened(connection_);
  return std::make_unique<TableRows>(connection_, name);
}

std::unique_ptr<Snapshot> Database::OpenSnapshot(std::string_view select) {
  Opened(connection_);
  return std::make_unique<SnapshotRows>(connection_, select);
}

std::unique_ptr<Dynaset> Database::OpenDynaset(std::string_view select) {
  Opened(connection_);
  return std::make_unique<DynasetRows>(connection_, select);
}

std::unique_ptr<RowAppender> Database::OpenAppender(std::string_view table) {
  Opened(connection_);
  return std::make_unique<TableAppender>(connection_, table);
}

void Database::Watch(std::function<bool()> goOn) { Opened(connection_).Watch(std::move(goOn)); }

void Database::RefuseWrites() { Opened(connection_).RefuseWrites(); }

EngineCounters Database::Counters() const { return Opened(connection_).Counters(); }

std::string Database::QueryPlan(std::string_view select) {
  Connection& connection = Opened(connection_);
  const Query query = TranslateQuery(connection.Tables(), select);
  Running run(connection, "EXPLAIN QUERY PLAN " + query.sql.text, query.sql.parameters);
  std::string plan;
  while (run.Step()) plan += run.Cell(3, ValueType::kText).Text() + "\n";
  return plan;
}

}  // namespace brenvo
