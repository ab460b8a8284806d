#include "sqlite_file.h"

#include <mutex>

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <cstdio>
#include <string_view>
#include <system_error>

#include "base/system_reason.h"

namespace brenvo::file {
namespace {

constexpr int kBusyMilliseconds = 2000;
#ifdef EDQUOT
constexpr int kQuotaUsedUp = EDQUOT;
#else
constexpr int kQuotaUsedUp = -1;
#endif

// What the system says to a new file there; 0 when it takes one.
int RefusalOfNewFile(const std::filesystem::path& directory) {
  const std::filesystem::path probe = directory / ".brenvo-prova";
  std::FILE* const file = std::fopen(Utf8Name(probe).c_str(), "wbx");
  if (file == nullptr) return errno == EEXIST ? 0 : errno;
  std::fclose(file);
  std::error_code ignored;
  std::filesystem::remove(probe, ignored);
  return 0;
}

engine::DatabaseError OpenFailure(int code, const SqliteFile& file,
                                  const std::filesystem::path& path) {
  const int systemError = (code & 0xFF) == SQLITE_CANTOPEN ? RefusalOfNewFile(path.parent_path())
                          : file                           ? sqlite3_system_errno(file.get())
                                                           : 0;
  return FailureOf(code, file ? sqlite3_errmsg(file.get()) : nullptr, systemError);
}

}  // namespace

void StartSqlite() {
  static std::once_flag started;
  // SQLite would count its memory, under a lock at each piece of it; nobody asks.
  std::call_once(started, [] { sqlite3_config(SQLITE_CONFIG_MEMSTATUS, 0); });
}

SqliteFile OpenSqliteFile(const std::filesystem::path& path, int more) {
  StartSqlite();
  sqlite3* opened = nullptr;
  const int code = sqlite3_open_v2(
      Utf8Name(path).c_str(), &opened,
      SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX | SQLITE_OPEN_EXRESCODE | more, nullptr);
  SqliteFile file(opened);
  if (code != SQLITE_OK) throw OpenFailure(code, file, path);
  sqlite3_busy_timeout(opened, kBusyMilliseconds);
  return file;
}

SqliteFile OpenToRead(const std::filesystem::path& path) {
  std::string name = "file:";
  for (const char c : Utf8Name(std::filesystem::absolute(path))) {
    constexpr std::string_view kHex = "0123456789ABCDEF";
    const auto byte = static_cast<unsigned char>(c);
    name += {'%', kHex[byte >> 4], kHex[byte & 15]};
  }
  name += "?immutable=1";
  sqlite3* opened = nullptr;
  const int code = sqlite3_open_v2(
      name.c_str(), &opened,
      SQLITE_OPEN_READONLY | SQLITE_OPEN_URI | SQLITE_OPEN_NOMUTEX | SQLITE_OPEN_EXRESCODE,
      nullptr);
  SqliteFile file(opened);
  if (code != SQLITE_OK) throw OpenFailure(code, file, path);
  return file;
}

std::string FirstBytesOf(const std::filesystem::path& database, std::size_t size) {
  struct Name {
    explicit Name(const std::string& text)
        : own(sqlite3_create_filename(text.c_str(), "", "", 0, nullptr)) {}
    ~Name() { sqlite3_free_filename(const_cast<char*>(own)); }
    Name(const Name&) = delete;
    Name& operator=(const Name&) = delete;
    const char* own;
  };
  StartSqlite();
  if (sqlite3_initialize() != SQLITE_OK) return {};
  sqlite3_vfs* const system = sqlite3_vfs_find(nullptr);
  const Name name(Utf8Name(std::filesystem::absolute(database)));
  if (name.own == nullptr) return {};
  const auto memory = std::make_unique<std::max_align_t[]>(
      static_cast<std::size_t>(system->szOsFile) / sizeof(std::max_align_t) + 1);
  auto* const file = reinterpret_cast<sqlite3_file*>(memory.get());
  int code =
      system->xOpen(system, name.own, file, SQLITE_OPEN_READONLY | SQLITE_OPEN_MAIN_DB, nullptr);
  if (code != SQLITE_OK) return {};
  sqlite3_int64 has = 0;
  code = file->pMethods->xFileSize(file, &has);
  std::string bytes(std::min(size, static_cast<std::size_t>(has)), '\0');
  if (code == SQLITE_OK) {
    code = file->pMethods->xRead(file, bytes.data(), static_cast<int>(bytes.size()), 0);
  }
  file->pMethods->xClose(file);
  return code == SQLITE_OK ? bytes : std::string();
}

void RunSql(sqlite3* file, const char* sql) {
  if (sqlite3_exec(file, sql, nullptr, nullptr, nullptr) != SQLITE_OK) throw LastFailureOf(file);
}

std::string Complaint(sqlite3* file, bool whole) {
  sqlite3_stmt* statement = nullptr;
  const char* const sql = whole ? "PRAGMA integrity_check(1)" : "PRAGMA quick_check(1)";
  int code = sqlite3_prepare_v2(file, sql, -1, &statement, nullptr);
  std::string complaint;
  if (code == SQLITE_OK) {
    code = sqlite3_step(statement);
    if (code == SQLITE_ROW) {
      complaint = reinterpret_cast<const char*>(sqlite3_column_text(statement, 0));
    }
  }
  sqlite3_finalize(statement);
  if (code != SQLITE_ROW) throw LastFailureOf(file);
  return complaint == "ok" ? "" : complaint;
}

std::string Utf8Name(const std::filesystem::path& path) {
  const std::u8string name = path.u8string();
  return {name.begin(), name.end()};
}

engine::DatabaseError FailureOf(int extendedCode, const char* message, int systemError) {
  const std::string detail = message == nullptr ? "" : " (" + std::string(message) + ")";
  const std::error_code why(systemError, std::generic_category());
  const bool noRoom = why == std::errc::no_space_on_device || systemError == kQuotaUsedUp;
  const engine::DatabaseError diskFull = {
      engine::DatabaseError::kDiskFull,
      "Spazio su disco insufficiente: liberare spazio sul disco del database e riprovare."};
  switch (extendedCode & 0xFF) {
    case SQLITE_CONSTRAINT:
      if (extendedCode == SQLITE_CONSTRAINT_UNIQUE ||
          extendedCode == SQLITE_CONSTRAINT_PRIMARYKEY || extendedCode == SQLITE_CONSTRAINT_ROWID) {
        return {engine::DatabaseError::kDuplicateKey,
                "La modifica creerebbe un valore ripetuto in un indice senza ripetizioni."};
      }
      return {engine::DatabaseError::kFailed, "Il database rifiuta la modifica" + detail + "."};
    case SQLITE_FULL:
      return diskFull;
    case SQLITE_READONLY:
    case SQLITE_PERM:
      return {engine::DatabaseError::kReadOnly,
              "Il database è di sola lettura: dare all'utente il permesso di scrivere il file e "
              "la sua cartella."};
    case SQLITE_CANTOPEN:  // what stands beside a database while it is open
      if (noRoom) {
        return {engine::DatabaseError::kDiskFull,
                "Spazio su disco insufficiente: accanto al database non si può creare un file, "
                "perché il disco è pieno o non vi stanno altri file. Cancellare dei file e "
                "riprovare."};
      }
      if (systemError != 0 && why != std::errc::permission_denied &&
          why != std::errc::read_only_file_system) {
        return {engine::DatabaseError::kReadOnly,
                "Nella directory del file non si può scrivere: " + base::ReasonText(why) + "."};
      }
      return {engine::DatabaseError::kReadOnly,
              "Nella directory del file non si può scrivere: dare all'utente il permesso di "
              "scrivervi."};
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
      return {engine::DatabaseError::kLocked,
              "Il database è bloccato da un altro programma: chiuderlo e riprovare."};
    case SQLITE_CORRUPT:
    case SQLITE_NOTADB:
      return {engine::DatabaseError::kNotADatabase,
              "Il file del database è danneggiato" + detail + "."};
    case SQLITE_INTERRUPT:
      return {engine::DatabaseError::kStopped, "Operazione interrotta."};
    case SQLITE_AUTH:
      return {engine::DatabaseError::kInvalidOperation, "Operazione non permessa."};
    case SQLITE_IOERR:
      // The file that programs share beside a database has found no room.
      if (noRoom || extendedCode == SQLITE_IOERR_SHMSIZE) return diskFull;
      return {engine::DatabaseError::kFailed,
              "Errore del disco" + detail +
                  ": controllare il disco su cui sta il database, e il suo collegamento."};
    default:
      return {engine::DatabaseError::kFailed, "Errore del database" + detail + "."};
  }
}

engine::DatabaseError LastFailureOf(sqlite3* file) {
  const int code = sqlite3_extended_errcode(file);
  int systemError = sqlite3_system_errno(file);
  // The last of several tries is not the one that tells why.
  const char* const name = sqlite3_db_filename(file, "main");
  if ((code & 0xFF) == SQLITE_CANTOPEN && name != nullptr && *name != '\0') {
    systemError = RefusalOfNewFile(std::filesystem::path(name).parent_path());
  }
  return FailureOf(code, sqlite3_errmsg(file), systemError);
}

}  // namespace brenvo::file
