#include "file/sqlite_file.h"

#include <mutex>

namespace brenvo {

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
  if (code != SQLITE_OK) throw FailureOf(code, file ? sqlite3_errmsg(file.get()) : nullptr);
  return file;
}

void RunSql(sqlite3* file, const char* sql) {
  if (sqlite3_exec(file, sql, nullptr, nullptr, nullptr) != SQLITE_OK) throw LastFailureOf(file);
}

std::string Utf8Name(const std::filesystem::path& path) {
  const std::u8string name = path.u8string();
  return {name.begin(), name.end()};
}

DatabaseError FailureOf(int extendedCode, const char* message) {
  const std::string detail = message == nullptr ? "" : " (" + std::string(message) + ")";
  switch (extendedCode & 0xFF) {
    case SQLITE_CONSTRAINT:
      if (extendedCode == SQLITE_CONSTRAINT_UNIQUE ||
          extendedCode == SQLITE_CONSTRAINT_PRIMARYKEY || extendedCode == SQLITE_CONSTRAINT_ROWID) {
        return {DatabaseError::kDuplicateKey,
                "La modifica creerebbe un valore ripetuto in un indice senza ripetizioni."};
      }
      return {DatabaseError::kFailed, "Il database rifiuta la modifica" + detail + "."};
    case SQLITE_FULL:
      return {DatabaseError::kDiskFull, "Spazio su disco insufficiente."};
    case SQLITE_READONLY:
    case SQLITE_PERM:
      return {DatabaseError::kReadOnly, "Il database e' di sola lettura."};
    case SQLITE_CANTOPEN:  // what stands beside a database while it is open
      return {DatabaseError::kReadOnly, "Nella directory del file non si puo' scrivere."};
    case SQLITE_BUSY:
    case SQLITE_LOCKED:
      return {DatabaseError::kLocked, "Il database e' bloccato da un altro programma."};
    case SQLITE_CORRUPT:
    case SQLITE_NOTADB:
      return {DatabaseError::kNotADatabase, "Il file del database e' danneggiato" + detail + "."};
    case SQLITE_INTERRUPT:
      return {DatabaseError::kStopped, "Operazione interrotta."};
    case SQLITE_AUTH:
      return {DatabaseError::kInvalidOperation, "Operazione non permessa."};
    default:
      return {DatabaseError::kFailed, "Errore del database" + detail + "."};
  }
}

DatabaseError LastFailureOf(sqlite3* file) {
  return FailureOf(sqlite3_extended_errcode(file), sqlite3_errmsg(file));
}

}  // namespace brenvo
