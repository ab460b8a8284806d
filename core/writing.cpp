#include "core/writing.h"

#include <fmt/format.h>

#include "base/number.h"
#include "base/text.h"
#include "core/log_contact.h"

namespace brenvo::core {

void SetNumber(engine::EditableRecordset& row, std::string_view column, std::string_view typed) {
  try {
    row.Set(column, base::Val(typed));
  } catch (const engine::DatabaseError& failure) {
    if (failure.Number != engine::DatabaseError::kConversion) throw;
    // Left as it is, the half written record would be read as if it were stored.
    row.CancelUpdate();
    throw RefusedValue(
        fmt::format("Il valore '{}' non è adatto alla colonna '{}'", base::Trim(typed), column));
  }
}

}  // namespace brenvo::core
