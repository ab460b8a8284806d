#include "core/main_frame.h"

#include <algorithm>

#include "base/text.h"
#include "core/backup.h"
#include "core/desktop.h"
#include "core/long_run.h"
#include "core/maintenance.h"
#include "core/modules.h"
#include "core/prefix.h"
#include "core/ripristina_backup.h"
#include "forms/choice_fields.h"

namespace brenvo {
namespace {

constexpr std::string_view kStatistiche = "&Statistiche", kQsl = "&Qsl", kStampe = "Stam&pe",
                           kComunication = "Comunication", kUtility = "&Utility", kMappa = "Mappa";

constexpr std::string_view kDeliveredCall = "I0XXX";
constexpr std::string_view kFirstStep =
    "Per cominciare: Utility > Tabella Utente (Ctrl+U), e scrivere il proprio nominativo e il "
    "locator.\nPoi Log (Ctrl+L): nominativo, banda, F2. L'aiuto e' sempre al tasto F1.";

// Gives the contact the prefix, zones and continent of the row. Only what differs is written: each
// column has an index to keep, and most contacts have all of it already.
void AssignPrefix(Table& log, Table& prefissi) {
  const std::pair<const char*, Value> columns[] = {
      {"Prefisso", PadRight(FieldText(prefissi, "Prefisso"), 5)},
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

const std::vector<MainCommand>& MainMenu() {
  using enum Opening;
  static const std::vector<MainCommand> kMenu = {
      {"", "&Log", "cmLog", kNewInstance, "LogForm", "", false, "Ctrl+L"},
      {"", "&Contest", "cmContest", kNewInstance, "Contest", "", false, "Ctrl+K"},

      {kStatistiche, "&Field", "cmSField", kSelectionFirst, "SField", "FIELD"},
      {kStatistiche, "&Square", "cmSQuare", kSelectionFirst, "SSQuare", "SQUARE"},
      {kStatistiche, "Pre&fissi (WPX)", "cmSPrefissi", kSelectionFirst, "SPrefissi", "PREFISSI"},
      {kStatistiche, "Con&tinenti (WAC)", "cmContinenti", kSelectionFirst, "SContinenti",
       "CONTINENTI"},
      {kStatistiche, "&Zone CQ (WAZ)", "cmZone", kSelectionFirst, "SZone", "ZONE"},
      {kStatistiche, "&Country (DXCC)", "cmSCountry", kSelectionFirst, "SCountry", "COUNTRY", true},
      {kStatistiche, "&Provincie", "cmSProvincie", kSelectionFirst, "SProvincie", "PROVINCIE",
       true},
      {kStatistiche, "Personalizzata con &Note", "cmSNote", kSelectionFirst, "SNote", "NOTE"},
      {kStatistiche, "Worked by Band", "cmHrd", kSingleInstance, "Hrd", "", false, "Ctrl+B"},
      {kStatistiche, "Worked by Mode", "cmHrdMode", kSingleInstance, "HrdMode", "", false,
       "Ctrl+M"},
      {kStatistiche, "Old Qso", "cmOldQso", kSingleInstance, "OldQsoForm", "", false, "Ctrl+O"},
      {kStatistiche, "Old Qso con Locator", "cmOldQsoLocator", kSingleInstance, "OldQsoLocator", "",
       false, "Ctrl+Shift+O"},

      {kQsl, "&Stampa", "cmQslStampa", kModal, "StampaQsl", "", false, "Ctrl+Shift+Q"},
      {kQsl, "&Aggiorna Log", "cmQslAggiorna"},

      {kStampe, "&Log", "cmPLog", kAction, "", "", false, "Ctrl+Shift+P"},
      {kStampe, "Square", "cmPSquare"},
      {kStampe, "Pre&fissi (WPX)", "cmPPrefissi"},
      {kStampe, "Con&tinenti (WAC)", "cmPContinenti"},
      {kStampe, "&Zone (WAZ)", "cmPZone"},
      {kStampe, "&Country (DXCC)", "cmPCountry"},
      {kStampe, "&Provincie", "cmPProvincie"},
      {kStampe, "Personalizzata con &Note", "cmPNote"},

      {kComunication, "FT-736R", "cmFT736", kSingleInstance, "FT736", "", false, "Ctrl+F"},
      {kComunication, "DX cluster radio", "cmTNC", kAction, "", "", false, "Ctrl+R"},
      {kComunication, "DX cluster telnet", "cmDXClusterTelnet", kSingleInstance, "TNCtelnet", "",
       false, "Ctrl+T"},
      {kComunication, "&WWConv telnet", "cmWWConv", kSingleInstance, "WWConv", "", false,
       "Ctrl+Shift+T"},

      {kUtility, "propagazione", "Propagazione"},
      {kUtility, "&Load Desktop", "cmLoadDesktop", kAction, "", "", false, "Ctrl+D"},
      {kUtility, "&Save Desktop", "cmSaveDesktop", kAction, "", "", false, "Ctrl+Shift+D"},
      {kUtility, "Tabella &Prefissi", "cmPrefissi", kSingleInstance, "TabellaPrefissi"},
      {kUtility, "Tabella &Country", "cmCountry", kSingleInstance, "TabellaCountry"},
      {kUtility, "Tabella &Provincie", "cmProvincie", kSingleInstance, "TabellaProvincie"},
      {kUtility, "Tabella &Note", "cmNoteHelp", kSingleInstance, "TabellaNote"},
      {kUtility, "Tabella &Utente", "cmUtente", kSingleInstance, "User", "", false, "Ctrl+U"},
      {kUtility, "Compatta Database", "cmCompatta"},
      {kUtility, "Assegna Prefissi", "cmAssegnaPrefissi"},
      {kUtility, "Azzera Log", "cmAzzeraLog"},
      {kUtility, "Azzera Contest", "cmAzzeraContest"},
      {kUtility, "Ripristina backup...", "cmRipristinaBackup"},
      {kUtility, "Importa ADIF...", "cmImportaAdif"},
      {kUtility, "Esporta ADIF...", "cmEsportaAdif", kModal, "EsportaAdif"},

      {kMappa, "Zoom +", "cmZoom150", kAction, "", "", false, "Ctrl++"},
      {kMappa, "Zoom 1:1", "cmZoom1", kAction, "", "", false, "Ctrl+1"},
      {kMappa, "Zoom -", "cmZoom50", kAction, "", "", false, "Ctrl+-"},
      {kMappa, "Come finestra", "cmFitWindow", kAction, "", "", false, "Ctrl+0"},
      {kMappa, "Print", "cmPrint"},
      {kMappa, "Leggi coordinate", "cmCoordinate"},
  };
  return kMenu;
}

MainFrame::MainFrame(Session& session)
    : Window(session.Host(), "Brenvo", "Brenvo", Twips(15360), Twips(11520)), session_(session) {
  for (const MainCommand& each : MainMenu()) {
    auto command = std::make_unique<Command>(
        *this, std::string(each.name), std::string(each.caption), [this, &each] { Run(each); });
    command->Shortcut = each.shortcut;
    command->Toggle = each.name == "cmCoordinate";
    auto* items = &MenuBar;
    if (!each.menu.empty()) {
      if (menus_.empty() || menus_.back()->Caption() != each.menu) {
        menus_.push_back(std::make_unique<Menu>(*this, "menu" + std::to_string(menus_.size()),
                                                std::string(each.menu)));
        MenuBar.emplace_back(menus_.back().get());
      }
      items = &menus_.back()->Items;
    }
    items->emplace_back(command.get());
    commands_.push_back(std::move(command));
  }
  HDisplayMappa.SetVisible(false);
  HDisplayMappa.OnChange = [this] {
    if (OnDisplayMap) OnDisplayMap();
  };
  actions_["cmTNC"] = [this] { cmTNC(); };
  actions_["cmAssegnaPrefissi"] = [this] { cmAssegnaPrefissi(); };
  actions_["cmLoadDesktop"] = [this] { LoadDesktop(session_); };
  actions_["cmSaveDesktop"] = [this] { SaveDesktop(session_); };
  actions_["cmCompatta"] = [this] { CompattaDatabase(session_); };
  actions_["cmRipristinaBackup"] = [this] { cmRipristinaBackup(); };
  actions_["cmAzzeraLog"] = [this] { AzzeraLog(session_); };
  actions_["cmAzzeraContest"] = [this] { AzzeraContest(session_); };
}

MainFrame::~MainFrame() {
  session_.OnProfileStored = nullptr;
  if (session_.HDisplayMappa == &HDisplayMappa) session_.HDisplayMappa = nullptr;
}

void MainFrame::Load() {
  RestoreWindow(session_, *this, "Brenvo");
  session_.Open();
  session_.HDisplayMappa = &HDisplayMappa;
  session_.Backup = std::make_unique<DailyBackup>(
      session_, [this](const std::string& text) { StatusBar1.SetPanel(1, text); });
  session_.Backup->Start();
  session_.OnProfileStored = [this] { ShowFirstStep(); };
  ShowFirstStep();
}

void MainFrame::ShowFirstStep() {
  const bool isDelivered = FieldText(*session_.TbUser, "Call") == kDeliveredCall;
  PrimoPasso.SetText(isDelivered ? kFirstStep : "");
}

bool MainFrame::QueryUnload() { return session_.Windows.UnloadAllButFirst(); }

void MainFrame::Unload() {
  SaveWindow(session_, *this, "Brenvo");
  session_.HDisplayMappa = nullptr;
  session_.CloseTables();
}

void MainFrame::MapRectangleDrawn(int left, int top, int width, int height) {
  if (OnMapRectangle) OnMapRectangle(left, top, width, height);
}

void MainFrame::SetAction(std::string_view command, std::function<void()> action) {
  actions_[std::string(command)] = std::move(action);
}

void MainFrame::Run(const MainCommand& command) {
  WindowList& windows = session_.Windows;
  switch (command.opening) {
    case Opening::kAction:
      if (const auto action = actions_.find(command.name); action != actions_.end()) {
        action->second();
      }
      break;
    case Opening::kNewInstance:
      if (Window* window = windows.LoadNew(command.window)) windows.Show(*window);
      break;
    case Opening::kSingleInstance:
      if (Window* window = windows.LoadSingle(command.window)) windows.Show(*window);
      break;
    case Opening::kModal:
      if (Window* window = windows.LoadSingle(command.window)) windows.ShowModal(*window);
      break;
    case Opening::kSelectionFirst:
      SelectThenOpen(command);
      break;
  }
}

void MainFrame::SelectThenOpen(const MainCommand& command) {
  WindowList& windows = session_.Windows;
  if (!windows.Knows("StatSel") || !windows.Knows(command.window)) return;
  Window& selection = *windows.LoadSingle("StatSel");
  selection.Tag = command.word;
  windows.ShowModal(selection);
  if (selection.Tag == "Cancel") {
    windows.Unload(selection);
    return;
  }
  session_.QueryText = selection.Tag;
  if (command.keepsElenca) {
    const auto* mark = dynamic_cast<CheckBox*>(selection.FindField("Elenca"));
    session_.ElencaTutto = mark != nullptr && mark->IsOn() ? 1 : 0;
  }
  windows.Unload(selection);
  if (Window* window = windows.LoadNew(command.window)) windows.Show(*window);
}

// The radio terminal, or, once that is open, the chat client: the second click leads on.
void MainFrame::cmTNC() {
  WindowList& windows = session_.Windows;
  const std::string_view name = !session_.TncOpen      ? "TNC"
                                : !session_.WWConvOpen ? "WWConv"
                                                       : std::string_view();
  if (name.empty()) return;
  if (Window* window = windows.LoadSingle(name)) windows.Show(*window);
}

void MainFrame::cmRipristinaBackup() {
  WindowList& windows = session_.Windows;
  if (!windows.Knows("RipristinaBackup")) return;
  auto& choice = static_cast<RipristinaBackup&>(*windows.LoadSingle("RipristinaBackup"));
  windows.ShowModal(choice);
  const std::optional<BackupCopy> chosen = choice.Chosen;
  windows.Unload(choice);
  if (!chosen) return;
  const BusyPointer busy(Host());
  if (!RestoreBackup(session_, *chosen)) {
    StatusBar1.SetPanel(1, "Copia non ripristinata: una finestra e' in uso e non si chiude");
    return;
  }
  StatusBar1.SetPanel(1, "Ripristinata la copia " + TitleOf(*chosen));
  ShowFirstStep();
}

void MainFrame::cmAssegnaPrefissi() {
  if (!session_.Messages().AskYesNo("Assegnazione Prefissi", "Confermi l'operazione ?")) return;
  Table& log = *session_.TbLog;
  Table& prefissi = *session_.TbPrefissi;
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

}  // namespace brenvo
