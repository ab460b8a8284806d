#include "core/own_tables.h"

namespace brenvo::core {

bool HasTable(Session& session, std::string_view name) {
  try {
    session.Db.OpenTable(name);
    return true;
  } catch (const engine::DatabaseError& failure) {
    if (failure.Number != engine::DatabaseError::kUnknownTable) throw;
    return false;
  }
}

}  // namespace brenvo::core
