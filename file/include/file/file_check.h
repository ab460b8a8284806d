// Whether a file is a database of this program, before SQLite sees it.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string_view>

namespace brenvo::file {

// SQLite would take an empty file for a new database, and drop the journal that stands beside it;
// nothing is opened that is not surely ours. DatabaseError 3024 when the file is not there, 3044
// when its path is longer than SQLite takes, 75 when the system does not let it be looked at or
// read, 3343 when it is another file.
void RequireOurFile(const std::filesystem::path& path);

// The rows of a table in a database that is not in use, such as a copy. It is only read: with a
// full disk, or without the right to write, too. What its own journal holds counts, and is then
// written back. DatabaseError as of RequireOurFile, and 3343 when it is damaged.
std::int64_t RowsIn(const std::filesystem::path& database, std::string_view table);

}  // namespace brenvo::file
