// SQLite's own judgement of a file.
#pragma once

#include <sqlite3.h>

#include <filesystem>
#include <string>

namespace brenvo {

// "ok", or the first complaint of its integrity check.
inline std::string IntegrityOf(const std::filesystem::path& file) {
  sqlite3* handle = nullptr;
  sqlite3_stmt* statement = nullptr;
  std::string result = "cannot be opened";
  if (sqlite3_open(file.c_str(), &handle) == SQLITE_OK &&
      sqlite3_prepare_v2(handle, "PRAGMA integrity_check", -1, &statement, nullptr) == SQLITE_OK &&
      sqlite3_step(statement) == SQLITE_ROW) {
    result = reinterpret_cast<const char*>(sqlite3_column_text(statement, 0));
  }
  sqlite3_finalize(statement);
  sqlite3_close(handle);
  return result;
}

}  // namespace brenvo
