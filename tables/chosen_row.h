// Writing the row that the operator has chosen.
#pragma once

#include <optional>
#include <string_view>

#include "core/modules.h"

namespace brenvo {

// TryWrite, but where no row was chosen yet, or the one chosen was deleted meanwhile (DatabaseError
// 3021 and 3167), it throws that failure, which ends the event alone: nothing was written, and the
// file is as well as before.
template <class Body>
bool TryWriteChosen(Session& session, std::string_view operation, std::string_view repeated,
                    Body body) {
  std::optional<DatabaseError> noRow;
  const bool written = TryWrite(session, operation, repeated, [&] {
    try {
      body();
    } catch (const DatabaseError& failure) {
      if (failure.Number != DatabaseError::kNoCurrentRecord &&
          failure.Number != DatabaseError::kRecordDeleted) {
        throw;
      }
      noRow = failure;
    }
  });
  if (noRow) throw *noRow;
  return written;
}

}  // namespace brenvo
