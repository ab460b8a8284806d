#include "station/station.h"

#include <fmt/format.h>

#include <algorithm>
#include <filesystem>
#include <memory>
#include <optional>

#include "adif/esporta_adif.h"
#include "adif/importa_adif.h"
#include "awards/award_grid.h"
#include "awards/stat_sel.h"
#include "awards/worked_matrix.h"
#include "contest/check_call_contest.h"
#include "contest/contest_form.h"
#include "contest/contest_new_qso.h"
#include "contest/contest_qso.h"
#include "contest/contest_search.h"
#include "contest/stat_contest.h"
#include "core/backup.h"
#include "core/files.h"
#include "core/maintenance.h"
#include "core/ripristina_backup.h"
#include "file/journal.h"
#include "links/dx_dialog.h"
#include "links/ft736.h"
#include "links/tnc.h"
#include "links/tnc_telnet.h"
#include "links/wwconv.h"
#include "log/log_form.h"
#include "log/log_search.h"
#include "log/old_qso.h"
#include "log/propagation_batch.h"
#include "maps/map_viewer.h"
#include "maps/mappa_square.h"
#include "print/qsl_update.h"
#include "print/reports.h"
#include "print/stampa_qsl.h"
#include "tables/help_form.h"
#include "tables/tabella_country.h"
#include "tables/tabella_note.h"
#include "tables/tabella_prefissi.h"
#include "tables/tabella_provincie.h"
#include "tables/user_form.h"

