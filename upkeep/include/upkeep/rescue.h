// The start that finds no sound database.
#pragma once

#include "core/session.h"
#include "engine/database_error.h"

namespace brenvo::upkeep {

// Offers the operator what there is: the database without a journal that must not be applied to it,
// the file that an interrupted compaction or restore has left, the newest copy that can be read.
// True when it stands in the database's place; false when nothing helps against this failure. The
// failure goes on when the operator does not want what is offered. No table may be open.
bool PutBackInstead(core::Session& session, const engine::DatabaseError& failure);

}  // namespace brenvo::upkeep
