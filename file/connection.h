// The open file: its SQLite handle, the statements compiled on it, and those who read from it.
#pragma once

#include <sqlite3.h>

#include <cstdint>
#include <filesystem>
#include <functional>
#include <list>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "dialect/schema.h"
#include "engine/database_error.h"
#include "engine/store.h"
#include "question.h"
#include "sqlite_file.h"

namespace brenvo::file {

// A compiled statement. It belongs to the connection, and is empty once that is closed.
struct CompiledStatement {
  std::string text;
  sqlite3_stmt* handle = nullptr;
  bool busy = false;
  bool kept = false;  // goes back to the cache after use
};

// A recordset that has not yet read all that it is to give.
class LazyReader {
 public:
  virtual ~LazyReader() = default;
  // Reads the rest now, for a table that it reads is about to change. A failure is not the
  // writer's: it is kept, and told to whoever moves there.
  virtual void ReadRest() = 0;
  // So many rows of what somebody is going to need; false when there are none such.
  virtual bool ReadOn(std::int64_t rows) = 0;
  virtual const std::vector<const dialect::TableSchema*>& TablesRead() const = 0;
};

class Running;

// Says that a connection only reads the tables of another one to the same file.
struct ToRead {
  const dialect::Schema& tables;
};

class Connection {
 public:
  Connection() = default;  // closed
  // See OpenDatabaseFile.
  explicit Connection(const std::filesystem::path& file);
  // A further one to a file that this process has open. It sees what is stored by now and no more,
  // and whatever would write is DatabaseError 3343.
  Connection(const std::filesystem::path& file, ToRead);
  ~Connection();
  Connection(const Connection&) = delete;
  Connection& operator=(const Connection&) = delete;

  bool IsOpen() const { return file_ != nullptr; }
  void Close();
  // DatabaseError 3420 when closed.
  void RequireOpen() const;

  const dialect::Schema& Tables() const { return schema_; }
  // DatabaseError 3078 when there is none of this name.
  const dialect::TableSchema& RequireTable(std::string_view name) const;
  engine::EngineCounters& Counters() { return counters_; }
  // Changes whenever a row may have changed through this connection.
  std::int64_t ChangeStamp() const;

  // Whoever still reads from the table reads the rest before a statement changes it. DatabaseError
  // 3343 and 3024 (see RequireSound), and 3420 when closed.
  void PrepareToWrite(const dialect::TableSchema& table);
  // Runs a statement that writes to `table`, and returns the number of rows that it changed.
  // Another program's lock is waited for, up to two seconds. DatabaseError as of PrepareToWrite,
  // and 3022, 3026, 3027, 3260.
  std::int64_t Write(const dialect::TableSchema& table, std::string_view sql,
                     std::vector<engine::Value> parameters);

  // Steps a prepared statement that writes, to its end; the same wait, and the same errors. `table`
  // is the one that it writes to, null for none.
  void StepWriter(Running& run, const dialect::TableSchema* table);

  // The key of the row that was inserted last.
  std::int64_t LastKey() const { return sqlite3_last_insert_rowid(file_.get()); }

  void Begin();
  void Commit();
  void Rollback();
  bool InTransaction() const;
  // See Database::PutOffIndexes.
  void PutOffIndexes(const dialect::TableSchema& table);
  // The file has been found damaged: whatever would write to it is DatabaseError 3343 from now on.
  void RefuseWrites() { damaged_ = true; }

  // See Database::DataVersion.
  std::int64_t DataVersion();
  // Runs statements that change the structure, and rows, in one transaction: all or nothing. What
  // the connection knows of the tables is of before: it is to be closed and opened anew.
  void ChangeStructure(const std::string& statements);

  // See Database::Watch.
  void Watch(std::function<bool()> goOn);

  // See Database::WhenUnread.
  void WhenUnread(std::function<void()> tell) { tellUnread_ = std::move(tell); }
  void TellUnread() const {
    if (tellUnread_) tellUnread_();
  }
  bool ReadOn(std::int64_t rows);

  void Register(LazyReader* reader) { readers_.push_back(reader); }
  void Unregister(LazyReader* reader);

  // Throws what SQLite's last result stands for; also when a function of the dialect failed.
  [[noreturn]] void Fail(int code);

 private:
  friend class Running;
  CompiledStatement* Take(std::string_view sql);
  void GiveBack(CompiledStatement* statement);
  CompiledStatement Compile(std::string_view sql);
  void Setup();
  // Runs statements in one transaction, with the guards down for these lines alone.
  void RunUnguarded(const std::function<std::string()>& statements);
  void RaiseGuards();
  // Those that stand in the way of the file's own changes.
  void SetGuards(bool up);
  void ChangeIndexes(const std::vector<std::string>& statements);
  void MakeIndexesPutOff();
  void SetCache(int kibibytes);
  void DropUnused();
  void RequireTransaction() const;
  // DatabaseError 3260 while somebody is asked whether a statement is to go on.
  void RequireIdle() const;
  // DatabaseError 3343 once the file has been found damaged, 3024 when it is not where it was.
  void RequireSound() const;
  // Before something is written, outside of a transaction; a new journal begins with a new mark of
  // the file (journal.h).
  void PrepareFile();
  // SQLite has no other words for a counter at its highest value than for a full disk.
  bool IsCounterSpent(const dialect::TableSchema& table);
  void MarkFile();
  static int WriteBack(void* connection, sqlite3* file, const char* name, int frames);

  SqliteFile file_;
  std::optional<Question> question_;
  std::optional<engine::DatabaseError> functionFailure_;
  dialect::Schema schema_;
  engine::EngineCounters counters_;
  std::int64_t rollbacks_ = 0;
  bool damaged_ = false;
  std::vector<std::string> putOff_;  // statements that make the indexes that were put off
  bool markDue_ = true;  // the next change may be a journal's first
  int journalFrames_ = 0;
  // Most recently used first. Entries stay where they are in memory.
  std::list<CompiledStatement> statements_;
  std::unordered_map<std::string_view, std::list<CompiledStatement>::iterator> cache_;
  std::vector<LazyReader*> readers_;
  std::function<void()> tellUnread_;
};

// One run of a statement: bound, stepped, and given back when it goes.
class Running {
 public:
  Running() = default;
  Running(Connection& connection, std::string_view sql, std::vector<engine::Value> parameters = {});
  Running(Running&& other) noexcept { Swap(other); }
  Running& operator=(Running&& other) noexcept {
    Swap(other);
    return *this;
  }
  ~Running();

  const std::vector<engine::Value>& Parameters() const { return parameters_; }
  // Begins anew with these parameters.
  void Restart(std::vector<engine::Value> parameters);
  // True when there is a row. DatabaseError 3420 when the connection was closed meanwhile.
  bool Step();
  engine::Value Cell(int column, dialect::ValueType type) const;
  std::int64_t Key(int column = 0) const {
    return sqlite3_column_int64(statement_->handle, column);
  }
  sqlite3_stmt* Handle() const { return statement_->handle; }

 private:
  void Swap(Running& other) noexcept;
  void Bind();

  Connection* connection_ = nullptr;
  CompiledStatement* statement_ = nullptr;
  std::vector<engine::Value> parameters_;  // texts are bound where they stand
};

}  // namespace brenvo::file
