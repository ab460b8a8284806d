#include "upkeep/rescue.h"

#include <fmt/format.h>

#include <algorithm>
#include <optional>
#include <string_view>
#include <vector>

#include "file/journal.h"
#include "upkeep/backup.h"
#include "upkeep/maintenance.h"

namespace brenvo::upkeep {
namespace {

// A journal that must not be applied: the database is offered without it. True when it stands
// there; false when it is of no use either, or not wanted. Both are set aside together.
bool OfferWithoutJournal(core::Session& session, const file::JournalFailure& failure) {
  struct Scratch {
    core::Session& session;
    ~Scratch() { DropWithoutJournal(session); }
  } scratch{session};
  const std::optional<BackupCopy> alone = WithoutJournal(session);
  const std::optional<std::int64_t> contacts =
      alone ? ContactsIn(*alone) : std::optional<std::int64_t>();
  if (!contacts) return false;
  const std::string question = fmt::format(
      "{}\nIl database senza il giornale ha {} QSO. Usarlo così ? (Database e giornale vengono "
      "messi "
      "da parte nella cartella Backup.)",
      failure.Description, *contacts);
  if (!session.Messages().AskYesNo("Ripristina backup", question)) return false;
  try {
    PutBack(session, *alone);
  } catch (const engine::DatabaseError& damaged) {
    if (damaged.Number != engine::DatabaseError::kNotADatabase) throw;
    return false;
  }
  return true;
}

// Puts a copy in the place of a database that is gone or cannot be used: true when it stands there,
// false when the copy cannot be read. The failure goes on when the operator does not want the copy.
bool Offer(core::Session& session, const engine::DatabaseError& failure, const BackupCopy& copy,
           std::string_view what) {
  const std::optional<std::int64_t> contacts = ContactsIn(copy);
  if (!contacts) return false;
  const std::string question =
      fmt::format("{}\nC'è {} con {} QSO. Ripristinare ?", failure.Description, what, *contacts);
  if (!session.Messages().AskYesNo("Ripristina backup", question))
    throw engine::DatabaseError(failure);
  PutBack(session, copy);
  return true;
}

// Offers the file that an interrupted compaction or restore has left, else the newest copy that can
// be read; copies of the future, as the clock has it, come last. False when there is none, or when
// no copy helps against this failure.
bool OfferCopies(core::Session& session, const engine::DatabaseError& failure) {
  const BackupCopy before{session.File("\\Brenvo.BAK"), {}, false};
  if (failure.Number == engine::DatabaseError::kFileNotFound) {
    const BackupCopy after{session.File("\\BrenvoNEW.MDB"), {}, false};
    if (CompactionWasInterrupted(session.AppPath) &&
        (Offer(session, failure, before, "Brenvo.BAK, di una compattazione interrotta,") ||
         Offer(session, failure, after, "BrenvoNEW.MDB, di una compattazione interrotta,"))) {
      DropScratch(session);
      return true;
    }
    const auto left = LeftByInterruptedPutBack(session.AppPath);
    if (left && Offer(session, failure, *left, "il database " + TitleOf(*left))) return true;
  } else if (failure.Number != engine::DatabaseError::kNotADatabase) {
    return false;
  }
  std::vector<BackupCopy> copies = BackupCopies(session.AppPath);
  std::stable_partition(copies.begin(), copies.end(),
                        [now = session.Now()](const auto& copy) { return copy.made <= now; });
  for (const BackupCopy& copy : copies) {
    if (!copy.setAside && Offer(session, failure, copy, "una copia " + TitleOf(copy))) return true;
  }
  return failure.Number == engine::DatabaseError::kFileNotFound &&
         Offer(session, failure, before, "Brenvo.BAK, dell'ultima compattazione,");
}

}  // namespace

bool PutBackInstead(core::Session& session, const engine::DatabaseError& failure) {
  const auto* journal = dynamic_cast<const file::JournalFailure*>(&failure);
  if (journal != nullptr && OfferWithoutJournal(session, *journal)) return true;
  return OfferCopies(session, failure);
}

}  // namespace brenvo::upkeep
