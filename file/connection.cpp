#include "connection.h"

#include <algorithm>
#include <limits>

#include "cells.h"
#include "engine/recordset_errors.h"
#include "file/file_check.h"
#include "file/journal.h"
#include "read_schema.h"
#include "sqlite_functions.h"

namespace brenvo::file {
namespace {

constexpr int kVersion = 1;
constexpr std::size_t kKeptStatements = 128;
constexpr int kCacheKibibytes = 32 * 1024;
constexpr int kFramesBetweenWritingBack = 1000;  // four megabytes

// The second guard behind the parser, which writes nothing else either: rows are read and written,
// and nothing is done to the file itself.
int Authorize(void*, int action, const char* first, const char* second, const char*, const char*) {
  switch (action) {
    case SQLITE_SELECT:
    case SQLITE_RECURSIVE:
    case SQLITE_READ:
    case SQLITE_TRANSACTION:
      return SQLITE_OK;
    case SQLITE_INSERT:
    case SQLITE_UPDATE:
    case SQLITE_DELETE:
      return sqlite3_strnicmp(first, "sqlite_", 7) == 0 ? SQLITE_DENY : SQLITE_OK;
    case SQLITE_FUNCTION:
      return sqlite3_stricmp(second, "load_extension") == 0 ? SQLITE_DENY : SQLITE_OK;
    case SQLITE_PRAGMA:
      return sqlite3_stricmp(first, "data_version") == 0 && second == nullptr ? SQLITE_OK
                                                                              : SQLITE_DENY;
    default:
      return SQLITE_DENY;
  }
}

int ReadPragma(sqlite3* file, const char* sql) {
  sqlite3_stmt* statement = nullptr;
  int code = sqlite3_prepare_v2(file, sql, -1, &statement, nullptr);
  int result = 0;
  if (code == SQLITE_OK) {
    code = sqlite3_step(statement);
    if (code == SQLITE_ROW) result = sqlite3_column_int(statement, 0);
  }
  sqlite3_finalize(statement);
  if (code != SQLITE_ROW) throw LastFailureOf(file);
  return result;
}

}  // namespace

Connection::Connection(const std::filesystem::path& file) {
  RequireOurFile(file);
  RequireSoundJournal(file);
  file_ = OpenSqliteFile(file);
  Setup();
}

Connection::Connection(const std::filesystem::path& file, ToRead as)
    : file_(OpenSqliteFile(file)), schema_(as.tables) {
  // Each row is read once: what has been read need not be kept.
  constexpr int kPages = 100;
  RunSql(file_.get(), "PRAGMA cell_size_check = ON; PRAGMA query_only = ON");
  RunSql(file_.get(), ("PRAGMA cache_size = " + std::to_string(kPages)).c_str());
  // The first look at the file says which state of it is seen from then on.
  RunSql(file_.get(), "BEGIN");
  ReadPragma(file_.get(), "PRAGMA schema_version");
  RaiseGuards();
  RefuseWrites();
}

void Connection::Setup() {
  sqlite3* const file = file_.get();
  if (ReadPragma(file, "PRAGMA user_version") != kVersion) {
    throw engine::DatabaseError(engine::DatabaseError::kNotADatabase,
                                "Il database è di un'altra versione del programma.");
  }
  if (sqlite3_db_readonly(file, "main") == 1) throw FailureOf(SQLITE_READONLY, nullptr);
  schema_ = ReadSchema(file);

  // Damage is found where it is read, not where it would lead.
  RunSql(file, "PRAGMA cell_size_check = ON");
  // A write is safe on disk when it returns, and readers do not wait for it.
  RunSql(file, "PRAGMA journal_mode = WAL");
  RunSql(file, "PRAGMA synchronous = FULL");
  RunSql(file, ("PRAGMA cache_size = -" + std::to_string(kCacheKibibytes)).c_str());

  RaiseGuards();
  sqlite3_wal_hook(file, WriteBack, this);
}

void Connection::RaiseGuards() {
  sqlite3* const file = file_.get();
  // What a damaged or foreign file could hold against us is not run.
  sqlite3_db_config(file, SQLITE_DBCONFIG_ENABLE_LOAD_EXTENSION, 0, nullptr);
  sqlite3_db_config(file, SQLITE_DBCONFIG_ENABLE_TRIGGER, 0, nullptr);
  sqlite3_db_config(file, SQLITE_DBCONFIG_ENABLE_VIEW, 0, nullptr);
  sqlite3_db_config(file, SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0, nullptr);
  sqlite3_db_config(file, SQLITE_DBCONFIG_DQS_DML, 0, nullptr);
  sqlite3_db_config(file, SQLITE_DBCONFIG_DQS_DDL, 0, nullptr);
  RegisterFunctions(file, &functionFailure_);
  SetGuards(true);
}

void Connection::SetGuards(bool up) {
  sqlite3_db_config(file_.get(), SQLITE_DBCONFIG_DEFENSIVE, up ? 1 : 0, nullptr);
  sqlite3_set_authorizer(file_.get(), up ? Authorize : nullptr, nullptr);
}

// Takes the place of SQLite's own writing back, which does not say when a journal begins anew.
int Connection::WriteBack(void* connection, sqlite3* file, const char* name, int frames) {
  auto& self = *static_cast<Connection*>(connection);
  if (frames < self.journalFrames_) self.markDue_ = true;
  self.journalFrames_ = frames;
  if (frames < kFramesBetweenWritingBack) return SQLITE_OK;
  int all = 0, written = 0;
  // What cannot be written back now stays in the journal.
  const int code = sqlite3_wal_checkpoint_v2(file, name, SQLITE_CHECKPOINT_PASSIVE, &all, &written);
  if (code == SQLITE_OK && all == written) self.markDue_ = true;
  return SQLITE_OK;
}

void Connection::RunUnguarded(const std::function<std::string()>& statements) {
  sqlite3* const file = file_.get();
  Running begin(*this, "BEGIN IMMEDIATE");
  StepWriter(begin, nullptr);
  SetGuards(false);
  try {
    RunSql(file, statements().c_str());
    RunSql(file, "COMMIT");
  } catch (...) {
    sqlite3_exec(file, "ROLLBACK", nullptr, nullptr, nullptr);
    SetGuards(true);
    throw;
  }
  SetGuards(true);
}

void Connection::PutOffIndexes(const dialect::TableSchema& table) {
  RequireOpen();
  RequireTransaction();
  PrepareToWrite(table);
  std::vector<std::string> drop, make;
  {
    // Of the forms that are this program's own: another tool's may be of functions that are not
    // here. What keeps rows apart is unique.
    const auto isOwn = [&](const std::string& name) {
      return std::ranges::any_of(table.indexes, [&](const dialect::Index& each) {
        return !each.unique && name == table.name + "." + each.name;
      });
    };
    Running indexes(*this,
                    "SELECT name, sql FROM sqlite_schema WHERE type = 'index' AND tbl_name = ? "
                    "COLLATE NOCASE",
                    {engine::Value(table.name)});
    while (indexes.Step()) {
      const std::string name = indexes.Cell(0, dialect::ValueType::kText).Text();
      if (!isOwn(name)) continue;
      drop.push_back("DROP INDEX " + QuotedName(name));
      make.push_back(indexes.Cell(1, dialect::ValueType::kText).Text());
    }
  }
  // Not while a row of any table is being read: then they are kept row by row.
  for (sqlite3_stmt* each = nullptr; (each = sqlite3_next_stmt(file_.get(), each)) != nullptr;) {
    if (sqlite3_stmt_busy(each) != 0) return;
  }
  ChangeIndexes(drop);
  putOff_.insert(putOff_.end(), make.begin(), make.end());
}

void Connection::MakeIndexesPutOff() {
  if (putOff_.empty()) return;
  // Sorting takes as much memory again as the cache may have, and needs no more of that.
  constexpr int kWhileSorting = kCacheKibibytes / 4;
  SetCache(kWhileSorting);
  try {
    ChangeIndexes(putOff_);
  } catch (...) {
    SetCache(kCacheKibibytes);
    throw;
  }
  SetCache(kCacheKibibytes);
  putOff_.clear();
}

void Connection::SetCache(int kibibytes) {
  SetGuards(false);
  const std::string sql = "PRAGMA cache_size = -" + std::to_string(kibibytes);
  sqlite3_exec(file_.get(), sql.c_str(), nullptr, nullptr, nullptr);
  SetGuards(true);
}

// Single statements, as every statement that is compiled here.
void Connection::ChangeIndexes(const std::vector<std::string>& statements) {
  struct Down {
    explicit Down(Connection& of) : connection(of) { connection.SetGuards(false); }
    ~Down() { connection.SetGuards(true); }
    Connection& connection;
  };
  const Down down(*this);
  for (const std::string& each : statements) Running(*this, each).Step();
}

void Connection::MarkFile() {
  RunUnguarded([this] {
    std::uint16_t chance = 0;
    sqlite3_randomness(sizeof chance, &chance);
    const auto read = [this](const char* sql) {
      return static_cast<std::uint32_t>(ReadPragma(file_.get(), sql));
    };
    const FileMark mark{read("PRAGMA schema_version"), read("PRAGMA page_count"),
                        read("PRAGMA freelist_count")};
    const auto next = static_cast<std::int32_t>(NextMark(mark, chance));
    return "PRAGMA schema_version = " + std::to_string(next);
  });
  markDue_ = false;
}

void Connection::ChangeStructure(const std::string& statements) {
  PrepareFile();
  RunUnguarded([&] { return statements; });
}

std::int64_t Connection::DataVersion() {
  RequireOpen();
  Running run(*this, "PRAGMA data_version");
  run.Step();
  return run.Key();
}

void Connection::PrepareFile() {
  RequireSound();
  if (markDue_) MarkFile();
}

Connection::~Connection() { Close(); }

void Connection::Close() {
  if (file_ == nullptr) return;
  question_.reset();
  // An open transaction goes with its statements; closing the last connection leaves one file.
  cache_.clear();
  for (CompiledStatement& statement : statements_) {
    sqlite3_finalize(statement.handle);
    statement.handle = nullptr;
    statement.kept = false;
  }
  file_.reset();
}

void Connection::RequireOpen() const {
  if (file_ == nullptr) engine::FailClosed();
}

const dialect::TableSchema& Connection::RequireTable(std::string_view name) const {
  RequireOpen();
  const dialect::TableSchema* table = schema_.FindTable(name);
  if (table == nullptr) {
    throw engine::DatabaseError(engine::DatabaseError::kUnknownTable,
                                "La tabella '" + std::string(name) + "' non esiste.");
  }
  return *table;
}

std::int64_t Connection::ChangeStamp() const {
  return file_ == nullptr ? -1 : sqlite3_total_changes64(file_.get()) + rollbacks_;
}

void Connection::Watch(std::function<bool()> goOn) {
  RequireOpen();
  RequireIdle();
  question_.reset();
  if (goOn) question_.emplace(file_.get(), std::move(goOn));
}

void Connection::RequireIdle() const {
  if (question_ && question_->Open()) {
    throw engine::DatabaseError(engine::DatabaseError::kLocked, "Il database è al lavoro.");
  }
}

void Connection::Fail(int code) {
  if (question_ && (code & 0xFF) == SQLITE_INTERRUPT) question_->RethrowFailure();
  if (functionFailure_) {
    const engine::DatabaseError failure = *functionFailure_;
    functionFailure_.reset();
    throw failure;
  }
  const bool last = code == sqlite3_extended_errcode(file_.get());
  const engine::DatabaseError failure =
      last ? LastFailureOf(file_.get()) : FailureOf(code, sqlite3_errmsg(file_.get()));
  if (failure.Number == engine::DatabaseError::kNotADatabase) RefuseWrites();
  throw failure;
}

void Connection::RequireSound() const {
  if (damaged_) {
    throw engine::DatabaseError(engine::DatabaseError::kNotADatabase,
                                "Il file del database è danneggiato e non viene più modificato.");
  }
  // What is written to a file that has lost its name is written to nowhere.
  int moved = 0;
  sqlite3_file_control(file_.get(), "main", SQLITE_FCNTL_HAS_MOVED, &moved);
  if (moved != 0) {
    throw engine::DatabaseError(engine::DatabaseError::kFileNotFound,
                                "Il file del database è stato spostato o cancellato.");
  }
}

CompiledStatement Connection::Compile(std::string_view sql) {
  CompiledStatement statement;
  statement.text = sql;
  // Literals are parameters, so nothing in the text may end it early.
  constexpr std::string_view kEnds[] = {"--", "/*", ";", std::string_view("\0", 1)};
  for (const std::string_view end : kEnds) {
    if (sql.find(end) == std::string_view::npos) continue;
    throw engine::DatabaseError(engine::DatabaseError::kSyntax, "L'istruzione non è valida.");
  }
  const int code = sqlite3_prepare_v3(file_.get(), statement.text.data(),
                                      static_cast<int>(statement.text.size()),
                                      SQLITE_PREPARE_PERSISTENT, &statement.handle, nullptr);
  ++counters_.prepared;
  if (code == SQLITE_OK) return statement;
  if ((code & 0xFF) == SQLITE_ERROR) {
    throw engine::DatabaseError(
        engine::DatabaseError::kSyntax,
        "L'istruzione non è valida (" + std::string(sqlite3_errmsg(file_.get())) + ").");
  }
  Fail(code);
}

CompiledStatement* Connection::Take(std::string_view sql) {
  RequireOpen();
  RequireIdle();
  ++counters_.statements;
  const auto found = cache_.find(sql);
  if (found != cache_.end() && !found->second->busy) {
    statements_.splice(statements_.begin(), statements_, found->second);
    statements_.front().busy = true;
    return &statements_.front();
  }
  statements_.push_front(Compile(sql));
  CompiledStatement& statement = statements_.front();
  statement.busy = true;
  // A second run of a statement that is still running is compiled for itself alone.
  statement.kept = found == cache_.end();
  if (statement.kept) cache_.emplace(statement.text, statements_.begin());
  DropUnused();
  return &statement;
}

void Connection::DropUnused() {
  auto at = statements_.end();
  while (statements_.size() > kKeptStatements && at != statements_.begin()) {
    --at;
    if (at->busy) continue;
    cache_.erase(at->text);
    sqlite3_finalize(at->handle);
    at = statements_.erase(at);
  }
}

void Connection::GiveBack(CompiledStatement* statement) {
  if (statement->handle != nullptr) {
    sqlite3_reset(statement->handle);
    sqlite3_clear_bindings(statement->handle);
  }
  statement->busy = false;
  if (statement->kept) return;
  sqlite3_finalize(statement->handle);
  statements_.remove_if([&](const CompiledStatement& other) { return &other == statement; });
}

void Connection::PrepareToWrite(const dialect::TableSchema& table) {
  RequireOpen();
  if (!InTransaction()) PrepareFile();
  // Reading the rest may end a reader's registration, but not while it is asked: they stay.
  for (LazyReader* reader : std::vector<LazyReader*>(readers_)) {
    const auto& tables = reader->TablesRead();
    if (std::find(tables.begin(), tables.end(), &table) != tables.end()) reader->ReadRest();
  }
}

std::int64_t Connection::Write(const dialect::TableSchema& table, std::string_view sql,
                               std::vector<engine::Value> parameters) {
  PrepareToWrite(table);
  const std::int64_t before = sqlite3_total_changes64(file_.get());
  Running run(*this, sql, std::move(parameters));
  StepWriter(run, &table);
  return sqlite3_total_changes64(file_.get()) - before;
}

// As long as rows of anything are still being read, SQLite does not wait for a lock, and refuses to
// write at all behind another program's change: what the readers are to show would be gone. They
// read their rest, and it is tried again.
void Connection::StepWriter(Running& run, const dialect::TableSchema* table) {
  const bool reading =
      !InTransaction() && sqlite3_txn_state(file_.get(), "main") != SQLITE_TXN_NONE;
  int code = sqlite3_step(run.Handle());
  if (reading && (code & 0xFF) == SQLITE_BUSY) {
    sqlite3_reset(run.Handle());
    for (LazyReader* reader : std::vector<LazyReader*>(readers_)) reader->ReadRest();
    code = sqlite3_step(run.Handle());
  }
  if (code == SQLITE_DONE) return;
  if (code == SQLITE_FULL && table != nullptr && IsCounterSpent(*table)) {
    throw engine::DatabaseError(
        engine::DatabaseError::kFailed,
        "Il contatore della tabella '" + table->name +
            "' ha raggiunto il numero più alto, che un altro programma vi ha "
            "scritto: nessuna riga si può più aggiungere. Ripristinare una copia "
            "di sicurezza.");
  }
  Fail(code);
}

bool Connection::IsCounterSpent(const dialect::TableSchema& table) {
  if (table.keyColumn == dialect::TableSchema::kNone) return false;
  Running run(*this, "SELECT max(rowid) FROM " + table.quoted);
  if (run.Step() && run.Key() == std::numeric_limits<std::int64_t>::max()) return true;
  Running counter(*this, "SELECT seq FROM sqlite_sequence WHERE name = ?",
                  {engine::Value(table.name)});
  return counter.Step() && counter.Key() == std::numeric_limits<std::int64_t>::max();
}

bool Connection::ReadOn(std::int64_t rows) {
  if (file_ == nullptr) return false;
  if (question_ && question_->Open()) return true;
  return std::any_of(readers_.begin(), readers_.end(),
                     [rows](LazyReader* reader) { return reader->ReadOn(rows); });
}

void Connection::Unregister(LazyReader* reader) { std::erase(readers_, reader); }

void Connection::Begin() {
  RequireOpen();
  if (!InTransaction()) {
    PrepareFile();
  } else {
    throw engine::DatabaseError(engine::DatabaseError::kInvalidOperation,
                                "Una transazione è già aperta.");
  }
  putOff_.clear();  // of one that the file itself has rolled back
  Running begin(*this, "BEGIN IMMEDIATE");
  StepWriter(begin, nullptr);
}

void Connection::Commit() {
  RequireOpen();
  RequireSound();
  RequireTransaction();
  MakeIndexesPutOff();
  Running(*this, "COMMIT").Step();
}

void Connection::Rollback() {
  RequireOpen();
  RequireTransaction();
  putOff_.clear();
  ++rollbacks_;
  Running(*this, "ROLLBACK").Step();
}

void Connection::RequireTransaction() const {
  if (InTransaction()) return;
  throw engine::DatabaseError(engine::DatabaseError::kNoTransaction,
                              "Nessuna transazione è aperta.");
}

bool Connection::InTransaction() const {
  return file_ != nullptr && sqlite3_get_autocommit(file_.get()) == 0;
}

Running::Running(Connection& connection, std::string_view sql,
                 std::vector<engine::Value> parameters)
    : connection_(&connection),
      statement_(connection.Take(sql)),
      parameters_(std::move(parameters)) {
  Bind();
}

Running::~Running() {
  if (statement_ != nullptr) connection_->GiveBack(statement_);
}

void Running::Swap(Running& other) noexcept {
  std::swap(connection_, other.connection_);
  std::swap(statement_, other.statement_);
  std::swap(parameters_, other.parameters_);
}

void Running::Restart(std::vector<engine::Value> parameters) {
  if (statement_->handle == nullptr) connection_->RequireOpen();
  sqlite3_reset(statement_->handle);
  sqlite3_clear_bindings(statement_->handle);
  parameters_ = std::move(parameters);
  Bind();
}

void Running::Bind() {
  sqlite3_stmt* const handle = statement_->handle;
  for (std::size_t i = 0; i < parameters_.size(); ++i) {
    const int at = static_cast<int>(i) + 1;
    // Dates and yes/no values in the form of the file.
    if (const auto* date = std::get_if<base::DateTime>(&parameters_[i].Get())) {
      parameters_[i] = engine::Value(base::IsoText(*date));
    }
    const engine::Value::Data& data = parameters_[i].Get();
    if (const auto* text = std::get_if<std::string>(&data)) {
      sqlite3_bind_text64(handle, at, text->data(), text->size(), SQLITE_STATIC, SQLITE_UTF8);
    } else if (const auto* whole = std::get_if<std::int64_t>(&data)) {
      sqlite3_bind_int64(handle, at, *whole);
    } else if (const auto* real = std::get_if<double>(&data)) {
      sqlite3_bind_double(handle, at, *real);
    } else if (const auto* yes = std::get_if<bool>(&data)) {
      sqlite3_bind_int(handle, at, *yes ? -1 : 0);
    }
  }
}

bool Running::Step() {
  if (statement_->handle == nullptr) connection_->RequireOpen();
  connection_->RequireIdle();
  const int code = sqlite3_step(statement_->handle);
  if (code == SQLITE_ROW) {
    ++connection_->Counters().rowsStepped;
    return true;
  }
  if (code == SQLITE_DONE) return false;
  connection_->Fail(code);
}

engine::Value Running::Cell(int column, dialect::ValueType type) const {
  return ReadCell(statement_->handle, column, type);
}

}  // namespace brenvo::file
