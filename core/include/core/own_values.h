// Single values that belong to the log and stay in its database: table Valori.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "engine/database.h"

namespace brenvo::core {

// Nothing when it was never stored. Names are found without regard to case.
std::optional<std::string> OwnValue(engine::Database& database, std::string_view name);
// Nothing as `value` takes it away.
void StoreOwnValue(engine::Database& database, std::string_view name,
                   const std::optional<std::string>& value);

}  // namespace brenvo::core
