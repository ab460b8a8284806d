// Writes that hold together.
#pragma once

#include "engine/database.h"

namespace brenvo {

// What is written while it lives is undone unless it was committed.
class Transaction {
 public:
  explicit Transaction(Database& db) : db_(db) { db_.BeginTrans(); }
  ~Transaction() {
    if (!committed_) db_.Rollback();
  }
  Transaction(const Transaction&) = delete;
  Transaction& operator=(const Transaction&) = delete;

  void Commit() {
    db_.CommitTrans();
    committed_ = true;
  }

 private:
  Database& db_;
  bool committed_ = false;
};

}  // namespace brenvo
