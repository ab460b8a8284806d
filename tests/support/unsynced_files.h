// SQLite's files without the wait for the disk.
#pragma once

#include <sqlite3.h>

#include <map>
#include <stdexcept>

namespace brenvo {

// From now on no database opened in this process waits until what it wrote is on the disk: most of
// a test's time otherwise. A process that is killed leaves the same files either way; what a power
// cut leaves is worked out from what RecordedFiles noted. The first call comes before the first of
// those.
inline void LeaveFilesUnsynced() {
  static sqlite3_vfs* const below = sqlite3_vfs_find(nullptr);
  static sqlite3_vfs unsynced = [] {
    sqlite3_vfs vfs = *below;
    vfs.zName = "unsynced";
    vfs.pNext = nullptr;
    // The file stays one of the system below, but for one method.
    vfs.xOpen = [](sqlite3_vfs*, sqlite3_filename name, sqlite3_file* file, int flags, int* out) {
      static std::map<const sqlite3_io_methods*, sqlite3_io_methods> changed;
      const int code = below->xOpen(below, name, file, flags, out);
      if (file->pMethods != nullptr) {
        sqlite3_io_methods& methods =
            changed.try_emplace(file->pMethods, *file->pMethods).first->second;
        methods.xSync = [](sqlite3_file*, int) { return SQLITE_OK; };
        file->pMethods = &methods;
      }
      return code;
    };
    vfs.xDelete = [](sqlite3_vfs*, const char* name, int) {
      return below->xDelete(below, name, 0);
    };
    return vfs;
  }();
  static const int registered = sqlite3_vfs_register(&unsynced, 1);
  if (registered != SQLITE_OK) throw std::runtime_error("files cannot be left unsynced");
}

}  // namespace brenvo
