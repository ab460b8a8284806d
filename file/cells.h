// Cells as SQLite hands them out.
#pragma once

#include "dialect/schema.h"
#include "engine/value.h"

struct sqlite3_stmt;
struct sqlite3_value;

namespace brenvo {

// A cell of a row as read.
Value ReadCell(sqlite3_stmt* statement, int column, ValueType type);
// A cell as the file holds it: Null, int64, double or text.
Value ReadRaw(sqlite3_value* value);

}  // namespace brenvo
