// Files of SQLite, and what it answers.
#pragma once

#include <sqlite3.h>

#include <filesystem>
#include <memory>
#include <string>

#include "engine/database_error.h"

namespace brenvo {

struct SqliteCloser {
  void operator()(sqlite3* file) const { sqlite3_close(file); }
};
using SqliteFile = std::unique_ptr<sqlite3, SqliteCloser>;

// Sets up SQLite for the whole process, before it runs: what follows the first time does nothing.
// Any thread may call it. OpenSqliteFile does, so that nobody else needs to; whoever has run SQLite
// by himself before keeps it as it was, which costs time alone.
void StartSqlite();

// Opens a file for reading and writing; `more` are further flags of SQLite's. DatabaseError when it
// cannot be opened.
SqliteFile OpenSqliteFile(const std::filesystem::path& path, int more = 0);

// Runs statements without an answer. DatabaseError when one fails.
void RunSql(sqlite3* file, const char* sql);

// A file's name as SQLite wants it.
std::string Utf8Name(const std::filesystem::path& path);

// What a result of SQLite is called here; `message` is SQLite's own, null for none.
DatabaseError FailureOf(int extendedCode, const char* message);
// The same for what has just failed on the file.
DatabaseError LastFailureOf(sqlite3* file);

}  // namespace brenvo
