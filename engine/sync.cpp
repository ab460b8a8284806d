#include "engine/sync.h"

#include <cerrno>
#include <string>

#ifndef _WIN32
#include <fcntl.h>
#include <unistd.h>
#endif

namespace brenvo {

DatabaseError PathFailure(const std::filesystem::path& path, const std::error_code& why) {
  return {DatabaseError::kPathAccess,
          "Errore di accesso a '" + path.filename().string() + "' (" + why.message() + ")."};
}

void SyncToDisk([[maybe_unused]] const std::filesystem::path& path) {
#ifndef _WIN32
  const int descriptor = open(path.c_str(), O_RDONLY);
  if (descriptor < 0) return;
  // A file system that knows no such thing for its directories says so, and loses nothing by it.
  const int failure = fsync(descriptor) == 0 || errno == EINVAL || errno == EROFS ? 0 : errno;
  close(descriptor);
  if (failure != 0) throw PathFailure(path, {failure, std::generic_category()});
#endif
}

void RenameSafely(const std::filesystem::path& from, const std::filesystem::path& to) {
  std::error_code error;
  std::filesystem::rename(from, to, error);
  if (error) throw PathFailure(from, error);
  SyncToDisk(to.has_parent_path() ? to.parent_path() : std::filesystem::path("."));
}

}  // namespace brenvo
