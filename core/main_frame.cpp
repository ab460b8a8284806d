#include "core/main_frame.h"

#include "base/text.h"
#include "core/backup.h"
#include "core/long_run.h"
#include "core/modules.h"
#include "core/prefix.h"
#include "core/ripristina_backup.h"
#include "core/shared_windows.h"

namespace brenvo::core {
namespace {

constexpr std::string_view kDeliveredCall = "I0XXX";
constexpr std::string_view kFirstStep =
    "Per cominciare: Utility > Tabella Utente (Ctrl+U), e scrivere il proprio nominativo e il "
    "locator.\nPoi Log (Ctrl+L): nominativo, banda, F2. L'aiuto e' sempre al tasto F1.";

// Gives the contact the prefix, zones and continent of the row. Only what differs is written: each
// column has an index to keep, and most contacts have all of it already.
void AssignPrefix(engine::Table& log, engine::Table& prefissi) {
  const std::pair<const char*, engine::Value> columns[] = {
      {"Prefisso", base::PadRight(FieldText(prefissi, "Prefisso"), 5)},
      {"Zona CQ", prefissi.Field("Zona CQ")},
      {"Zona ITU", prefissi.Field("Zona ITU")},
      {"Continente", prefissi.Field("Continente")}};
  bool differs = false;
  for (const auto& [column, value] : columns) {
    if (log.Field(column) == value) continue;
    if (!differs) log.Edit();
    differs = true;
    log.Set(column, value);
  }
  if (differs) log.Update();
}

}  // namespace

MainFrame::MainFrame(Session& session)
    : forms::Window(session.Host(), "Brenvo", "Brenvo", base::Twips(15360), base::Twips(11520)),
      session_(session) {
  MenuBar = {&cmLog,      &cmContest,        &menuStatistiche, &menuQsl,
             &menuStampe, &menuComunication, &menuUtility,     &menuMappa};
  HDisplayMappa.SetVisible(false);
  HDisplayMappa.OnChange = [this] {
    if (OnDisplayMap) OnDisplayMap(HDisplayMappa.Text());
  };
}

MainFrame::~MainFrame() {
  if (session_.Map.Door == this) session_.Map.Door = nullptr;
}

void MainFrame::Load() {
  RestoreWindow(session_, *this, "Brenvo");
  session_.Open();
  session_.Map.Door = this;
  session_.Backup = std::make_unique<DailyBackup>(
      session_, [this](const std::string& text) { StatusBar1.SetPanel(1, text); });
  session_.Backup->Start();
  profileStored_ = session_.Station.ProfileStored.Subscribe([this] { ShowFirstStep(); });
  ShowFirstStep();
}

void MainFrame::ShowFirstStep() {
  const bool isDelivered = ProfileText(session_, "Call") == kDeliveredCall;
  PrimoPasso.SetText(isDelivered ? kFirstStep : "");
}

bool MainFrame::QueryUnload() { return session_.Windows.UnloadAllButFirst(); }

void MainFrame::Unload() {
  SaveWindow(session_, *this, "Brenvo");
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

void MainFrame::OpenSelected(std::string_view name, std::string_view word, bool takesElenca) {
  forms::WindowList& windows = session_.Windows;
  if (!windows.Knows("StatSel") || !windows.Knows(name)) return;
  auto& selection = static_cast<SelectionWindow&>(*windows.LoadSingle("StatSel"));
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
  auto& choice = static_cast<RipristinaBackup&>(*windows.LoadSingle("RipristinaBackup"));
  windows.ShowModal(choice);
  const std::optional<BackupCopy> chosen = choice.Chosen;
  windows.Unload(choice);
  if (!chosen) return;
  const forms::BusyPointer busy(Host());
  if (!RestoreBackup(session_, *chosen)) {
    StatusBar1.SetPanel(1, "Copia non ripristinata: una finestra e' in uso e non si chiude");
    return;
  }
  StatusBar1.SetPanel(1, "Ripristinata la copia " + TitleOf(*chosen));
  ShowFirstStep();
}

void MainFrame::AssignPrefixes() {
  if (!session_.Messages().AskYesNo("Assegnazione Prefissi", "Confermi l'operazione ?")) return;
  engine::Table& log = *session_.Tables.TbLog;
  engine::Table& prefissi = *session_.Tables.TbPrefissi;
  log.SetIndex("");
  log.MoveFirst();
  ChangeManyContacts(session_, "Assegnazione Prefissi", log.RecordCount(), [&](LongRun& run) {
    for (; !log.EOF_() && run.Next(); log.MoveNext()) {
      // It leaves the table of prefixes on the row.
      if (ResolvePrefix(session_, FieldText(log, "Call")).Prefisso.empty()) continue;
      AssignPrefix(log, prefissi);
    }
  });
}

}  // namespace brenvo::core
