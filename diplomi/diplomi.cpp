#include "diplomi/diplomi.h"

#include <fmt/format.h>

#include <algorithm>
#include <stdexcept>

#include "application.h"
#include "base/number.h"
#include "base/text.h"
#include "cell_texts.h"
#include "core/open_in_log.h"
#include "core/stations.h"
#include "platform/device_error.h"
#include "worked/load_rules.h"

namespace brenvo::diplomi {
namespace {

constexpr std::string_view kTitle = "Diplomi";
constexpr std::string_view kAwardKey = "Diploma";
constexpr std::string_view kAll = "Tutti", kAllStations = "Tutte", kAllBands = "Tutte";
constexpr std::string_view kShown[] = {"Tutti",      "Da lavorare",    "Da confermare",
                                       "Confermati", "Da accreditare", "Accreditati"};
constexpr std::size_t kFirstBand = 3;  // of the table's columns
constexpr std::size_t kMostContacts = 50;
// So many contacts behind the others make it worth while to read the log anew.
constexpr std::size_t kMostBehind = 5000;
constexpr std::string_view kLetters[] = {"", "L", "C", "A"};

std::string Number(std::int64_t number) {
  return base::FormatNumber(static_cast<double>(number), "#,##0");
}

std::string TotalsText(const Totals& totals) {
  return fmt::format("lavorati {}, confermati {}, accreditati {}", Number(totals.worked),
                     Number(totals.confirmed), Number(totals.credited));
}

std::string Joined(const std::vector<std::string>& texts) {
  std::string joined;
  for (const std::string& each : texts) joined += (joined.empty() ? "" : "; ") + each;
  return joined;
}

// Whether it is known what there is to be worked.
bool HasAllUnits(const Award& award, const World& world) {
  switch (award.unit) {
    case UnitKind::kPrefix:
    case UnitKind::kSquare:
    case UnitKind::kField:
      return false;
    case UnitKind::kReference:
      return world.lists.contains(award.file);
    default:
      return true;
  }
}

}  // namespace

Diplomi::Diplomi(core::Session& session)
    : core::TableWindow(session, "Diplomi", "Diplomi", base::Twips(14400), base::Twips(9000)) {
  ShowCommands({&cmApri, &cmDomanda, &cmStampa});
  DefaultCommand = &cmApri;
  Tabella.ChoosesCells = true;
  Mostra.SetItems({std::begin(kShown), std::end(kShown)});
  Mostra.SetListIndex(0);
  Diploma.OnChange = [this] {
    if (!filling_) AwardChosen();
  };
  Modo.OnChange = Stazione.OnChange = [this] {
    if (!filling_) Recount();
  };
  Banda.OnChange = Mostra.OnChange = [this] {
    if (!filling_) FillTable(ChosenCode());
  };
  reopened_ = session.Reopened.Subscribe([this] { ReadLog(); });
  tables_ = session.ByDate.Changed.Subscribe([this] {
    ReadRules();
    ReadLog();
  });
}

Diplomi::~Diplomi() = default;

void Diplomi::Load() {
  core::TableWindow::Load();
  later_.emplace(
      session_, [this](const auto& changes) { Follow(changes); }, [this] { ReadLog(); });
  ReadRules();
  ReadLog();
  if (!fault_.empty()) {
    Say("Regole che non si leggono: " + fault_);
  } else if (awards_.empty()) {
    Say("Nella cartella Diplomi non c'è nessun file di regole");
  }
}

void Diplomi::Unload() {
  later_.reset();
  if (const Award* const award = Chosen()) session_.SaveSetting(Name(), kAwardKey, award->file);
  core::TableWindow::Unload();
}

// Stations and credits change without a word to those who show contacts.
void Diplomi::Activate() {
  if (!log_) return;
  const std::vector<OwnPlace> places = ReadPlaces(session_);
  const bool samePlaces = std::ranges::equal(places, places_, [](const auto& a, const auto& b) {
    return a.station == b.station && a.country == b.country && a.locator == b.locator;
  });
  if (samePlaces && CreditNumbers() == creditNumbers_) return;
  reading_->ReadCredits(*log_);
  Recount();
}

void Diplomi::ReadRules() {
  fault_.clear();
  const auto tell = [this](const std::string& text) {
    if (fault_.empty()) fault_ = text;
  };
  rules_ = worked::LoadRules(session_, tell);
  world_ = ReadWorld(session_);
  const Award* const chosen = Chosen();
  const std::string file =
      chosen != nullptr ? chosen->file : session_.GetSetting(Name(), kAwardKey, "dxcc");
  awards_ = LoadAwards(session_, *rules_, world_, tell);
  reading_ = std::make_unique<LogReading>(session_, awards_, *rules_);
  std::vector<std::string> names;
  std::size_t at = 0;
  for (const Award& award : awards_) {
    if (award.file == file) at = names.size();
    names.push_back(award.IsComplete() ? award.name : award.name + " (da completare)");
  }
  filling_ = true;
  Diploma.SetItems(std::move(names));
  Diploma.SetListIndex(awards_.empty() ? -1 : static_cast<int>(at));
  filling_ = false;
}

std::string Diplomi::CreditNumbers() {
  std::string numbers;
  const auto rows = session_.Db.OpenSnapshot(
      "select Numero from ConfermeRecord where Stato<>'I' and Crediti<>'' order by Numero");
  for (; !rows->EOF_(); rows->MoveNext()) numbers += rows->Field(std::size_t{0}).Text() + " ";
  return numbers;
}

void Diplomi::ReadLog() {
  if (reading_ == nullptr) return;
  const forms::BusyPointer busy(Host());
  const auto count = session_.Db.OpenSnapshot("select count(*) from Log");
  const auto progress =
      session_.Machine.ShowProgress("Lettura del log", count->Field(std::size_t{0}).Integer());
  count->Close();
  log_ = reading_->Read([&](std::int64_t done) { return progress->Advance(done); });
  if (!log_) Say("Interrotto: la finestra è vuota finché il log non viene letto");
  AwardChosen();
}

void Diplomi::Follow(const std::vector<core::OneContact>& changes) {
  if (!log_) return;
  for (const core::OneContact& change : changes) {
    const auto& stored = change.after ? change.after : change.before;
    if (stored) reading_->ReadAgain(*log_, stored->key);
  }
  if (log_->Behind() > kMostBehind) {
    ReadLog();
  } else {
    Recount();
  }
}

const Award* Diplomi::Chosen() const {
  const int at = Diploma.ListIndex();
  return at < 0 || at >= std::ssize(awards_) ? nullptr : &awards_[static_cast<std::size_t>(at)];
}

Choice Diplomi::ChosenChoice() const {
  Choice choice;
  if (Modo.ListIndex() > 0) choice.mode = Modo.Text();
  const int station = Stazione.ListIndex();
  if (station > 0 && station <= std::ssize(stations_)) {
    choice.station = stations_[static_cast<std::size_t>(station - 1)];
  }
  return choice;
}

std::size_t Diplomi::WantedColumn() const {
  const int at = Banda.ListIndex();
  return at < 0 || at >= static_cast<int>(counted_.Columns()) ? 0 : static_cast<std::size_t>(at);
}

void Diplomi::AwardChosen() {
  const Award* const award = Chosen();
  filling_ = true;
  std::vector<std::string> modes = {std::string(kAll)};
  if (award != nullptr) modes.insert(modes.end(), award->modes.begin(), award->modes.end());
  const std::string mode = Modo.Text();
  const auto same = std::ranges::find(modes, mode);
  const int at = same == modes.end() ? 0 : static_cast<int>(same - modes.begin());
  Modo.SetItems(std::move(modes));
  Modo.SetListIndex(at);
  filling_ = false;
  Recount();
}

void Diplomi::Recount() {
  const std::string code = ChosenCode();
  places_ = ReadPlaces(session_);
  creditNumbers_ = CreditNumbers();
  const Award* const award = Chosen();
  filling_ = true;
  const Choice before = ChosenChoice();
  std::vector<std::string> names = {std::string(kAllStations)};
  int station = 0;
  stations_.clear();
  for (const core::StationRow& each : core::AllStations(session_.Db)) {
    stations_.push_back(each.Stazione);
    if (each.Stazione == before.station) station = static_cast<int>(stations_.size());
    names.push_back(core::TitleOf(each));
  }
  Stazione.SetItems(std::move(names));
  Stazione.SetListIndex(station);
  const std::string band = Banda.Text();
  counted_ = award != nullptr && log_
                 ? Count(*award, *log_, world_, places_, *rules_, ChosenChoice())
                 : Counted();
  std::vector<std::string> bands = {std::string(kAllBands)};
  bands.insert(bands.end(), counted_.bands.begin(), counted_.bands.end());
  const auto same = std::ranges::find(bands, band);
  const int bandAt = same == bands.end() ? 0 : static_cast<int>(same - bands.begin());
  Banda.SetItems(std::move(bands));
  Banda.SetListIndex(bandAt);
  filling_ = false;
  FillTable(code);
  ShowTotals();
}

bool Diplomi::IsShown(std::size_t unit) const {
  using Of = diplomi::State;
  const Of state = counted_.At(unit, WantedColumn()).state;
  switch (Mostra.ListIndex()) {
    case 1:
      return state == Of::kNone;
    case 2:
      return state == Of::kWorked;
    case 3:
      return state >= Of::kConfirmed;
    case 4:
      return state == Of::kConfirmed;
    case 5:
      return state == Of::kCredited;
    default:
      return true;
  }
}

void Diplomi::FillTable(const std::string& chosen) {
  std::optional<std::int64_t> key;
  std::vector<core::KeyedRows::Keyed> rows;
  for (std::size_t unit = 0; unit < counted_.units.size(); ++unit) {
    if (!IsShown(unit)) continue;
    const Unit& each = counted_.units[unit];
    core::KeyedRows::Row cells = {each.code, each.former ? each.name + " (soppresso)" : each.name};
    for (std::size_t column = 0; column < counted_.Columns(); ++column) {
      cells.emplace_back(kLetters[static_cast<std::size_t>(counted_.At(unit, column).state)]);
    }
    if (each.code == chosen) key = static_cast<std::int64_t>(unit);
    rows.push_back({static_cast<std::int64_t>(unit), std::move(cells)});
  }
  rows_.SetKeyed(std::move(rows));
  std::vector<forms::DataGrid::ColumnOf> columns;
  for (const char* heading : {"Codice", "Nome", "Tutte"}) {
    columns.push_back({heading, columns.size(), forms::kOwnSize, {}});
  }
  for (const std::string& band : counted_.bands) {
    columns.push_back({band, columns.size(), forms::kOwnSize, {}});
  }
  const bool same =
      std::ranges::equal(columns, Tabella.ColumnsOf(), {}, &forms::DataGrid::ColumnOf::heading,
                         &forms::DataGrid::ColumnOf::heading);
  filling_ = true;  // the cell is shown once, below
  if (!same) ShowTable(rows_, std::move(columns));
  filling_ = false;
  ShowRows(key);
}

std::string Diplomi::StationsText() const {
  std::vector<core::StationRow> stations = core::AllStations(session_.Db);
  if (stations.empty()) stations.push_back(core::CurrentStationRow(session_.Db));
  std::string text;
  for (const core::StationRow& each : stations) {
    if (std::ranges::find(counted_.stations, each.Stazione) == counted_.stations.end()) continue;
    text += (text.empty() ? "" : ", ") + core::TitleOf(each);
  }
  return text.empty() ? "nessuna stazione" : text;
}

void Diplomi::ShowTotals() {
  const Award* const award = Chosen();
  if (award == nullptr || counted_.totals.empty()) {
    Totali.SetText("");
    return;
  }
  std::vector<std::string> lines;
  std::string line = TotalsText(counted_.totals.front());
  if (HasAllUnits(*award, world_)) {
    line += fmt::format(" su {}", std::ranges::count(counted_.units, false, &Unit::former));
  }
  if (counted_.former.front().worked > 0) {
    line += "; soppressi, a parte: " + TotalsText(counted_.former.front());
  }
  line.front() = 'L';
  lines.push_back(line);
  line.clear();
  for (std::size_t i = 0; i < counted_.bands.size(); ++i) {
    const Totals& totals = counted_.totals[i + 1];
    if (totals.worked == 0) continue;
    line += fmt::format("{}{} {}/{}/{}", line.empty() ? "" : ", ", counted_.bands[i], totals.worked,
                        totals.confirmed, totals.credited);
  }
  if (!line.empty()) lines.push_back("Bande (lavorati/confermati/accreditati): " + line);
  std::string goals;
  for (const Reached& each : GoalsOf(*award, counted_)) {
    if (each.goal->of == LevelOf::kBand && each.now.worked == 0) continue;
    if (!goals.empty()) goals += "; ";
    goals += each.goal->name;
    if (!each.band.empty()) goals += " " + each.band;
    goals += fmt::format(": {}", each.now.confirmed);
    if (each.next) {
      goals += fmt::format(" di {}, ne mancano {}", *each.next, *each.next - each.now.confirmed);
    } else if (!each.goal->counts.empty()) {
      goals += ", raggiunto";
    }
  }
  if (!goals.empty()) lines.push_back("Traguardi, confermati: " + goals);
  if (!counted_.stations.empty() || award->ownWithinKm > 0 || award->ownCountry) {
    lines.push_back("Valgono i Qso di " + StationsText());
  }
  std::string left;
  if (counted_.left.notThen > 0) {
    left =
        fmt::format("{} con un country che quel giorno non c'era", Number(counted_.left.notThen));
  }
  if (counted_.left.otherPlace > 0) {
    left += fmt::format("{}{} fatti da altri luoghi", left.empty() ? "" : ", ",
                        Number(counted_.left.otherPlace));
  }
  if (!left.empty()) lines.push_back("Qso che non contano: " + left);
  if (!award->IsComplete()) lines.push_back("Da completare nelle regole: " + Joined(award->open));
  std::string text;
  for (const std::string& each : lines) text += (text.empty() ? "" : "\n") + each;
  Totali.SetText(text);
}

std::optional<std::size_t> Diplomi::ChosenUnit() {
  const auto key = ChosenKey();
  if (!key || *key >= std::ssize(counted_.units)) return std::nullopt;
  return static_cast<std::size_t>(*key);
}

std::string Diplomi::ChosenCode() {
  const auto unit = ChosenUnit();
  return unit ? counted_.units[*unit].code : std::string();
}

std::size_t Diplomi::ChosenColumn() const {
  const auto at = static_cast<std::size_t>(std::max(Tabella.Column(), 0));
  if (at + 1 < kFirstBand) return WantedColumn();
  return std::min(at - 2, counted_.Columns() - 1);
}

void Diplomi::RowChosen() {
  if (!filling_) ShowCell();
}

void Diplomi::ShowCell() {
  const Award* const award = Chosen();
  const auto unit = ChosenUnit();
  listed_.clear();
  std::vector<std::string> items;
  std::string text;
  if (award != nullptr && unit && log_) {
    const std::size_t column = ChosenColumn();
    const Cell& cell = counted_.At(*unit, column);
    const std::string band = column == 0 ? "" : counted_.bands[column - 1];
    text = ExplainCell(session_, *award, counted_.units[*unit], band, cell);
    if (cell.state != diplomi::State::kNone) {
      const std::vector<Filling> fillings =
          FillingsOf(*award, *log_, world_, places_, *rules_, ChosenChoice(),
                     counted_.units[*unit].code, band, kMostContacts);
      for (const Filling& each : fillings) listed_.push_back(each.key);
      const std::vector<ShownContact> shown = ShownContacts(session_, listed_);
      for (std::size_t i = 0; i < fillings.size(); ++i) {
        const std::string number =
            fillings[i].key < 0 ? "senza Qso" : std::to_string(fillings[i].key);
        items.push_back(fmt::format("{}: {}, {}", number, TextOf(shown[i]),
                                    TextOf(*award, fillings[i].state, fillings[i].by)));
      }
    }
  }
  Casella.SetText(text);
  Contatti.SetEnabled(!items.empty());
  Contatti.SetItems(std::move(items));
  Contatti.SetListIndex(listed_.empty() ? -1 : 0);
}

std::optional<std::int64_t> Diplomi::ContactChosen() const {
  const int at = Contatti.ListIndex();
  if (at < 0 || at >= std::ssize(listed_)) return std::nullopt;
  const std::int64_t key = listed_[static_cast<std::size_t>(at)];
  return key > 0 ? std::optional(key) : std::nullopt;
}

void Diplomi::OpenContact() {
  if (const auto key = ContactChosen()) {
    core::OpenInLog(session_, *key);
  } else {
    Say("La casella non ha un Qso nel log");
  }
}

std::optional<Application> Diplomi::ListToApply() {
  const Award* const award = Chosen();
  if (award == nullptr || !log_) return std::nullopt;
  const std::size_t column = WantedColumn();
  std::vector<std::size_t> units;
  const std::vector<Cell> cells = CellsToApplyFor(*award, counted_, column, units);
  if (cells.empty()) {
    Say("Nessun Qso confermato che non sia già accreditato");
    return std::nullopt;
  }
  Application list;
  list.title = award->name;
  if (column > 0) list.title += " " + counted_.bands[column - 1];
  if (Modo.ListIndex() > 0) list.title += " " + Modo.Text();
  list.subtitle =
      fmt::format("{}, {}: confermati e non ancora accreditati",
                  core::CurrentStationRow(session_.Db).Call, base::DateText(session_.Now()));
  std::vector<std::int64_t> keys;
  for (const Cell& each : cells) keys.push_back(each.key);
  const std::vector<ShownContact> shown = ShownContacts(session_, keys);
  for (std::size_t i = 0; i < cells.size(); ++i) {
    const Unit& unit = counted_.units[units[i]];
    const std::string by =
        cells[i].by < 0 ? "" : award->counting[static_cast<std::size_t>(cells[i].by)].service;
    list.lines.push_back(
        {unit.code, unit.name, shown[i].call, shown[i].band, shown[i].mode, by, shown[i].when});
  }
  return list;
}

void Diplomi::WriteList() {
  const auto list = ListToApply();
  if (!list) return;
  const auto file = session_.Machine.PickNewFile(kTitle, "*.txt *.html *.csv",
                                                 fmt::format("{}.txt", Chosen()->file));
  if (!file) return;
  try {
    WriteApplication(*list, *file);
  } catch (const std::runtime_error& failure) {
    session_.Messages().Show(platform::MessageIcon::kCritical, kTitle, failure.what());
    return;
  }
  Say(fmt::format("{} Qso in {}", list->lines.size(), file->filename().string()));
}

void Diplomi::PrintList() {
  const auto list = ListToApply();
  if (!list) return;
  const forms::BusyPointer busy(Host());
  PrintApplication(*list, session_.Machine.GetPrinter());
  Say(fmt::format("Stampati {} Qso", list->lines.size()));
}

}  // namespace brenvo::diplomi
