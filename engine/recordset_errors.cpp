#include "engine/recordset_errors.h"

#include "base/text.h"
#include "engine/database_error.h"

namespace brenvo::engine {

void FailClosed() {
  throw DatabaseError(DatabaseError::kObjectClosed, "L'oggetto non è più aperto.");
}

void FailNoCurrentRecord() {
  throw DatabaseError(DatabaseError::kNoCurrentRecord, "Nessun record corrente.");
}

void FailRecordDeleted() {
  throw DatabaseError(DatabaseError::kRecordDeleted, "Il record è stato cancellato.");
}

std::size_t PlaceOf(const std::vector<std::string>& columns, std::string_view name) {
  for (std::size_t i = 0; i < columns.size(); ++i) {
    if (base::SameText(columns[i], name)) return i;
  }
  throw DatabaseError(DatabaseError::kItemNotFound,
                      "La colonna '" + std::string(name) + "' non c'è.");
}

}  // namespace brenvo::engine
