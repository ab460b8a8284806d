#include "core/transaction.h"

namespace brenvo::core {

Transaction::~Transaction() {
  if (!open_) return;
  try {
    database_.Rollback();
  } catch (const engine::DatabaseError&) {
    // The failure that brought us here is the one to tell.
  }
  if (door_ != nullptr) door_->RolledBack();
}

void Transaction::Commit() {
  if (door_ != nullptr) door_->BeforeCommit();
  database_.CommitTrans();
  open_ = false;
  if (door_ != nullptr) door_->Committed();
}

}  // namespace brenvo::core
