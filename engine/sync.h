// Files made safe against a power cut.
#pragma once

#include <filesystem>

namespace brenvo {

// Waits until the file, or the names in the directory, are on the disk, as far as the system can
// do that; nothing when it is not there.
void SyncToDisk(const std::filesystem::path& path);

// Renames within one directory and waits until that has happened on the disk too. DatabaseError 75
// when the system refuses.
void RenameSafely(const std::filesystem::path& from, const std::filesystem::path& to);

}  // namespace brenvo
