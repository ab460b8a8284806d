#include "gara/gara_contest.h"

#include <fmt/format.h>

#include <algorithm>

#include "base/number.h"
#include "base/text.h"
#include "call_list.h"
#include "contest_log.h"
#include "core/call_forms.h"
#include "core/entry.h"
#include "core/files.h"
#include "core/prefix.h"
#include "core/station_profile.h"
#include "core/texts.h"
#include "geo/locator.h"
#include "read_bytes.h"

namespace brenvo::gara {
namespace {

constexpr std::string_view kFolder = "\\Contest";
constexpr int kTick = 10000;  // milliseconds between two looks at the clock
constexpr std::int64_t kBandStep = 10000000;

// Those of the window that begins then; all where none does or it names none.
std::vector<std::string> BandsAt(const Rule& rule, base::DateTime begin) {
  for (const RuleWindow& window : rule.windows) {
    const auto its = PeriodOf(window, begin.Year());
    if (its && its->begin == begin && !window.bands.empty()) return window.bands;
  }
  return rule.bands;
}

}  // namespace

void GaraRows::SetNumbered(std::vector<std::int64_t> numbers, std::vector<Row> rows) {
  numbers_ = std::move(numbers);
  SetRows(std::move(rows));
}

void GaraRows::PutNumbered(std::int64_t number, Row row) {
  numbers_.insert(numbers_.begin(), number);
  PutFirst(std::move(row), kMost);
}

std::int64_t GaraRows::KeyAt(std::int64_t row) {
  return numbers_.at(static_cast<std::size_t>(core::MemoryRows::KeyAt(row)));
}

std::optional<std::int64_t> GaraRows::RowOf(std::int64_t number) {
  const auto at = std::ranges::find(numbers_, number);
  if (at == numbers_.end()) return std::nullopt;
  return core::MemoryRows::RowOf(at - numbers_.begin());
}

GaraContest::GaraContest(core::Session& session, core::PutContestQso put)
    : core::ArrangedWindow(session, "GaraContest", "Contest con le regole", base::Twips(16800),
                           base::Twips(11400)),
      put_(std::move(put)),
      timer_(session.Machine.MakeTimer()),
      keyer_(session),
      sendingKeys_{&cmTasto1, &cmTasto2, &cmTasto3, &cmTasto4,
                   &cmTasto5, &cmTasto6, &cmTasto7, &cmTasto8} {
  ShowCommands({&cmNuova,
                forms::Separator(),
                &cmInserisci,
                &cmCorreggi,
                &cmCancella,
                &cmSvuota,
                &cmRimetti,
                &cmModo,
                &cmBanda,
                &cmAccetta,
                forms::Separator(),
                &cmVerifica,
                &cmVaiAlQso,
                &cmEsportaEdi,
                &cmEsportaCabrillo,
                &cmEsportaAdif,
                &cmImportaEdi,
                &cmImportaNominativi,
                &cmNelLog,
                &cmStatistiche,
                &cmStampa,
                forms::Separator(),
                &cmHelp});
  DefaultCommand = &cmCorreggi;
  // Esc never closes a contest.
  CancelCommand = &cmSvuota;
  for (forms::TextField* field : {&MioCall, &MioLocator, &MioScambio, &Call, &Scambio, &Locator}) {
    field->Filter = core::UpperKey;
  }
  for (forms::TextField* field : {&RapportoDato, &RapportoRicevuto, &SerialeRicevuto, &Obiettivo}) {
    field->Filter = [](char32_t key) {
      return key == forms::kEnter ? key : core::DigitsOnlyKey(key);
    };
  }
  for (forms::TextField* field :
       {&Call, &RapportoDato, &RapportoRicevuto, &SerialeRicevuto, &Scambio, &Locator, &Quando}) {
    field->OnEnter = [this, field] { EnterPressed(*field); };
  }
  Call.OnChange = [this] { ShowStatus(); };
  Locator.OnChange = [this] { ShowStatus(); };
  Scambio.OnChange = [this] { ShowStatus(); };
  Banda.OnChange = [this] {
    ShowSerial();
    ShowStatus();
  };
  Modo.OnChange = [this] {
    const std::string report = core::UsualReport(Modo.Text(), std::nullopt);
    RapportoDato.SetText(report);
    RapportoRicevuto.SetText(report);
    ShowStatus();
  };
  Regole.OnChange = [this] { RulesChosen(); };
  Gara.OnChange = [this] {
    if (showing_) return;
    const int at = Gara.ListIndex();
    if (at >= 0 && at < std::ssize(entries_)) Open(entries_[static_cast<std::size_t>(at)]);
  };
  for (forms::TextField* field : {&MioCall, &MioLocator, &MioScambio, &Mail, &Obiettivo}) {
    field->OnLeave = [this] { KeepEntry(); };
  }
  Categoria.OnChange = [this] { KeepEntry(); };
  Verifiche.OnDoubleClick = [this] { GoToFinding(); };
  Verifiche.OnKey = [this](char32_t key) {
    if (key != forms::kEnter) return false;
    GoToFinding();
    return true;
  };
  Qso.RowColour = [this](std::int64_t row) {
    constexpr base::Colour kDuplicate{255, 214, 204}, kNew{214, 240, 214};
    if (row > rows_.RowCount()) return base::kWhite;
    const auto place = PlaceOfKey(rows_.KeyAt(row - 1));
    if (!place || count_ == nullptr) return base::kWhite;
    const Worth& worth = count_->Worths()[*place];
    if (worth.duplicateOf) return kDuplicate;
    return worth.multipliers.empty() ? base::kWhite : kNew;
  };
  keyer_.OnEnd = [this](std::string_view why) {
    if (!why.empty()) Say(why);
  };
  timer_->OnTick = [this] { session_.Windows.RunEvent([this] { ShowTime(); }); };
}

GaraContest::~GaraContest() = default;

void GaraContest::Load() {
  core::ArrangedWindow::Load();
  using enum core::ColumnKind;
  ArrangeTable(rows_, {{"Quando"},
                       {"Banda"},
                       {"Modo"},
                       {"Call"},
                       {"Dato"},
                       {"Nr", kNumber},
                       {"Ricevuto"},
                       {"Nr ric.", kNumber},
                       {"Scambio"},
                       {"Locator"},
                       {"Km", kNumber},
                       {"Punti", kNumber},
                       {"Moltiplicatori"},
                       {"Doppio"},
                       {"Nel log", kText, false}});
  Verifiche.SetSource(&findingRows_);
  std::vector<forms::DataGrid::ColumnOf> columns;
  for (const char* heading : {"Peso", "Qso", "Che cosa"}) {
    columns.push_back({heading, columns.size(), forms::kOwnSize, {}});
  }
  Verifiche.SetColumnsOf(std::move(columns));
  ReadRules();
  changes_ = session_.Contacts.Subscribe([this](const core::ContactsChanged& change) {
    if (change.table == core::ContactTable::kContestQso && !storing_) LookAgain();
  });
  choices_ = session_.Choices.Changed.Subscribe([this](const core::Choice& changed) {
    if (changed.section == core::choice::kContestSends.section) ShowSendingKeys();
  });
  ShowSendingKeys();
  timer_->SetInterval(kTick);
  timer_->SetEnabled(true);
  entries_ = ReadEntries(session_.Db);
  if (entries_.empty()) {
    MioCall.SetText(core::ProfileText(session_, "Call"));
    MioLocator.SetText(session_.Station.MyLocator);
    if (Regole.ListIndex() < 0 && !rules_.empty()) Regole.SetListIndex(0);
    FillTable({});
    ShowStatus();
    ShowTotals();
  } else {
    ShowEntries(entries_.front().number);
    Open(entries_.front());
  }
}

void GaraContest::Unload() {
  timer_->SetEnabled(false);
  changes_ = {};
  choices_ = {};
  keyer_.Stop();
  KeepEntry();
  core::ArrangedWindow::Unload();
}

void GaraContest::ReadRules() {
  rules_.clear();
  const std::filesystem::path folder = session_.File(kFolder);
  std::string fault;
  for (const std::string& name : core::FilesOf(folder, ".json")) {
    const auto bytes = ReadBytesOf(folder / name, kMostRuleBytes);
    ReadRule read = ReadRuleText(bytes.value_or(""));
    if (read.faults.empty()) read.faults = FailedExamples(read.rule);
    if (!read.faults.empty()) {
      if (fault.empty()) fault = fmt::format("{}: {}", name, read.faults.front().Text());
      continue;
    }
    read.rule.file = name.substr(0, name.size() - 5);
    rules_.push_back(std::move(read.rule));
  }
  std::ranges::sort(rules_, {}, &Rule::name);
  std::vector<std::string> names;
  for (const Rule& rule : rules_) {
    names.push_back(rule.IsComplete() ? rule.name : rule.name + " (da completare)");
  }
  Regole.SetItems(std::move(names));
  if (!fault.empty()) {
    Say("Regole che non si leggono: " + fault);
  } else if (rules_.empty()) {
    Say("Nella cartella Contest non c'è nessun file di regole");
  }
}

void GaraContest::ShowEntries(std::int64_t number) {
  std::vector<std::string> names;
  int chosen = -1;
  for (const Entry& each : entries_) {
    if (each.number == number) chosen = static_cast<int>(names.size());
    names.push_back(fmt::format("{} {}", base::DateText(each.begin), each.name));
  }
  showing_ = true;
  Gara.SetItems(std::move(names));
  Gara.SetListIndex(chosen);
  showing_ = false;
}

void GaraContest::RulesChosen() {
  const int at = Regole.ListIndex();
  if (at < 0 || at >= std::ssize(rules_) || showing_) return;
  const Rule& rule = rules_[static_cast<std::size_t>(at)];
  const base::DateTime now = session_.Machine.GetClock().UtcNow();
  std::optional<Period> next;
  for (const int year : {now.Year(), now.Year() + 1}) {
    for (const Period& period : PeriodsOf(rule, year)) {
      if (!next && now < period.end) next = period;
    }
  }
  Dal.SetText(base::DateText(next ? next->begin : now));
  Regolamento.SetText(fmt::format("Regole del {}: fa testo la pagina dello sponsor{}{}", rule.year,
                                  rule.page.empty() ? "" : ", ", rule.page));
  for (const std::string& open : rule.open) {
    Regolamento.SetText(Regolamento.Text() + "; da completare: " + open);
  }
}

void GaraContest::Begin() {
  const int at = Regole.ListIndex();
  if (at < 0 || at >= std::ssize(rules_)) return Say("Scegliere le regole del contest");
  const Rule& rule = rules_[static_cast<std::size_t>(at)];
  const auto day = base::ParseDate(Dal.Text());
  if (!day) {
    Say("Il primo giorno si scrive come 07/09/2024");
    return Host().MoveFocus(Dal);
  }
  Entry entry;
  entry.rules = rule.file;
  entry.name = rule.name;
  // The window of that day; on another day its hours count, or the whole day where it has none.
  Period period{day->DatePart(), day->DatePart().Later(24 * 60 * 60)};
  std::vector<std::string> bands = rule.bands;
  bool isItsDay = false;
  for (const RuleWindow& window : rule.windows) {
    const auto its = PeriodOf(window, day->Year());
    if (!its || its->begin.DatePart() != day->DatePart()) continue;
    period = *its;
    if (!window.name.empty()) entry.name = window.name;
    if (!window.bands.empty()) bands = window.bands;
    isItsDay = true;
    break;
  }
  if (!isItsDay && !rule.windows.empty()) {
    const RuleWindow& window = rule.windows.front();
    period.begin = day->DatePart().Later(window.beginMinute * 60);
    period.end = period.begin.Later(window.lengthMinutes * 60);
  }
  for (const std::string& band : bands) {
    if (const std::string why = WhyNoBand(session_, 0, period.begin, band); !why.empty()) {
      return Say(why);
    }
  }
  entry.begin = period.begin;
  entry.end = period.end;
  entry.call = base::Trim(MioCall.Text());
  if (entry.call.empty()) entry.call = base::Trim(core::ProfileText(session_, "Call"));
  entry.locator = base::Trim(MioLocator.Text());
  if (entry.locator.empty()) entry.locator = session_.Station.MyLocator;
  entry.exchange = base::Trim(MioScambio.Text());
  if (entry.exchange.empty() && rule.Part(PartKind::kProvince) != nullptr) {
    entry.exchange = base::Trim(core::ProfileText(session_, "Provincia"));
  }
  entry.mail = base::Trim(Mail.Text());
  entry.number = AddEntry(session_, entry);
  entries_ = ReadEntries(session_.Db);
  ShowEntries(entry.number);
  Open(entry);
  Say(fmt::format("Cominciato {} dal {} {} al {} {} UTC{}", entry.name, base::DateText(entry.begin),
                  core::HourMinute(entry.begin), base::DateText(entry.end),
                  core::HourMinute(entry.end),
                  isItsDay ? "" : ": per le regole non è il suo giorno"));
}

void GaraContest::Open(const Entry& entry) {
  const auto rule = std::ranges::find(rules_, entry.rules, &Rule::file);
  if (rule == rules_.end()) {
    LeaveEntry();
    return Say(fmt::format("Manca il file di regole Contest/{}.json", entry.rules));
  }
  entry_ = std::make_unique<Entry>(entry);
  rule_ = *rule;
  showing_ = true;
  Regole.SetListIndex(static_cast<int>(rule - rules_.begin()));
  std::vector<std::string> categories;
  for (const Category& each : rule_.categories) categories.push_back(each.words);
  Categoria.SetItems(categories);
  Categoria.SetText(
      std::ranges::find(categories, entry.category) == categories.end() ? "" : entry.category);
  MioCall.SetText(entry.call);
  MioLocator.SetText(entry.locator);
  MioScambio.SetText(entry.exchange);
  Mail.SetText(entry.mail);
  Obiettivo.SetText(entry.goal == 0 ? "" : std::to_string(entry.goal));
  Banda.SetItems(BandsAt(rule_, entry.begin));
  Modo.SetItems(rule_.modes);
  showing_ = false;
  RulesChosen();
  Dal.SetText(base::DateText(entry.begin));
  ShowFindings({});
  Reload();
  ClearEntry();
  Banda.SetListIndex(0);
  const auto ssb = std::ranges::find(rule_.modes, "SSB");
  Modo.SetListIndex(ssb == rule_.modes.end() ? 0 : static_cast<int>(ssb - rule_.modes.begin()));
}

void GaraContest::KeepEntry() {
  if (entry_ == nullptr || showing_) return;
  Entry changed = *entry_;
  changed.call = base::Trim(MioCall.Text());
  changed.locator = base::Trim(MioLocator.Text());
  changed.exchange = base::Trim(MioScambio.Text());
  changed.category = Categoria.Text();
  changed.mail = base::Trim(Mail.Text());
  changed.goal = static_cast<std::int64_t>(std::clamp(base::Val(Obiettivo.Text()), 0.0, 1e12));
  const bool counts = changed.locator != entry_->locator || changed.call != entry_->call ||
                      changed.exchange != entry_->exchange;
  if (!counts && changed.category == entry_->category && changed.mail == entry_->mail &&
      changed.goal == entry_->goal) {
    return;
  }
  ChangeEntry(session_, changed);
  *entry_ = changed;
  for (Entry& each : entries_) {
    if (each.number == changed.number) each = changed;
  }
  if (counts) Recount();
  ShowTotals();
  ShowStatus();
}

// Contests may have been emptied, or have come back.
void GaraContest::LookAgain() {
  const std::vector<Entry> entries = ReadEntries(session_.Db);
  const auto same = [](const Entry& a, const Entry& b) { return a.number == b.number; };
  if (!std::ranges::equal(entries, entries_, same)) {
    entries_ = entries;
    const std::int64_t number = entry_ == nullptr ? 0 : entry_->number;
    ShowEntries(number);
    if (std::ranges::find(entries_, number, &Entry::number) == entries_.end()) LeaveEntry();
  }
  Reload();
}

// No contest is open.
void GaraContest::LeaveEntry() {
  entry_.reset();
  count_.reset();
  qsos_.clear();
  places_.clear();
  stations_.clear();
  corrected_.reset();
  FillTable({});
  ShowSerial();
  ShowStatus();
  ShowTotals();
}

void GaraContest::Reload() {
  if (entry_ == nullptr) return;
  qsos_ = ReadQsos(session_, *entry_);
  for (StoredQso& each : qsos_) each.contact.place = PlaceOf(each.contact);
  serials_.clear();
  Recount();
  // Another window, or a work that was taken back, leaves other worths than the rules give.
  std::vector<ChangedWorth> changed;
  for (std::size_t i = 0; i < qsos_.size(); ++i) {
    const Worth& worth = count_->Worths()[i];
    StoredQso& qso = qsos_[i];
    const bool same = qso.worth.points == worth.points &&
                      qso.worth.duplicateOf.has_value() == worth.duplicateOf.has_value();
    if (qso.isBeside && !same) {
      changed.push_back({qso.contact.band, qso.contact.serialSent, worth});
    }
    qso.worth = worth;
  }
  if (!changed.empty() && !session_.Db.InTransaction()) KeepWorths(session_, *entry_, changed);
  ShowSerial();
  ShowStatus();
}

OwnEntry GaraContest::Own() {
  OwnEntry own{entry_->call, entry_->locator, entry_->exchange, {}};
  Contact self;
  self.call = entry_->call;
  self.time = entry_->begin;
  own.place = PlaceOf(self);
  return own;
}

gara::Place GaraContest::PlaceOf(const Contact& contact) {
  const entities::Answer answer = session_.ByDate.Of(contact.call, contact.time);
  if (answer.what == nullptr) return {};
  return {answer.what->country, std::string(answer.continent)};
}

void GaraContest::Recount() {
  count_ = std::make_unique<Count>(rule_, Own());
  places_.clear();
  stations_.clear();
  lookedUp_.reset();
  for (std::size_t i = 0; i < qsos_.size(); ++i) {
    count_->Add(qsos_[i].contact);
    Remember(i);
  }
  FillTable(ChosenKey());
  ShowTotals();
}

std::int64_t GaraContest::KeyOf(const Contact& contact) const {
  const auto at = std::ranges::find(rule_.bands, contact.band);
  return (at - rule_.bands.begin()) * kBandStep + contact.serialSent;
}

void GaraContest::Remember(std::size_t place) {
  const Contact& contact = qsos_[place].contact;
  places_[KeyOf(contact)] = place;
  stations_[core::BaseCall(contact.call)].push_back(place);
}

std::optional<std::size_t> GaraContest::PlaceOfKey(std::int64_t key) const {
  const auto at = places_.find(key);
  return at == places_.end() ? std::nullopt : std::optional(at->second);
}

std::span<const std::size_t> GaraContest::WithStation(std::string_view call) const {
  const auto at = stations_.find(core::BaseCall(call));
  return at == stations_.end() ? std::span<const std::size_t>() : std::span(at->second);
}

core::MemoryRows::Row GaraContest::RowOf(std::size_t place) const {
  const StoredQso& qso = qsos_[place];
  const Contact& contact = qso.contact;
  const auto number = [](std::int64_t value) {
    return value == 0 ? std::string() : std::to_string(value);
  };
  const Worth& worth = count_->Worths()[place];
  std::string multipliers;
  for (const std::string& each : worth.multipliers) {
    multipliers += (multipliers.empty() ? "" : " ") + each;
  }
  const auto km = DistanceKm(entry_->locator, contact.locator, rule_.points.kmPerDegree);
  return {
      fmt::format("{:02}/{:02} {}", contact.time.Day(), contact.time.Month(),
                  core::HourMinute(contact.time)),
      contact.band,
      contact.mode,
      contact.call,
      contact.reportSent,
      number(contact.serialSent),
      contact.reportReceived,
      number(contact.serialReceived),
      contact.exchange,
      contact.locator,
      km ? std::to_string(static_cast<std::int64_t>(*km)) : "",
      std::to_string(worth.points),
      multipliers,
      worth.duplicateOf ? fmt::format("di {}", qsos_[*worth.duplicateOf].contact.serialSent) : "",
      qso.inLog ? "Sì" : ""};
}

void GaraContest::FillTable(std::optional<std::int64_t> key) {
  std::vector<std::int64_t> numbers;
  std::vector<core::MemoryRows::Row> rows;
  for (std::size_t i = qsos_.size(); i-- > 0;) {
    numbers.push_back(KeyOf(qsos_[i].contact));
    rows.push_back(RowOf(i));
  }
  rows_.SetNumbered(std::move(numbers), std::move(rows));
  ShowRows(key);
}

}  // namespace brenvo::gara
