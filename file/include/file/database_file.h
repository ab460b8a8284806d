// Database files: opened, and rewritten.
#pragma once

#include <filesystem>
#include <functional>
#include <string>

#include "engine/database.h"

namespace brenvo::file {

// Opens an existing file, shared and read-write. DatabaseError 3024 when there is none, 3343 when
// it is no database of this program or damaged, 3027 when it is read-only, 3260 when another
// program has locked it. Once it is open, what would write is DatabaseError 3024 when the file has
// lost its name, and 3343 when it is found damaged.
engine::Database OpenDatabaseFile(const std::filesystem::path& file);

// Rewrites a closed file into a new one. DatabaseError as of OpenDatabaseFile for `from`, 3204 when
// there is a `to`; one that could not be written whole is removed again. `goOn` as of
// Database::Watch.
void CompactDatabase(const std::filesystem::path& from, const std::filesystem::path& to,
                     std::function<bool()> goOn = nullptr);

// Runs statements of SQLite's own on a closed file that change its structure, in one transaction:
// all of them or none, however it ends. DatabaseError as of OpenDatabaseFile, and what fails.
void ChangeStructure(const std::filesystem::path& file, const std::string& statements);

}  // namespace brenvo::file
