// The database as windows see it, behind the dialect of the statements that the program and its
// operators write. It does not tell where the rows are kept: whoever opens it does.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "engine/recordset.h"
#include "engine/store.h"

namespace brenvo::engine {

class Database {
 public:
  Database() = default;  // closed
  // Over a store that is open.
  explicit Database(std::unique_ptr<Store> store);

  bool IsOpen() const { return store_ != nullptr; }
  // Recordsets still open on it answer DatabaseError 3420 from now on, and so does whatever follows
  // here. An open transaction is rolled back.
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
  // For many new rows in one transaction: what an index answers is read through instead until the
  // commit, which makes the indexes of the table anew; only one that keeps rows apart goes on.
  // Nothing where rows of anything are being read. DatabaseError 3034 outside of a transaction.
  void PutOffIndexes(std::string_view table);

  // DatabaseError 3078 when there is no such table.
  std::unique_ptr<Table> OpenTable(std::string_view name);
  // One SELECT; DatabaseError 3219 for a statement of another kind, and for a dynaset over more
  // than one table, with DISTINCT or with groups.
  std::unique_ptr<Snapshot> OpenSnapshot(std::string_view select);
  std::unique_ptr<Dynaset> OpenDynaset(std::string_view select);
  std::unique_ptr<RowAppender> OpenAppender(std::string_view table);

  // To read what is stored by now on another thread. It must be gone before the database is closed.
  std::unique_ptr<Reader> OpenReader();

  // A dynaset of many rows that was moved to its end has most of its keys to read still, at the
  // latest when its table is written to. `tell` is called when there are such; whoever has time
  // then reads so many of them, until that gives false.
  void WhenUnread(std::function<void()> tell);
  bool ReadOn(std::int64_t rows);

  // From now on, `goOn` is asked every few milliseconds while a statement works. Once it gives
  // false, what works long is DatabaseError 3059, and a transaction that writes then is rolled
  // back. It may not use the database, which answers it with DatabaseError 3260. Empty for none.
  void Watch(std::function<bool()> goOn);

  // What is kept has been found damaged: from now on it is read, and never written again; whatever
  // would write is DatabaseError 3343. What is found damaged while it is read refuses by itself.
  void RefuseWrites();

  // A number that differs from the one before when another program has written meanwhile; what goes
  // through this handle does not change it.
  std::int64_t DataVersion();

  EngineCounters Counters() const;
  // How the store goes about a SELECT, in its own words, a line per step.
  std::string QueryPlan(std::string_view select);

 private:
  Store& Opened() const;

  std::unique_ptr<Store> store_;
};

}  // namespace brenvo::engine
