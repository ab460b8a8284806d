#include "file/sync.h"

#include <cerrno>
#include <string>

#include "base/system_reason.h"

// All of this room that each system does in its own way stands here. Another one must supply
//
// - SyncToDisk: when it returns, what was written to the file is on the disk, or the names in the
//   directory are. A system that has no such thing for directories returns; a power cut may then
//   undo the last renaming, but costs no file.
// - a renaming by std::filesystem that puts the new file in the place of an old one in one step,
//   and gives cross_device_link where it would have to copy.
//
// What SQLite needs of a system it brings along.
#ifndef _WIN32
#include <fcntl.h>
#include <unistd.h>
#endif

namespace brenvo::file {
namespace {

void SyncNameOf(const std::filesystem::path& file) {
  SyncToDisk(file.has_parent_path() ? file.parent_path() : std::filesystem::path("."));
}

void CopySafely(const std::filesystem::path& from, const std::filesystem::path& to) {
  std::error_code error;
  std::filesystem::copy_file(from, to, error);
  if (error == std::errc::file_exists) throw PathFailure(to, error);  // not ours to remove
  try {
    if (error) throw PathFailure(to, error);
    SyncToDisk(to);
    SyncNameOf(to);
  } catch (const engine::DatabaseError&) {
    std::error_code ignored;
    std::filesystem::remove(to, ignored);
    throw;
  }
}

}  // namespace

engine::DatabaseError PathFailure(const std::filesystem::path& path, const std::error_code& why) {
  return {engine::DatabaseError::kPathAccess, "Errore di accesso a '" + path.filename().string() +
                                                  "' (" + base::ReasonText(why) + ")."};
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
  SyncNameOf(to);
}

void MoveSafely(const std::filesystem::path& from, const std::filesystem::path& to) {
  std::error_code error;
  std::filesystem::rename(from, to, error);
  if (error == std::errc::cross_device_link) {
    CopySafely(from, to);
    std::filesystem::remove(from, error);
    SyncNameOf(from);
  }
  if (error) throw PathFailure(from, error);
  SyncNameOf(to);
}

}  // namespace brenvo::file
