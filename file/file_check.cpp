#include "file/file_check.h"

#include <cerrno>
#include <fstream>
#include <string>
#include <system_error>

#include "base/system_reason.h"
#include "dialect/schema.h"
#include "file/database_file.h"
#include "file/journal.h"
#include "file/sync.h"
#include "read_schema.h"
#include "sqlite_file.h"

namespace brenvo::file {
namespace {

constexpr std::uint32_t kApplicationId = 0x4252564F;  // "BRVO"

// SQLite keeps room for the longest ending of the files beside a database.
void RequireShortPath(const std::filesystem::path& path) {
  constexpr std::size_t kEnding = 8;
  const auto most = static_cast<std::size_t>(sqlite3_vfs_find(nullptr)->mxPathname) - kEnding;
  std::error_code error;
  std::filesystem::path whole = std::filesystem::canonical(path, error);
  if (error) whole = std::filesystem::absolute(path, error);
  const std::size_t size = Utf8Name(whole).size();
  if (size <= most) return;
  throw engine::DatabaseError(
      engine::DatabaseError::kInvalidPath,
      "Il percorso del database è lungo " + std::to_string(size) + " byte, più dei " +
          std::to_string(most) +
          " possibili: spostare la cartella di lavoro in un'altra dal percorso "
          "più breve.");
}

}  // namespace

void RequireOurFile(const std::filesystem::path& path) {
  std::error_code error;
  const std::filesystem::file_status status = std::filesystem::status(path, error);
  if (status.type() == std::filesystem::file_type::not_found) {
    throw engine::DatabaseError(engine::DatabaseError::kFileNotFound,
                                "Il file '" + path.string() + "' non esiste.");
  }
  if (error) throw PathFailure(path, error);
  if (status.type() != std::filesystem::file_type::regular) {
    throw engine::DatabaseError(engine::DatabaseError::kNotADatabase,
                                "'" + path.string() + "' non è un database.");
  }
  RequireShortPath(path);
  constexpr std::string_view kMagic("SQLite format 3\0", 16);
  constexpr std::size_t kHeader = 100, kApplicationIdAt = 68;
  const std::string header = FirstBytesOf(path, kHeader);
  if (header.empty()) {
    errno = 0;
    if (!std::ifstream(path)) throw PathFailure(path, {errno, std::generic_category()});
  }
  if (header.size() < kHeader || !header.starts_with(kMagic)) {
    throw engine::DatabaseError(engine::DatabaseError::kNotADatabase,
                                "Il file '" + path.filename().string() + "' non è un database.");
  }
  std::uint32_t id = 0;
  for (std::size_t i = 0; i < 4; ++i) {
    id = id << 8 | static_cast<unsigned char>(header[kApplicationIdAt + i]);
  }
  if (id != kApplicationId) {
    throw engine::DatabaseError(
        engine::DatabaseError::kNotADatabase,
        "Il file '" + path.filename().string() + "' non è un database di questo programma.");
  }
}

std::int64_t RowsIn(const std::filesystem::path& database, std::string_view table) {
  RequireOurFile(database);
  if (RequireOwnJournal(database) == Journal::kOwn) {
    engine::Database open = OpenDatabaseFile(database);
    return open.OpenSnapshot("select count(*) from [" + std::string(table) + "]")
        ->Field(0)
        .Integer();
  }
  const SqliteFile file = OpenToRead(database);
  sqlite3_stmt* statement = nullptr;
  const std::string sql = "SELECT count(*) FROM " + QuotedName(table);
  int code = sqlite3_prepare_v2(file.get(), sql.c_str(), -1, &statement, nullptr);
  if (code == SQLITE_OK) code = sqlite3_step(statement);
  const std::int64_t rows = code == SQLITE_ROW ? sqlite3_column_int64(statement, 0) : 0;
  const engine::DatabaseError failure = LastFailureOf(file.get());
  sqlite3_finalize(statement);
  if (code == SQLITE_ROW) return rows;
  // A table that is not there, or a structure that cannot be read.
  if ((code & 0xFF) == SQLITE_ERROR) {
    throw engine::DatabaseError(engine::DatabaseError::kNotADatabase, failure.Description);
  }
  throw failure;
}

}  // namespace brenvo::file
