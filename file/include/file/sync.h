// Files made safe against a power cut.
#pragma once

#include <filesystem>
#include <system_error>

#include "engine/database_error.h"

namespace brenvo::file {

// DatabaseError 75: the system refuses something about this file, and why.
engine::DatabaseError PathFailure(const std::filesystem::path& path, const std::error_code& why);

// Waits until the file, or the names in the directory, are on the disk, as far as the system can
// do that; nothing when it is not there. DatabaseError 75 when the disk fails.
void SyncToDisk(const std::filesystem::path& path);

// Renames within one file system and waits until that has happened on the disk too. DatabaseError
// 75 when the system refuses.
void RenameSafely(const std::filesystem::path& from, const std::filesystem::path& to);
// The same into another file system too: there a copy is made, and `from` goes once it is on the
// disk. A copy that fails leaves of `to` only what stood there before.
void MoveSafely(const std::filesystem::path& from, const std::filesystem::path& to);

}  // namespace brenvo::file
