#include <sqlite3.h>

#include <memory>

#include "engine/connection.h"
#include "engine/database.h"
#include "engine/sync.h"

namespace brenvo {
namespace {

std::string Utf8(const std::filesystem::path& path) {
  const std::u8string text = path.u8string();
  return {reinterpret_cast<const char*>(text.c_str()), text.size()};
}

struct Closer {
  void operator()(sqlite3* file) const { sqlite3_close(file); }
};

}  // namespace

void Database::CompactDatabase(const std::filesystem::path& from, const std::filesystem::path& to) {
  // Opening proves that the file is one of ours; closing leaves all of it in the one file.
  Open(from).Close();
  std::error_code ignored;
  if (std::filesystem::exists(to, ignored)) {
    throw DatabaseError(DatabaseError::kFileExists,
                        "Il database '" + to.string() + "' esiste gia'.");
  }
  sqlite3* handle = nullptr;
  const int opened =
      sqlite3_open_v2(Utf8(from).c_str(), &handle,
                      SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX | SQLITE_OPEN_EXRESCODE, nullptr);
  const std::unique_ptr<sqlite3, Closer> file(handle);
  if (opened != SQLITE_OK) throw FailureOf(opened, handle ? sqlite3_errmsg(handle) : nullptr);
  sqlite3_stmt* statement = nullptr;
  int code = sqlite3_prepare_v2(handle, "VACUUM INTO ?", -1, &statement, nullptr);
  const std::string name = Utf8(to);
  if (code == SQLITE_OK) {
    sqlite3_bind_text(statement, 1, name.c_str(), -1, SQLITE_STATIC);
    code = sqlite3_step(statement);
  }
  const DatabaseError error = FailureOf(sqlite3_extended_errcode(handle), sqlite3_errmsg(handle));
  sqlite3_finalize(statement);
  if (code != SQLITE_DONE) {
    std::filesystem::remove(to, ignored);  // what was written of it
    throw error;
  }
  SyncToDisk(to);
  SyncToDisk(to.has_parent_path() ? to.parent_path() : std::filesystem::path("."));
}

}  // namespace brenvo
