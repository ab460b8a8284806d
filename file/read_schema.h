// What a database file says of its tables, columns and indexes.
#pragma once

#include <string>
#include <string_view>

#include "dialect/schema.h"

struct sqlite3;

namespace brenvo::file {

// Reads an open file's own description. DatabaseError 3343 when it cannot be read.
dialect::Schema ReadSchema(sqlite3* file);

// A name as SQLite's SQL writes it: in quotes.
std::string QuotedName(std::string_view name);
// What an index holds of a part, as SQL: "Call", rtrim("Call") COLLATE NOCASE, ...
std::string PartSql(const dialect::TableSchema& table, const dialect::IndexPart& part);

}  // namespace brenvo::file