namespace brenvo {
namespace {

template <class Form>
void Know(Session& session, const char* name) {
  session.Windows.Register(name, [&session] { return std::make_unique<Form>(session); });
}

void KnowWindows(Session& session) {
  Know<RipristinaBackup>(session, "RipristinaBackup");
  Know<LogForm>(session, "LogForm");
  Know<LogSearch>(session, "LogSearch");
  KnowOldQsoBrowsers(session);
  Know<ImportaAdif>(session, "ImportaAdif");
  Know<EsportaAdif>(session, "EsportaAdif");
  Know<UserForm>(session, "User");
  Know<TabellaPrefissi>(session, "TabellaPrefissi");
  Know<TabellaCountry>(session, "TabellaCountry");
  Know<TabellaProvincie>(session, "TabellaProvincie");
  Know<TabellaNote>(session, "TabellaNote");
  Know<HelpForm>(session, "Help");
  Know<MappaSquare>(session, "MappaSquare");
  Know<StampaQsl>(session, "StampaQsl");
  Know<ContestForm>(session, "Contest");
  Know<ContestSearch>(session, "ContestSearch");
  Know<ContestQso>(session, "ContestQso");
  Know<ContestNewQso>(session, "ContestNewQso");
  Know<CheckCallContest>(session, "CheckCallContest");
  Know<StatContest>(session, "StatContest");
  Know<StatSel>(session, "StatSel");
  for (const AwardMember& member : AwardMembers()) {
    session.Windows.Register(std::string(member.window), [&session, &member] {
      return std::make_unique<AwardGrid>(session, member);
    });
  }
  Know<Hrd>(session, "Hrd");
  Know<HrdMode>(session, "HrdMode");
  Know<TNC>(session, "TNC");
  Know<TNCtelnet>(session, "TNCtelnet");
  Know<WWConv>(session, "WWConv");
  Know<FT736>(session, "FT736");
  Know<DxDialog>(session, "DX");
}

void AttachActions(Session& session, MainFrame& frame) {
  frame.Propagazione.OnClick = [&session] { AssignPropagations(session); };
  frame.cmImportaAdif.OnClick = [&session] { ImportaFileAdif(session); };
  frame.cmQslAggiorna.OnClick = [&session] { UpdateLogForQsl(session); };
  for (const ReportMember& member : ReportMembers()) {
    (frame.*member.command).OnClick = [&session, &member] { PrintReport(session, member); };
  }
  AttachMapViewer(session, frame);
}

// A journal that must not be applied: the database is offered without it. True when it stands
// there; false when it is of no use either, or not wanted. Both are set aside together.
bool OfferWithoutJournal(Session& session, const JournalFailure& failure) {
  struct Scratch {
    Session& session;
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
  } catch (const DatabaseError& damaged) {
    if (damaged.Number != DatabaseError::kNotADatabase) throw;
    return false;
  }
  return true;
}

// Puts a copy in the place of a database that is gone or cannot be used: true when it stands there,
// false when the copy cannot be read. The failure goes on when the operator does not want the copy.
bool Offer(Session& session, const DatabaseError& failure, const BackupCopy& copy,
           std::string_view what) {
  const std::optional<std::int64_t> contacts = ContactsIn(copy);
  if (!contacts) return false;
  const std::string question =
      fmt::format("{}\nC'e' {} con {} QSO. Ripristinare ?", failure.Description, what, *contacts);
  if (!session.Messages().AskYesNo("Ripristina backup", question)) throw DatabaseError(failure);
  PutBack(session, copy);
  return true;
}

// Offers the file that an interrupted compaction or restore has left, else the newest copy that can
// be read; copies of the future, as the clock has it, come last. False when there is none, or when
// no copy helps against this failure.
bool PutBackInstead(Session& session, const DatabaseError& failure) {
  const BackupCopy before{session.File("\\Brenvo.BAK"), {}, false};
  if (failure.Number == DatabaseError::kFileNotFound) {
    const BackupCopy after{session.File("\\BrenvoNEW.MDB"), {}, false};
    if (CompactionWasInterrupted(session.AppPath) &&
        (Offer(session, failure, before, "Brenvo.BAK, di una compattazione interrotta,") ||
         Offer(session, failure, after, "BrenvoNEW.MDB, di una compattazione interrotta,"))) {
      DropScratch(session);
      return true;
    }
    const auto left = LeftByInterruptedPutBack(session.AppPath);
    if (left && Offer(session, failure, *left, "il database " + TitleOf(*left))) return true;
  } else if (failure.Number != DatabaseError::kNotADatabase) {
    return false;
  }
  std::vector<BackupCopy> copies = BackupCopies(session.AppPath);
  std::stable_partition(copies.begin(), copies.end(),
                        [now = session.Now()](const auto& copy) { return copy.made <= now; });
  for (const BackupCopy& copy : copies) {
    if (!copy.setAside && Offer(session, failure, copy, "una copia " + TitleOf(copy))) return true;
  }
  return failure.Number == DatabaseError::kFileNotFound &&
         Offer(session, failure, before, "Brenvo.BAK, dell'ultima compattazione,");
}

MainFrame& OpenFrame(Session& session) {
  const auto open = [&]() -> MainFrame& {
    return static_cast<MainFrame&>(session.Windows.Adopt(std::make_unique<MainFrame>(session)));
  };
  try {
    return open();
  } catch (const JournalFailure& failure) {
    session.CloseTables();
    if (!OfferWithoutJournal(session, failure) && !PutBackInstead(session, failure)) throw;
  } catch (const DatabaseError& failure) {
    session.CloseTables();
    if (!PutBackInstead(session, failure)) throw;
  }
  return open();
}

}  // namespace

MainFrame* StartStation(Session& session) {
  KnowWindows(session);
  try {
    MainFrame& frame = OpenFrame(session);
    AttachActions(session, frame);
    session.Windows.Show(frame);
    return &frame;
  } catch (const std::exception& failure) {
    std::string told = FailureText(failure);
    std::error_code error;
    if (!std::filesystem::exists(session.File("\\Brenvo.mdb"), error) && !error) {
      const std::string where = WhereDataIs(session.AppPath);
      if (!where.empty()) told += "\n\n" + where;
    }
    session.Messages().Show(MessageIcon::kCritical, "Brenvo", told);
    return nullptr;
  }
}

bool StopStation(Session& session) {
  Window* frame = session.Windows.Find("Brenvo");
  return frame == nullptr || session.Windows.Unload(*frame);
}

}  // namespace brenvo
