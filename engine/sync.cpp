#include "engine/sync.h"

#include "engine/database_error.h"

#ifndef _WIN32
#include <fcntl.h>
#include <unistd.h>
#endif

namespace brenvo {

void SyncToDisk([[maybe_unused]] const std::filesystem::path& path) {
#ifndef _WIN32
  const int descriptor = open(path.c_str(), O_RDONLY);
  if (descriptor < 0) return;
  fsync(descriptor);
  close(descriptor);
#endif
}

void RenameSafely(const std::filesystem::path& from, const std::filesystem::path& to) {
  std::error_code error;
  std::filesystem::rename(from, to, error);
  if (error) {
    throw DatabaseError(DatabaseError::kPathAccess,
                        error.message() + ": " + from.filename().string());
  }
  SyncToDisk(to.has_parent_path() ? to.parent_path() : std::filesystem::path("."));
}

}  // namespace brenvo
