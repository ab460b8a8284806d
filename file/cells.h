// Cells as SQLite hands them out.
#pragma once

#include "dialect/schema.h"
#include "engine/value.h"

struct sqlite3_stmt;
struct sqlite3_value;

namespace brenvo::file {

// A cell of a row as read.
engine::Value ReadCell(sqlite3_stmt* statement, int column, dialect::ValueType type);
// A cell as the file holds it: Null, int64, double or text.
engine::Value ReadRaw(sqlite3_value* value);

}  // namespace brenvo::file
