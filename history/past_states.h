// How rows stood behind a work: the next work that touched them has kept that.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "engine/database.h"

namespace brenvo::history {

// The columns of Log as a statement names them, QsoNr first.
const std::string& LogColumnNames();

using RowValues = std::vector<engine::Value>;

// The cells of the first row of a SELECT; nothing when it has none.
std::optional<RowValues> FirstRow(engine::Database& database, const std::string& select);

// A contact of Log as it stands; nothing when there is none.
std::optional<RowValues> CurrentState(engine::Database& database, std::int64_t qsoNr);
// As the work has left it.
std::optional<RowValues> StateBehind(engine::Database& database, std::int64_t work,
                                     std::int64_t qsoNr);

}  // namespace brenvo::history
