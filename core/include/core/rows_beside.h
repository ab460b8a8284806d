// What stands beside contacts in own tables (LogAdif, LogQsl, LogOrigine), for many at a time.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>
#include <string_view>

#include "engine/database.h"

namespace brenvo::core {

// Goes once through the table's rows of these contacts, by number. `see` gets the place of the
// contact among `keys`, each of which stands there once, and the row, its columns counted from 1 as
// they are told, with commas between them.
void SeeRowsBeside(engine::Database& database, std::string_view table, std::string_view columns,
                   std::span<const std::int64_t> keys,
                   const std::function<void(std::size_t place, engine::Recordset& row)>& see);

}  // namespace brenvo::core
