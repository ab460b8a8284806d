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

namespace brenvo::station {
namespace {

template <class Form>
void Know(core::Session& session, const char* name) {
  session.Windows.Register(name, [&session] { return std::make_unique<Form>(session); });
}

void KnowWindows(core::Session& session) {
  Know<core::RipristinaBackup>(session, "RipristinaBackup");
  Know<log::LogForm>(session, "LogForm");
  Know<log::LogSearch>(session, "LogSearch");
  log::KnowOldQsoBrowsers(session);
  Know<adif::ImportaAdif>(session, "ImportaAdif");
  Know<adif::EsportaAdif>(session, "EsportaAdif");
  Know<tables::UserForm>(session, "User");
  Know<tables::TabellaPrefissi>(session, "TabellaPrefissi");
  Know<tables::TabellaCountry>(session, "TabellaCountry");
  Know<tables::TabellaProvincie>(session, "TabellaProvincie");
  Know<tables::TabellaNote>(session, "TabellaNote");
  Know<tables::HelpForm>(session, "Help");
  Know<maps::MappaSquare>(session, "MappaSquare");
  Know<print::StampaQsl>(session, "StampaQsl");
  Know<contest::ContestForm>(session, "Contest");
  Know<contest::ContestSearch>(session, "ContestSearch");
  Know<contest::ContestQso>(session, "ContestQso");
  Know<contest::ContestNewQso>(session, "ContestNewQso");
  Know<contest::CheckCallContest>(session, "CheckCallContest");
  Know<contest::StatContest>(session, "StatContest");
  Know<awards::StatSel>(session, "StatSel");
  for (const awards::AwardMember& member : awards::AwardMembers()) {
    session.Windows.Register(std::string(member.window), [&session, &member] {
      return std::make_unique<awards::AwardGrid>(session, member);
    });
  }
  Know<awards::Hrd>(session, "Hrd");
  Know<awards::HrdMode>(session, "HrdMode");
  Know<links::TNC>(session, "TNC");
  Know<links::TNCtelnet>(session, "TNCtelnet");
  Know<links::WWConv>(session, "WWConv");
  Know<links::FT736>(session, "FT736");
  Know<links::DxDialog>(session, "DX");
}

void AttachActions(core::Session& session, core::MainFrame& frame) {
  frame.Propagazione.OnClick = [&session] { log::AssignPropagations(session); };
  frame.cmImportaAdif.OnClick = [&session] { adif::ImportaFileAdif(session); };
  frame.cmQslAggiorna.OnClick = [&session] { print::UpdateLogForQsl(session); };
  for (const print::ReportMember& member : print::ReportMembers()) {
    (frame.*member.command).OnClick = [&session, &member] { print::PrintReport(session, member); };
  }
  maps::AttachMapViewer(session, frame);
}

// A journal that must not be applied: the database is offered without it. True when it stands
// there; false when it is of no use either, or not wanted. Both are set aside together.
bool OfferWithoutJournal(core::Session& session, const file::JournalFailure& failure) {
  struct Scratch {
    core::Session& session;
    ~Scratch() { core::DropWithoutJournal(session); }
  } scratch{session};
  const std::optional<core::BackupCopy> alone = core::WithoutJournal(session);
  const std::optional<std::int64_t> contacts =
      alone ? core::ContactsIn(*alone) : std::optional<std::int64_t>();
  if (!contacts) return false;
  const std::string question = fmt::format(
      "{}\nIl database senza il giornale ha {} QSO. Usarlo così ? (Database e giornale vengono "
      "messi "
      "da parte nella cartella Backup.)",
      failure.Description, *contacts);
  if (!session.Messages().AskYesNo("Ripristina backup", question)) return false;
  try {
    core::PutBack(session, *alone);
  } catch (const engine::DatabaseError& damaged) {
    if (damaged.Number != engine::DatabaseError::kNotADatabase) throw;
    return false;
  }
  return true;
}

// Puts a copy in the place of a database that is gone or cannot be used: true when it stands there,
// false when the copy cannot be read. The failure goes on when the operator does not want the copy.
bool Offer(core::Session& session, const engine::DatabaseError& failure,
           const core::BackupCopy& copy, std::string_view what) {
  const std::optional<std::int64_t> contacts = core::ContactsIn(copy);
  if (!contacts) return false;
  const std::string question =
      fmt::format("{}\nC'e' {} con {} QSO. Ripristinare ?", failure.Description, what, *contacts);
  if (!session.Messages().AskYesNo("Ripristina backup", question))
    throw engine::DatabaseError(failure);
  core::PutBack(session, copy);
  return true;
}

// Offers the file that an interrupted compaction or restore has left, else the newest copy that can
// be read; copies of the future, as the clock has it, come last. False when there is none, or when
// no copy helps against this failure.
bool PutBackInstead(core::Session& session, const engine::DatabaseError& failure) {
  const core::BackupCopy before{session.File("\\Brenvo.BAK"), {}, false};
  if (failure.Number == engine::DatabaseError::kFileNotFound) {
    const core::BackupCopy after{session.File("\\BrenvoNEW.MDB"), {}, false};
    if (core::CompactionWasInterrupted(session.AppPath) &&
        (Offer(session, failure, before, "Brenvo.BAK, di una compattazione interrotta,") ||
         Offer(session, failure, after, "BrenvoNEW.MDB, di una compattazione interrotta,"))) {
      core::DropScratch(session);
      return true;
    }
    const auto left = core::LeftByInterruptedPutBack(session.AppPath);
    if (left && Offer(session, failure, *left, "il database " + core::TitleOf(*left))) return true;
  } else if (failure.Number != engine::DatabaseError::kNotADatabase) {
    return false;
  }
  std::vector<core::BackupCopy> copies = core::BackupCopies(session.AppPath);
  std::stable_partition(copies.begin(), copies.end(),
                        [now = session.Now()](const auto& copy) { return copy.made <= now; });
  for (const core::BackupCopy& copy : copies) {
    if (!copy.setAside && Offer(session, failure, copy, "una copia " + core::TitleOf(copy)))
      return true;
  }
  return failure.Number == engine::DatabaseError::kFileNotFound &&
         Offer(session, failure, before, "Brenvo.BAK, dell'ultima compattazione,");
}

core::MainFrame& OpenFrame(core::Session& session) {
  const auto open = [&]() -> core::MainFrame& {
    return static_cast<core::MainFrame&>(
        session.Windows.Adopt(std::make_unique<core::MainFrame>(session)));
  };
  try {
    return open();
  } catch (const file::JournalFailure& failure) {
    session.CloseTables();
    if (!OfferWithoutJournal(session, failure) && !PutBackInstead(session, failure)) throw;
  } catch (const engine::DatabaseError& failure) {
    session.CloseTables();
    if (!PutBackInstead(session, failure)) throw;
  }
  return open();
}

}  // namespace

core::MainFrame* StartStation(core::Session& session) {
  KnowWindows(session);
  try {
    core::MainFrame& frame = OpenFrame(session);
    AttachActions(session, frame);
    session.Windows.Show(frame);
    return &frame;
  } catch (const std::exception& failure) {
    std::string told = core::FailureText(failure);
    std::error_code error;
    if (!std::filesystem::exists(session.File("\\Brenvo.mdb"), error) && !error) {
      const std::string where = core::WhereDataIs(session.AppPath);
      if (!where.empty()) told += "\n\n" + where;
    }
    session.Messages().Show(platform::MessageIcon::kCritical, "Brenvo", told);
    return nullptr;
  }
}

bool StopStation(core::Session& session) {
  forms::Window* frame = session.Windows.Find("Brenvo");
  return frame == nullptr || session.Windows.Unload(*frame);
}

}  // namespace brenvo::station
