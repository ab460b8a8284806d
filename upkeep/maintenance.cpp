#include "upkeep/maintenance.h"

#include <fmt/format.h>

#include <filesystem>
#include <functional>
#include <initializer_list>
#include <string_view>
#include <system_error>

#include "core/files.h"
#include "core/history.h"
#include "core/long_run.h"
#include "core/session.h"
#include "core/transaction.h"
#include "file/database_file.h"
#include "file/sync.h"

namespace brenvo::upkeep {
namespace {

constexpr std::string_view kDatabase = "\\Brenvo.MDB";
constexpr std::string_view kDatabaseName = "Brenvo.mdb";
constexpr std::string_view kBackup = "\\Brenvo.BAK";
constexpr std::string_view kScratch = "\\BrenvoNEW.MDB";
constexpr int kFileNotFound = 53;
constexpr std::string_view kCompaction = "Compatta Database";

// Deletes all contacts of a kind; the history keeps them until the compaction.
void Empty(core::Session& session, std::string_view title, core::ContactTable table,
           const std::function<void(core::History&)>& keep,
           std::initializer_list<std::string_view> statements) {
  if (!session.Messages().AskYesNo(title, "Confermi l'operazione ?")) return;
  session.Contacts.ChangeMany(title, {table}, [&] {
    return core::RunLongStatements(session, title,
                                   "Operazione interrotta: tutto è rimasto com'era.", [&] {
                                     core::Transaction transaction(session);
                                     keep(session.Contacts.Past());
                                     for (std::string_view statement : statements)
                                       session.Db.Execute(statement);
                                     transaction.Commit();
                                   });
  });
}

void DeleteFile(const std::filesystem::path& file) {
  std::error_code error;
  if (std::filesystem::remove(file, error)) return;
  if (error) throw file::PathFailure(file, error);
  throw engine::DatabaseError(kFileNotFound, "File non trovato: " + file.filename().string());
}

// What stands beside a contact of a contest goes once neither the contact nor the history has it;
// an entry that was emptied goes with its last band.
void DropContestsThatAreGone(engine::Database& database) {
  const auto lacks = [](std::string_view of, std::string_view table, bool withSerial) {
    return fmt::format(
        " NOT EXISTS (SELECT Banda FROM {1} WHERE {1}.DataContest={0}.DataContest AND "
        "{1}.Banda={0}.Banda{2})",
        of, table, withSerial ? fmt::format(" AND {1}.ProgrDato={0}.ProgrDato", of, table) : "");
  };
  database.Execute("DELETE * FROM GareQso WHERE" + lacks("GareQso", "[Contest Qso]", true) +
                   " AND" + lacks("GareQso", "StoriaContestQso", true));
  database.Execute("DELETE * FROM GareBande WHERE Gara IN (SELECT Gara FROM Gare WHERE Azzerata)" +
                   (" AND" + lacks("GareBande", "[Contest Qso]", false)) + " AND" +
                   lacks("GareBande", "Contest", false) + " AND" +
                   lacks("GareBande", "StoriaContestQso", false) + " AND" +
                   lacks("GareBande", "StoriaContest", false));
  database.Execute(
      "DELETE * FROM Gare WHERE Azzerata AND Gara NOT IN (SELECT Gara FROM GareBande)");
}

// A contact leaves what is kept beside it to the compaction, like the room that it took: its number
// is not given again, so nothing finds it but the history that may bring it back.
void DropWhatIsKeptNoLonger(core::Session& session) {
  const core::LongStatement watched(session, kCompaction);
  core::Transaction transaction(session.Db);
  core::ThinHistory(session.Db, session.Now(), session.Choices.Get<core::choice::kHistoryDays>(),
                    session.Choices.Get<core::choice::kHistoryContacts>());
  for (const char* table : {"LogAdif", "LogOrigine", "Verificati", "LogQsl", "EntitaQso",
                            "LogConferme", "LogInviati"}) {
    session.Db.Execute(std::string("DELETE * FROM ") + table +
                       " WHERE QsoNr NOT IN (SELECT QsoNr FROM Log) AND QsoNr NOT IN (SELECT "
                       "QsoNr FROM StoriaLog)");
  }
  DropContestsThatAreGone(session.Db);
  core::DropEntityLoads(session.Db);
  transaction.Commit();
}

void CloseAll(core::Session& session) { session.CloseForCompaction(); }

std::int64_t SizeOf(const std::filesystem::path& file) {
  std::error_code error;
  const auto size = std::filesystem::file_size(file, error);
  return error ? 0 : static_cast<std::int64_t>(size);
}

void WriteScratch(core::Session& session) {
  DropScratch(session);
  const std::filesystem::path from = session.File(kDatabase), to = session.File(kScratch);
  const auto progress = session.Machine.ShowProgress(kCompaction, SizeOf(from));
  file::CompactDatabase(from, to, [&] { return progress->Advance(SizeOf(to)); });
}

void DeleteBackup(core::Session& session) {
  session.RequireNoOtherProgram();
  try {
    DeleteFile(session.File(kBackup));
  } catch (const engine::DatabaseError& failure) {
    if (failure.Number != kFileNotFound) throw;  // the first compaction finds no backup
  }
}

void KeepAsBackup(core::Session& session) {
  file::RenameSafely(session.File(kDatabase), session.File(kBackup));
}

void PutInPlace(core::Session& session) {
  file::RenameSafely(session.File(kScratch), session.AppPath / kDatabaseName);
}

void ReopenAll(core::Session& session) { session.ReopenAfterCompaction(); }

// False when the operator has stopped it, before any file was renamed.
bool Compact(core::Session& session) {
  try {
    for (const CompactionStep step : CompactionSteps()) step(session);
    return true;
  } catch (const engine::DatabaseError& failure) {
    if (failure.Number != engine::DatabaseError::kStopped) throw;
  }
  DropScratch(session);
  if (!session.IsOpen()) ReopenAll(session);
  return false;
}

}  // namespace

void AzzeraLog(core::Session& session) {
  Empty(session, "Azzeramento Log", core::ContactTable::kLog,
        [](core::History& past) { past.KeepWhere(""); }, {"DELETE * FROM Log"});
}

void AzzeraContest(core::Session& session) {
  Empty(session, "Azzeramento Contest", core::ContactTable::kContestQso,
        [](core::History& past) {
          past.KeepContestQsos("");
          past.KeepContests("");
        },
        {"DELETE * FROM [Contest Qso]", "DELETE * FROM Contest",
         // What stands beside them stays as long as they can be taken back.
         "UPDATE Gare SET Azzerata=True"});
}

std::span<const CompactionStep> CompactionSteps() {
  static constexpr CompactionStep kSteps[] = {
      DropWhatIsKeptNoLonger, CloseAll,   WriteScratch, DeleteBackup,
      KeepAsBackup,           PutInPlace, ReopenAll};
  return kSteps;
}

void DropScratch(core::Session& session) {
  std::error_code ignored;
  std::filesystem::remove(session.File(kScratch), ignored);
}

bool CompactionWasInterrupted(const std::filesystem::path& directory) {
  std::error_code error;
  return std::filesystem::is_regular_file(core::FileIn(directory, kBackup), error) &&
         std::filesystem::is_regular_file(core::FileIn(directory, kScratch), error);
}

std::string WhereDataIs(const std::filesystem::path& directory) {
  for (const std::string_view name : {kScratch, kBackup}) {
    const std::filesystem::path file = core::FileIn(directory, name);
    std::error_code error;
    if (!std::filesystem::is_regular_file(file, error)) continue;
    return "Una compattazione interrotta ha lasciato i dati in " + file.filename().string() +
           ": rinominarlo in " + std::string(kDatabaseName) + ".";
  }
  return "";
}

void CompattaDatabase(core::Session& session) {
  const forms::BusyPointer busy(session.Host());
  try {
    if (Compact(session)) return;
  } catch (const engine::DatabaseError& failure) {
    session.EndWith(failure, "Compact Database");
  }
  session.Messages().Show(platform::MessageIcon::kExclamation, kCompaction,
                          "Compattazione interrotta: il database è rimasto com'era.");
}

}  // namespace brenvo::upkeep
