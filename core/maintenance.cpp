#include "core/maintenance.h"

#include <filesystem>
#include <initializer_list>
#include <string_view>
#include <system_error>

#include "core/modules.h"
#include "core/session.h"
#include "core/transaction.h"
#include "engine/sync.h"

namespace brenvo {
namespace {

constexpr std::string_view kDatabase = "\\Brenvo.MDB";
constexpr std::string_view kBackup = "\\Brenvo.BAK";
constexpr std::string_view kScratch = "\\BrenvoNEW.MDB";
constexpr int kFileNotFound = 53;

void Empty(Session& session, std::string_view title,
           std::initializer_list<std::string_view> statements) {
  if (!session.Messages().AskYesNo(title, "Confermi l'operazione ?")) return;
  const BusyPointer busy(session.Host());
  Transaction transaction(session.Db);
  for (std::string_view statement : statements) session.Db.Execute(statement);
  transaction.Commit();
}

void DeleteFile(const std::filesystem::path& file) {
  std::error_code error;
  if (std::filesystem::remove(file, error)) return;
  if (error) throw DatabaseError(DatabaseError::kPathAccess, error.message() + ": " + file.filename().string());
  throw DatabaseError(kFileNotFound, "File non trovato: " + file.filename().string());
}

void Compact(Session& session) {
  session.CloseForCompaction();
  const std::filesystem::path database = session.File(kDatabase);
  const std::filesystem::path backup = session.File(kBackup);
  const std::filesystem::path scratch = session.File(kScratch);
  // What an interrupted compaction left is no obstacle: it was never the database.
  std::error_code ignored;
  std::filesystem::remove(scratch, ignored);
  Database::CompactDatabase(database, scratch);
  try {
    DeleteFile(backup);
  } catch (const DatabaseError& failure) {
    if (failure.Number != kFileNotFound) throw;  // the first compaction finds no backup
  }
  RenameSafely(database, backup);
  RenameSafely(scratch, database);
  session.ReopenAfterCompaction();
}

}  // namespace

void AzzeraLog(Session& session) {
  if (HasTable(session, "LogAdif")) {
    Empty(session, "Azzeramento Log", {"DELETE * FROM Log", "DELETE * FROM LogAdif"});
  } else {
    Empty(session, "Azzeramento Log", {"DELETE * FROM Log"});
  }
}

void AzzeraContest(Session& session) {
  Empty(session, "Azzeramento Contest", {"DELETE * FROM [Contest Qso]", "DELETE * FROM Contest"});
}

void CompattaDatabase(Session& session) {
  const BusyPointer busy(session.Host());
  try {
    Compact(session);
  } catch (const DatabaseError& failure) {
    session.EndWith(failure, "Compact Database");
  }
}

}  // namespace brenvo
