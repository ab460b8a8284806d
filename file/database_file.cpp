#include "file/database_file.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "connection.h"
#include "file/sync.h"
#include "file_store.h"
#include "question.h"
#include "sqlite_file.h"

namespace brenvo::file {

engine::Database OpenDatabaseFile(const std::filesystem::path& file) {
  return engine::Database(std::make_unique<FileStore>(file));
}

void CompactDatabase(const std::filesystem::path& from, const std::filesystem::path& to,
                     std::function<bool()> goOn) {
  // Opening proves that the file is one of ours; closing leaves all of it in the one file.
  OpenDatabaseFile(from).Close();
  std::error_code ignored;
  if (std::filesystem::exists(to, ignored)) {
    throw engine::DatabaseError(engine::DatabaseError::kFileExists,
                                "Il database '" + to.string() + "' esiste già.");
  }
  const SqliteFile file = OpenSqliteFile(from);
  std::optional<Question> question;
  if (goOn) question.emplace(file.get(), std::move(goOn));
  sqlite3_stmt* statement = nullptr;
  int code = sqlite3_prepare_v2(file.get(), "VACUUM INTO ?", -1, &statement, nullptr);
  const std::string name = Utf8Name(to);
  if (code == SQLITE_OK) {
    sqlite3_bind_text(statement, 1, name.c_str(), -1, SQLITE_STATIC);
    code = sqlite3_step(statement);
  }
  const engine::DatabaseError error = LastFailureOf(file.get());
  sqlite3_finalize(statement);
  if (code != SQLITE_DONE) {
    std::filesystem::remove(to, ignored);  // what was written of it
    if (question) question->RethrowFailure();
    throw error;
  }
  SyncToDisk(to);
  SyncToDisk(to.has_parent_path() ? to.parent_path() : std::filesystem::path("."));
}

void ChangeStructure(const std::filesystem::path& file, const std::string& statements) {
  Connection(file).ChangeStructure(statements);
}

}  // namespace brenvo::file
