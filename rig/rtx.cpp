#include "rig/rtx.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <stdexcept>

#include "base/number.h"
#include "base/text.h"
#include "core/entry.h"
#include "core/files.h"
#include "core/shared_windows.h"
#include "core/window_place.h"
#include "rig/modelli.h"

namespace brenvo::rig {
namespace {

constexpr std::string_view kYes = "Sì", kNo = "No", kHeadingWord = "ROTORE", kWorldMap = "wm.jpg";
constexpr double kPerSUnit = 6;  // dB

char32_t NumericOrEnter(char32_t key) { return key == forms::kEnter ? key : core::NumericKey(key); }

std::string StrengthText(int overNine) {
  if (overNine > 0) return fmt::format("S9+{}", overNine);
  return fmt::format("S{}",
                     std::clamp(9 + static_cast<int>(std::round(overNine / kPerSUnit)), 0, 9));
}

std::string KhzText(const std::optional<base::Khz>& limit) {
  return limit ? base::PlainNumber(limit->Value()) : std::string();
}

void SetHeadings(forms::DataGrid& grid, TextRows& rows, std::vector<const char*> headings) {
  std::vector<forms::DataGrid::ColumnOf> columns;
  for (const char* heading : headings) {
    columns.push_back({heading, columns.size(), forms::kOwnSize, {}});
  }
  grid.SetSource(&rows);
  grid.SetColumnsOf(std::move(columns));
}

std::size_t IndexOf(std::int64_t row) { return static_cast<std::size_t>(row - 1); }

}  // namespace

Rtx::Rtx(core::Session& session, Transceiver& transceiver, Rotator& rotator, RigServer& server)
    : forms::Window(session.Host(), "Rtx", "Rtx e rotore", base::Twips(9600), base::Twips(8700)),
      session_(session),
      transceiver_(transceiver),
      rotator_(rotator),
      server_(server) {
  Frequenza.Filter = NumericOrEnter;
  Frequenza.OnEnter = [this] { GoToTyped(); };
  Frequenza.OnLeave = [this] { Frequenza.SetText(shown_); };
  Frequenza.OnStep = [this](std::size_t character, int by) { Step(character, by); };
  Modo.OnClick = [this] {
    if (!Modo.Text().empty()) Say(transceiver_.TakeModeOfRig(Modo.Text()));
  };
  Schede.SetPage(0, PanelMemorie, {&Memorie});
  Schede.SetPage(1, PanelModi, {&Modi});
  Schede.SetPage(2, PanelTransverter, {&Transverter});
  Memorie.OnDoubleClick = [this] { GoToRemembered(); };
  Memorie.OnKey = [this](char32_t key) {
    if (key == forms::kEnter) GoToRemembered();
    return key == forms::kEnter;
  };
  Modi.Editable = Transverter.Editable = true;
  Modi.OnBeforeEdit = [this](std::int64_t row, int column, const std::string& text) {
    return EditMode(row, column, text);
  };
  Transverter.OnBeforeEdit = [this](std::int64_t row, int column, const std::string& text) {
    return EditTransverter(row, column, text);
  };
  for (forms::DataGrid* grid : {&Modi, &Transverter}) {
    grid->OnBeforeDelete = [this](std::int64_t) {
      Say("Le righe di questa tabella restano");
      return false;
    };
  }
  Verso.Filter = NumericOrEnter;
  Verso.OnEnter = [this] { TurnToTyped(); };
}

Rtx::~Rtx() = default;

void Rtx::Load() {
  core::RestoreWindow(session_, *this, "Rtx");
  SetHeadings(Memorie, memories_, {"Frequenza", "Modo", "Banda"});
  SetHeadings(Modi, modes_, {"Verso", "Modo", "Diventa", "Da kHz", "A kHz"});
  SetHeadings(Transverter, transverters_, {"Banda", "MHz da aggiungere", "In uso"});
  rigNews_ = transceiver_.LastNews();
  rotorNews_ = rotator_.LastNews();
  rigChanged_ = transceiver_.Changed.Subscribe([this] { Show(); });
  rotorChanged_ = rotator_.Changed.Subscribe([this] { ShowRotator(); });
  serverChanged_ = server_.Changed.Subscribe([this] { Offerta.SetText(server_.StateText()); });
  callTyped_ = session_.CallTyped.Subscribe([this](const core::TypedCall& typed) {
    call_ = base::Trim(typed.call);
    locator_ = base::Trim(typed.locator);
    ShowRotator();
  });
  if (core::LogWindow* log = session_.Opened.CurrentLogForm) call_ = base::Trim(log->ShownCall());
  ShowModes();
  ShowTransverters();
  Offerta.SetText(server_.StateText());
  transceiver_.WindowOpened(true);
  rotator_.WindowOpened(true);
  Show();
  ShowRotator();
}

void Rtx::Unload() {
  callTyped_ = {};
  serverChanged_ = {};
  rotorChanged_ = {};
  rigChanged_ = {};
  rotator_.WindowOpened(false);
  transceiver_.WindowOpened(false);
  core::SaveWindow(session_, *this, "Rtx");
}

void Rtx::Show() {
  Stato.SetText(transceiver_.StateText());
  const auto air = transceiver_.Frequency();
  // What is being typed stays.
  const bool isTyped = Frequenza.Text() != shown_;
  shown_ = air ? FrequencyText(*air) : "";
  if (!isTyped) Frequenza.SetText(shown_);
  std::vector<std::string> modes;
  for (const ModeRule& rule : transceiver_.Modes().Rules()) {
    if (!rule.toRig && std::ranges::count(modes, rule.mode) == 0) modes.push_back(rule.mode);
  }
  const std::string& mode = transceiver_.Mode();
  if (!mode.empty() && std::ranges::count(modes, mode) == 0) modes.push_back(mode);
  if (modes != Modo.Items()) Modo.SetItems(std::move(modes));
  Modo.SetText(mode);
  const auto& now = session_.Rig.Now();
  Banda.SetText(now ? base::Trim(now->banda) : "");
  const auto sends = transceiver_.Sends();
  Split.SetText(sends ? "Split: trasmette su " + FrequencyText(*sends) : "");
  const auto strength = transceiver_.Strength();
  SMeter.SetValue(strength.value_or(SMeter.Minimum()));
  Segnale.SetText(strength ? StrengthText(*strength) : "");
  ShowMemories();
  RefreshCommands();
  if (transceiver_.LastNews() != rigNews_) Say(rigNews_ = transceiver_.LastNews());
}

void Rtx::ShowMemories() {
  std::vector<TextRows::Row> rows;
  for (const RememberedFrequency& each : transceiver_.Remembered()) {
    const Band* const band = transceiver_.StationBands().At(each.frequency);
    rows.push_back({FrequencyText(each.frequency), each.mode,
                    band == nullptr ? std::string() : base::Trim(band->banda)});
  }
  memories_.Set(std::move(rows));
  Memorie.ContentChanged();
}

void Rtx::ShowModes() {
  std::vector<TextRows::Row> rows;
  for (const ModeRule& rule : transceiver_.Modes().Rules()) {
    rows.push_back({rule.toRig ? "Al rtx" : "Dal rtx", rule.mode, rule.becomes, KhzText(rule.from),
                    KhzText(rule.to)});
  }
  modes_.Set(std::move(rows));
  Modi.ContentChanged();
}

void Rtx::ShowTransverters() {
  std::vector<TextRows::Row> rows;
  for (const Band& band : transceiver_.StationBands().All()) {
    const std::string banda = base::Trim(band.banda);
    const auto& all = transceiver_.Transverters();
    const auto at = std::ranges::find(all, banda, &rig::Transverter::banda);
    rows.push_back({banda, at == all.end() ? "" : base::PlainNumber(at->adds.Value()),
                    std::string(at != all.end() && at->inUse ? kYes : kNo)});
  }
  transverters_.Set(std::move(rows));
  Transverter.ContentChanged();
}

void Rtx::GoToTyped() {
  const auto wanted = ReadFrequency(Frequenza.Text(), transceiver_.StationBands());
  Frequenza.SetText(shown_);
  Say(wanted ? transceiver_.TuneTo({*wanted, ""})
             : "La frequenza si scrive in kHz o in MHz: 14250 o 14.250");
  Frequenza.Select(0, base::Len(Frequenza.Text()));
}

void Rtx::GoToRemembered() {
  const auto& all = transceiver_.Remembered();
  if (Memorie.Row() < 1 || IndexOf(Memorie.Row()) >= all.size()) return;
  // A copy: going there may put it elsewhere.
  const RememberedFrequency chosen = all[IndexOf(Memorie.Row())];
  Say(transceiver_.TuneTo(chosen));
}

void Rtx::Step(std::size_t character, int by) {
  const auto air = transceiver_.Frequency();
  const std::string& text = Frequenza.Text();
  if (!air || text != shown_ || character >= text.size() || text[character] == '.') return;
  double weight = 1;
  for (std::size_t i = character + 1; i < text.size(); ++i) {
    if (text[i] != '.') weight *= 10;
  }
  const base::Hz wanted = *air + base::Hz(weight * by);
  if (wanted.Value() <= 0) return;
  const std::size_t behind = text.size() - character;  // the digit's place, however long it gets
  Say(transceiver_.TuneTo({wanted, ""}));
  if (Frequenza.Text().size() >= behind) Frequenza.Select(Frequenza.Text().size() - behind, 1);
}

bool Rtx::EditMode(std::int64_t row, int column, const std::string& text) {
  const auto& rules = transceiver_.Modes().Rules();
  if (column != 2 || IndexOf(row) >= rules.size()) {
    Say("Qui si cambia solo Diventa; altre righe vanno in ModiRtx propri.csv");
    return false;
  }
  ModeRule rule = rules[IndexOf(row)];
  rule.becomes = base::Trim(text);
  try {
    transceiver_.SetMode(rule);
    Say(fmt::format("{} {}: {}", rule.toRig ? "Al rtx" : "Dal rtx", rule.mode,
                    rule.becomes.empty() ? "il modo resta com'è" : rule.becomes));
  } catch (const std::runtime_error& failure) {
    Say(core::FailureText(failure));
  }
  ShowModes();
  return false;
}

bool Rtx::EditTransverter(std::int64_t row, int column, const std::string& text) {
  const auto& bands = transceiver_.StationBands().All();
  if (column < 1 || IndexOf(row) >= bands.size()) return false;
  std::vector<rig::Transverter> all = transceiver_.Transverters();
  const std::string banda = base::Trim(bands[IndexOf(row)].banda);
  auto at = std::ranges::find(all, banda, &rig::Transverter::banda);
  if (at == all.end()) at = all.insert(all.end(), {banda, {}, false});
  if (column == 1) {
    at->adds = base::Mhz(base::Val(text));
  } else {
    at->inUse = base::Lower(base::Left(base::Trim(text), 1)) == "s";
  }
  Say(at->inUse ? fmt::format("{}: l'rtx più {} MHz", banda, base::PlainNumber(at->adds.Value()))
                : fmt::format("{}: senza transverter", banda));
  transceiver_.SetTransverters(std::move(all));
  ShowTransverters();
  return false;
}

void Rtx::ShowRotator() {
  const auto direction = rotator_.Direction();
  Azimut.SetText(direction ? fmt::format("{:.0f}°", *direction) : "");
  Rotore.SetText(rotator_.StateText());
  const auto beam = call_.empty() ? std::nullopt : BeamTo(session_, call_, locator_);
  Corrispondente.SetText(
      call_.empty() ? ""
      : beam ? fmt::format("{}: {}° corta, {}° lunga", call_, beam->shortPath, beam->longPath % 360)
             : call_ + ": non si sa dove");
  RefreshCommands();
  if (rotator_.LastNews() != rotorNews_) Say(rotorNews_ = rotator_.LastNews());
}

void Rtx::TurnToCall(bool longPath) {
  const auto beam = BeamTo(session_, call_, locator_);
  Say(beam ? rotator_.TurnTo(longPath ? beam->longPath : beam->shortPath)
           : fmt::format("Dove sia {} non si sa: manca il locator", call_));
}

void Rtx::TurnToTyped() {
  const double degrees = base::Val(Verso.Text());
  const bool isDirection = !core::IsEmptyField(Verso.Text()) && degrees >= 0 && degrees <= 360;
  Say(isDirection ? rotator_.TurnTo(degrees) : "I gradi vanno da 0 a 360");
}

void Rtx::ShowOnMap() {
  session_.Map.MapFile = kWorldMap;
  session_.Map.Pointer_X = session_.Map.Pointer_Y = 0;
  // The picture comes anew: an earlier beam goes.
  session_.Map.CurrentMapPath.clear();
  session_.DisplayMap(kHeadingWord);
}

void Rtx::Choose(bool rig) {
  if (!session_.Windows.Knows("Modelli")) return;
  auto& dialog = static_cast<Modelli&>(*session_.Windows.LoadSingle("Modelli"));
  dialog.Ask(rig ? kRigKind : kRotorKind);
  session_.Windows.ShowModal(dialog);
  const bool chosen = dialog.WasChosen();
  if (session_.Windows.IsLoaded(&dialog)) session_.Windows.Unload(dialog);
  if (!chosen) return;
  rig ? transceiver_.SetUpChanged() : rotator_.SetUpChanged();
}

}  // namespace brenvo::rig
