#include "cells.h"

#include <sqlite3.h>

#include <string>

#include "dialect/convert.h"

namespace brenvo::file {

engine::Value ReadRaw(sqlite3_value* value) {
  switch (sqlite3_value_type(value)) {
    case SQLITE_NULL:
      return {};
    case SQLITE_INTEGER:
      return engine::Value(static_cast<std::int64_t>(sqlite3_value_int64(value)));
    case SQLITE_FLOAT:
      return engine::Value(sqlite3_value_double(value));
    default: {
      const auto* text = reinterpret_cast<const char*>(sqlite3_value_text(value));
      const auto size = static_cast<std::size_t>(sqlite3_value_bytes(value));
      return text == nullptr ? engine::Value("") : engine::Value(std::string(text, size));
    }
  }
}

engine::Value ReadCell(sqlite3_stmt* statement, int column, dialect::ValueType type) {
  switch (sqlite3_column_type(statement, column)) {
    case SQLITE_NULL:
      return {};
    case SQLITE_INTEGER:
      return FromRaw(
          engine::Value(static_cast<std::int64_t>(sqlite3_column_int64(statement, column))), type);
    case SQLITE_FLOAT:
      return FromRaw(engine::Value(sqlite3_column_double(statement, column)), type);
    default: {
      const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(statement, column));
      const auto size = static_cast<std::size_t>(sqlite3_column_bytes(statement, column));
      return FromRaw(text == nullptr ? engine::Value("") : engine::Value(std::string(text, size)),
                     type);
    }
  }
}

}  // namespace brenvo::file
