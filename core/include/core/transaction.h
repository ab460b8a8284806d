// A transaction that does not outlive its block.
#pragma once

#include "engine/database.h"

namespace brenvo::core {

// Begins on construction; whatever leaves the block before Commit rolls everything back.
class Transaction {
 public:
  explicit Transaction(engine::Database& database) : database_(database) { database_.BeginTrans(); }
  ~Transaction() {
    if (!open_) return;
    try {
      database_.Rollback();
    } catch (const engine::DatabaseError&) {
      // The failure that brought us here is the one to tell.
    }
  }
  Transaction(const Transaction&) = delete;
  Transaction& operator=(const Transaction&) = delete;

  void Commit() {
    database_.CommitTrans();
    open_ = false;
  }

 private:
  engine::Database& database_;
  bool open_ = true;
};

}  // namespace brenvo::core
