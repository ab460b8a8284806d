// Records written from what the operator typed.
#pragma once

#include <stdexcept>
#include <string_view>

#include "core/session.h"
#include "engine/database_error.h"
#include "engine/recordset.h"

namespace brenvo::core {

// A typed value that its column cannot hold, in words for the operator.
class RefusedValue : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// The number that `typed` begins with, into a column of the record being written. RefusedValue when
// the column cannot hold it; the record is dropped then.
void SetNumber(engine::EditableRecordset& row, std::string_view column, std::string_view typed);

// Runs `body`; a RefusedValue is told and gives false.
template <class Body>
bool TryValues(Session& session, Body body) {
  try {
    body();
    return true;
  } catch (const RefusedValue& refused) {
    session.Messages().Show(platform::MessageIcon::kExclamation, "", refused.what());
    return false;
  }
}

// Runs `body`, telling a RefusedValue; a DatabaseError 3022 shows `repeated` with the critical icon
// and gives false, any other one ends the program under `operation`.
template <class Body>
bool TryWrite(Session& session, std::string_view operation, std::string_view repeated, Body body) {
  try {
    return TryValues(session, body);
  } catch (const engine::DatabaseError& failure) {
    if (failure.Number != engine::DatabaseError::kDuplicateKey) session.EndWith(failure, operation);
    session.Messages().Show(platform::MessageIcon::kCritical, "", repeated);
    return false;
  }
}

}  // namespace brenvo::core
