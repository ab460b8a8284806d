// The tables that this program keeps beside those that every version has.
#pragma once

#include <string_view>

#include "core/session.h"

namespace brenvo::core {

// Whether the database has the table: one that was delivered earlier may lack it.
bool HasTable(Session& session, std::string_view name);

}  // namespace brenvo::core
