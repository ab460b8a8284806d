#include "frame/main_frame.h"

#include <fmt/format.h>

#include "base/text.h"
#include "core/log_contact.h"
#include "core/log_time.h"
#include "core/long_run.h"
#include "core/prefix.h"
#include "core/shared_windows.h"
#include "core/station_profile.h"
#include "core/stations.h"
#include "core/texts.h"
#include "core/transaction.h"
#include "core/window_place.h"
#include "frame/keys.h"
#include "frame/palette.h"
#include "upkeep/backup.h"
#include "upkeep/ripristina_backup.h"
#include "upkeep/schema_steps.h"

namespace brenvo::frame {
namespace {

namespace column = core::column;

constexpr std::string_view kFirstStep =
    "Per cominciare: Utility > Tabella Utente (Ctrl+U), e scrivere il proprio nominativo e il "
    "locator.\nPoi Log (Ctrl+L): nominativo, banda, F2. L'aiuto è sempre al tasto F1.\n"
    "Le scelte sono in Utility > Preferenze (Ctrl+,).";
// Between two looks at the clock, milliseconds.
constexpr int kClockInterval = 1000;

// Gives the contact its prefix with zones and continent. Only what differs is written: each column
// has an index to keep, and most contacts have all of it already.
void AssignPrefix(core::ContactDoor& contacts, engine::Table& log,
                  const core::ResolvedPrefix& resolved) {
  const std::pair<std::string_view, engine::Value> columns[] = {
      {column::kPrefisso, base::PadRight(resolved.Prefisso, 5)},
      {column::kZonaCQ, resolved.ZonaCQ},
      {column::kZonaITU, resolved.ZonaITU},
      {column::kContinente, resolved.Continente}};
  std::vector<const std::pair<std::string_view, engine::Value>*> different;
  for (const auto& each : columns) {
    if (log.Field(each.first) != each.second) different.push_back(&each);
  }
  if (different.empty()) return;
  contacts.Change(core::ContactTable::kLog, log, [&](engine::EditableRecordset& row) {
    for (const auto* each : different) row.Set(each->first, each->second);
  });
}

}  // namespace

MainFrame::MainFrame(core::Session& session)
    : forms::Window(session.Host(), "Brenvo", "Brenvo", base::Twips(15360), base::Twips(11520)),
      session_(session) {
  MenuBar = {&cmLog,      &cmContest,        &menuStatistiche, &menuQsl,
             &menuStampe, &menuComunication, &menuUtility,     &menuMappa};
  windowLoading_ = session.Windows.Loading.Subscribe(
      [&session](forms::Window& window) { Keys(session).PutOn(window); });
  session_.IsOutOfDate = upkeep::IsOutOfDate;
  session_.BringUpToDate = [this] { BringUpToDate(); };
  HDisplayMappa.SetVisible(false);
  HDisplayMappa.OnChange = [this] {
    if (OnDisplayMap) OnDisplayMap(HDisplayMappa.Text());
  };
}

MainFrame::~MainFrame() {
  if (session_.Map.Door == this) session_.Map.Door = nullptr;
  session_.IsOutOfDate = nullptr;
}

void MainFrame::Load() {
  core::RestoreWindow(session_, *this, "Brenvo");
  session_.Open();
  session_.Map.Door = this;
  const auto tell = [this](const std::string& text) { StatusBar1.SetPanel(1, text); };
  Backup = std::make_unique<upkeep::DailyBackup>(session_, tell);
  Backup->Start();
  profileStored_ = session_.Station.ProfileStored.Subscribe([this] {
    ShowFirstStep();
    FollowProfile();
  });
  stationChanged_ = session_.Station.CurrentChanged.Subscribe([this] { ShowStation(); });
  reopened_ = session_.Reopened.Subscribe([this] { ShowStation(); });
  Worked = std::make_unique<worked::Keeper>(session_, tell);
  logRead_ = Worked->Read.Subscribe([this](const worked::LogRead& read) {
    if (read.withoutOrigin.empty()) return;
    const std::int64_t found = session_.Contacts.AdoptOthers();
    if (found > 0)
      StatusBar1.SetPanel(1, fmt::format("Trovati {} Qso scritti da un altro programma", found));
  });
  Worked->Start();
  ShowFirstStep();
  ShowStation();
  choiceChanged_ =
      session_.Choices.Changed.Subscribe([this](const core::Choice&) { ShowClocks(); });
  clockTimer_ = session_.Machine.MakeTimer();
  clockTimer_->OnTick = [this] { ShowClocks(); };
  clockTimer_->SetInterval(kClockInterval);
  clockTimer_->SetEnabled(true);
  ShowClocks();
}

void MainFrame::ShowClocks() {
  const core::Preferences& choices = session_.Choices;
  Orologi.SetText(choices.Get<core::choice::kClocks>()
                      ? core::ClocksText(session_, choices.Get<core::choice::kSeconds>())
                      : "");
}

void MainFrame::FollowProfile() {
  core::Transaction transaction(session_.Db);
  const std::string done = core::FollowProfile(session_.Db, session_.Now());
  transaction.Commit();
  if (!done.empty()) StatusBar1.SetPanel(1, done);
  session_.Contacts.StationChanged();
  ShowStation();
}

void MainFrame::ShowStation() {
  Stazione.SetText(core::TitleOf(core::CurrentStationRow(session_.Db)));
}

void MainFrame::BringUpToDate() {
  upkeep::BringUpToDate(session_.AppPath, session_.Now(),
                        [this](std::string_view title, std::int64_t total) {
                          return session_.Machine.ShowProgress(title, total);
                        });
}

void MainFrame::ShowFirstStep() {
  const bool isDelivered = core::ProfileText(session_, "Call") == core::kDeliveredCall;
  PrimoPasso.SetText(isDelivered ? kFirstStep : "");
}

bool MainFrame::QueryUnload() { return session_.Windows.UnloadAllButFirst(); }

void MainFrame::Unload() {
  Services.clear();
  core::SaveWindow(session_, *this, "Brenvo");
  session_.Map.Door = nullptr;
  session_.CloseTables();
}

void MainFrame::DisplayMap(std::string_view request) {
  if (HDisplayMappa.HoldText(request) && OnDisplayMap) OnDisplayMap(request);
}

void MainFrame::MapRectangleDrawn(int left, int top, int width, int height) {
  if (OnMapRectangle) OnMapRectangle(left, top, width, height);
}

void MainFrame::OpenNew(std::string_view name) {
  if (forms::Window* window = session_.Windows.LoadNew(name)) session_.Windows.Show(*window);
}

void MainFrame::OpenSingle(std::string_view name) {
  if (forms::Window* window = session_.Windows.LoadSingle(name)) session_.Windows.Show(*window);
}

void MainFrame::OpenModal(std::string_view name) {
  if (forms::Window* window = session_.Windows.LoadSingle(name))
    session_.Windows.ShowModal(*window);
}

// What is chosen is pressed when the dialog is gone, as if it had been pressed at its own place.
void MainFrame::ShowPalette() {
  auto* palette = static_cast<Palette*>(session_.Windows.LoadSingle("Palette"));
  if (palette == nullptr) return;
  session_.Windows.ShowModal(*palette);
  const std::optional<KnownCommand> chosen = palette->Chosen();
  if (session_.Windows.IsLoaded(palette)) session_.Windows.Unload(*palette);
  if (chosen) PressCommand(session_, *chosen);
}

void MainFrame::OpenSelected(std::string_view name, std::string_view word, bool takesElenca) {
  forms::WindowList& windows = session_.Windows;
  if (!windows.Knows("StatSel") || !windows.Knows(name)) return;
  auto& selection = static_cast<core::SelectionWindow&>(*windows.LoadSingle("StatSel"));
  selection.Tag = word;
  windows.ShowModal(selection);
  const std::optional<std::string> chosen = selection.Chosen();
  if (!chosen) {
    windows.Unload(selection);
    return;
  }
  session_.Handed.QueryText = *chosen;
  if (takesElenca) session_.Handed.ElencaTutto = selection.ListsAll() ? 1 : 0;
  windows.Unload(selection);
  OpenNew(name);
}

// The radio terminal, or, once that is open, the chat client: the second click leads on.
void MainFrame::OpenTerminal() {
  const std::string_view name = !session_.Opened.TncOpen      ? "TNC"
                                : !session_.Opened.WWConvOpen ? "WWConv"
                                                              : std::string_view();
  if (!name.empty()) OpenSingle(name);
}

void MainFrame::PutBackACopy() {
  forms::WindowList& windows = session_.Windows;
  if (!windows.Knows("RipristinaBackup")) return;
  auto& choice = static_cast<upkeep::RipristinaBackup&>(*windows.LoadSingle("RipristinaBackup"));
  windows.ShowModal(choice);
  const std::optional<upkeep::BackupCopy> chosen = choice.Chosen;
  windows.Unload(choice);
  if (!chosen) return;
  bool restored = false;
  try {
    const forms::BusyPointer busy(Host());
    restored = upkeep::RestoreBackup(session_, *chosen);
  } catch (const engine::DatabaseError& failure) {
    if (failure.Number != engine::DatabaseError::kStopped) throw;
    session_.Messages().Show(platform::MessageIcon::kExclamation, "Ripristina backup",
                             "Ripristino interrotto: il database è rimasto com'era.");
    return;
  }
  if (!restored) {
    StatusBar1.SetPanel(1, "Copia non ripristinata: una finestra è in uso e non si chiude");
    return;
  }
  StatusBar1.SetPanel(1, "Ripristinata la copia " + upkeep::TitleOf(*chosen));
  ShowFirstStep();
}

void MainFrame::AssignPrefixes() {
  if (!session_.Messages().AskYesNo("Assegnazione Prefissi", "Confermi l'operazione ?")) return;
  engine::Table& log = *session_.Tables.TbLog;
  log.SetIndex("");
  log.MoveFirst();
  core::ChangeManyContacts(
      session_, "Assegnazione Prefissi", log.RecordCount(), [&](core::LongRun& run) {
        for (; !log.EOF_() && run.Next(); log.MoveNext()) {
          const core::ResolvedPrefix resolved =
              core::ResolvePrefix(session_, core::FieldText(log, column::kCall));
          if (!resolved.Prefisso.empty()) AssignPrefix(session_.Contacts, log, resolved);
        }
      });
}

}  // namespace brenvo::frame
