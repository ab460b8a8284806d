// A transaction that does not outlive its block.
#pragma once

#include "core/session.h"
#include "engine/database.h"

namespace brenvo::core {

// Begins on construction; whatever leaves the block before Commit rolls everything back.
class Transaction {
 public:
  // Of rows that no contact is made of.
  explicit Transaction(engine::Database& database) : database_(database) { database_.BeginTrans(); }
  // Of contacts too: what the door for them writes beside them belongs to it.
  explicit Transaction(Session& session) : Transaction(session.Db) { door_ = &session.Contacts; }
  ~Transaction();
  Transaction(const Transaction&) = delete;
  Transaction& operator=(const Transaction&) = delete;

  void Commit();

 private:
  engine::Database& database_;
  ContactDoor* door_ = nullptr;
  bool open_ = true;
};

}  // namespace brenvo::core
