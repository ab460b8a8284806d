// The file database: one SQLite file behind the dialect of the statements that the program and
// its operators write.
#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "engine/recordset.h"

namespace brenvo {

class Connection;

// What tests and benchmarks count.
struct EngineCounters {
  std::int64_t statements = 0;   // statements run
  std::int64_t prepared = 0;     // of these, compiled anew
  std::int64_t rowsStepped = 0;  // rows that SQLite handed out
};

class Database {
 public:
  // Opens an existing file, shared and read-write. DatabaseError 3024 when there is none, 3343
  // when it is no database of this program or damaged, 3027 when it is read-only, 3260 when another
  // program has locked it.
  static Database Open(const std::filesystem::path& file);

  Database() = default;  // closed
  Database(Database&&) noexcept = default;
  Database& operator=(Database&& other) noexcept;
  ~Database();

  bool IsOpen() const { return connection_ != nullptr; }
  // Closes the file; recordsets still open on it answer DatabaseError 3420 from now on. An open
  // transaction is rolled back.
  void Close();

  // One INSERT, UPDATE or DELETE (DatabaseError 3065 for a SELECT). Rows of an INSERT that repeat a
  // unique key are dropped in silence; an UPDATE that would repeat one is DatabaseError 3022 and
  // writes nothing. Returns the number of rows written.
  std::int64_t Execute(std::string_view statement);

  // Transactions do not nest (DatabaseError 3219); ending one that is not open is 3034.
  void BeginTrans();
  void CommitTrans();
  void Rollback();
  bool InTransaction() const;

  // DatabaseError 3078 when there is no such table.
  std::unique_ptr<Table> OpenTable(std::string_view name);
  // One SELECT; DatabaseError 3219 for a statement of another kind, and for a dynaset over more
  // than one table, with DISTINCT or with groups.
  std::unique_ptr<Snapshot> OpenSnapshot(std::string_view select);
  std::unique_ptr<Dynaset> OpenDynaset(std::string_view select);
  std::unique_ptr<RowAppender> OpenAppender(std::string_view table);

  // Rewrites a closed file into a new one. DatabaseError as of Open for `from`, 3204 when there is
  // a `to`; one that could not be written whole is removed again. `goOn` as of Watch.
  static void CompactDatabase(const std::filesystem::path& from, const std::filesystem::path& to,
                              std::function<bool()> goOn = nullptr);

  // From now on, `goOn` is asked every few milliseconds while a statement works. Once it gives
  // false, what works long is DatabaseError 3059, and a transaction that writes then is rolled
  // back. It may not use the database, which answers it with DatabaseError 3260. Empty for none.
  void Watch(std::function<bool()> goOn);

  // The file has been found damaged: from now on it is read, and never written again; whatever
  // would write is DatabaseError 3343. What is found damaged while it is read refuses by itself.
  void RefuseWrites();

  EngineCounters Counters() const;
  // The plan that SQLite makes for a statement of the dialect, a line per step.
  std::string QueryPlan(std::string_view select);

 private:
  explicit Database(std::shared_ptr<Connection> connection);
  std::shared_ptr<Connection> connection_;
};

}  // namespace brenvo
