// A transaction that does not outlive its block.
#pragma once

#include "engine/database.h"

namespace brenvo {

// Begins on construction; whatever leaves the block before Commit rolls everything back.
class Transaction {
 public:
  explicit Transaction(Database& database) : database_(database) { database_.BeginTrans(); }
  ~Transaction() {
    if (!open_) return;
    try {
      database_.Rollback();
    } catch (const DatabaseError&) {
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
  Database& database_;
  bool open_ = true;
};

}  // namespace brenvo
