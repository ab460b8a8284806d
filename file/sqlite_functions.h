// The functions and the order of texts that the dialect adds to SQLite. They live in the open
// connection alone: nothing in the file refers to them.
#pragma once

#include <optional>

#include "dialect/functions.h"
#include "engine/database_error.h"

struct sqlite3;

namespace brenvo::file {

// The name of the folding order on a connection.
inline constexpr const char* kFoldingOrder = "DIALECT";

// Makes the functions known to a connection. A failure inside one is left in `failure`, and the
// running statement ends with SQLITE_ERROR.
void RegisterFunctions(sqlite3* file, std::optional<engine::DatabaseError>* failure);

// What SQLite calls a function of the dialect.
const char* SqlOf(dialect::FunctionName function);

}  // namespace brenvo::file
