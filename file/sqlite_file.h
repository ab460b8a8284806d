// Files of SQLite, and what it answers.
#pragma once

#include <sqlite3.h>

#include <filesystem>
#include <memory>
#include <string>

#include "engine/database_error.h"

namespace brenvo::file {

struct SqliteCloser {
  void operator()(sqlite3* file) const { sqlite3_close(file); }
};
using SqliteFile = std::unique_ptr<sqlite3, SqliteCloser>;

// Sets up SQLite for the whole process, before it runs: what follows the first time does nothing.
// Any thread may call it. OpenSqliteFile does, so that nobody else needs to; whoever has run SQLite
// by himself before keeps it as it was, which costs time alone.
void StartSqlite();

// Opens a file for reading and writing; `more` are further flags of SQLite's. What another program
// holds locked is waited for, up to two seconds. DatabaseError when it cannot be opened.
SqliteFile OpenSqliteFile(const std::filesystem::path& path, int more = 0);

// Opens a file that nobody changes meanwhile, as it is without a journal: nothing is written, and
// no file made beside it. DatabaseError when it cannot be opened.
SqliteFile OpenToRead(const std::filesystem::path& path);

// The first bytes of a database; fewer where it has no more, none where it cannot be read. It may
// be in use: what the process itself has open stays locked, which it would not if the file were
// opened and closed beside SQLite. Other programs would then take it for unused, and drop its
// journal.
std::string FirstBytesOf(const std::filesystem::path& database, std::size_t size);

// Runs statements without an answer. DatabaseError when one fails.
void RunSql(sqlite3* file, const char* sql);

// The first complaint of SQLite's about a file; empty when it is sound. `whole` compares tables
// with their indexes too. DatabaseError when it cannot be read.
std::string Complaint(sqlite3* file, bool whole);

// A file's name as SQLite wants it.
std::string Utf8Name(const std::filesystem::path& path);

// What a result of SQLite is called here, and what to do; `message` is SQLite's own, null for none,
// `systemError` what the system gave for a file that it refused, 0 where that is not known.
engine::DatabaseError FailureOf(int extendedCode, const char* message, int systemError = 0);
// The same for what has just failed on the file.
engine::DatabaseError LastFailureOf(sqlite3* file);

}  // namespace brenvo::file
