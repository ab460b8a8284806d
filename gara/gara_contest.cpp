#include "gara/gara_contest.h"

#include <fmt/format.h>

#include <algorithm>

#include "base/number.h"
#include "base/text.h"
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

}  // namespace

struct GaraContest::Kept {
  std::string call, sent, received, serial, exchange, locator, when;
};

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
      timer_(session.Machine.MakeTimer()) {
  ShowCommands({&cmNuova, forms::Separator(), &cmInserisci, &cmCorreggi, &cmCancella, &cmSvuota,
                &cmModo, &cmBanda, &cmAccetta, forms::Separator(), &cmVerifica, &cmVaiAlQso,
                &cmEsportaEdi, &cmEsportaCabrillo, &cmImportaEdi, &cmNelLog, forms::Separator(),
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
    if (change.table == core::ContactTable::kContestQso && !storing_) Reload();
  });
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
  const auto files = session_.File("\\MASTER.SCP");
  known_.clear();
  constexpr std::size_t kMostBytes = 8 << 20;
  if (const auto bytes = ReadBytesOf(files, kMostBytes)) known_ = CallsOf(*bytes);
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
    entry_.reset();
    count_.reset();
    qsos_.clear();
    FillTable({});
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
  std::vector<std::string> bands;
  for (const std::string& band : rule_.bands) {
    for (const RuleWindow& window : rule_.windows) {
      const auto its = PeriodOf(window, entry.begin.Year());
      const bool isNow = its && its->begin == entry.begin;
      if (isNow && !window.bands.empty() &&
          std::ranges::find(window.bands, band) == window.bands.end()) {
        goto next;
      }
    }
    bands.push_back(band);
  next:;
  }
  Banda.SetItems(bands);
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

void GaraContest::Reload() {
  if (entry_ == nullptr) return;
  qsos_ = ReadQsos(session_, *entry_);
  for (StoredQso& each : qsos_) each.contact.place = PlaceOf(each.contact);
  serials_.clear();
  Recount();
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
  worked_.clear();
  for (const StoredQso& each : qsos_) {
    count_->Add(each.contact);
    worked_.insert(each.contact.call);
  }
  FillTable(ChosenKey());
  ShowTotals();
}

std::int64_t GaraContest::KeyOf(const Contact& contact) const {
  const auto at = std::ranges::find(rule_.bands, contact.band);
  return (at - rule_.bands.begin()) * kBandStep + contact.serialSent;
}

std::optional<std::size_t> GaraContest::PlaceOfKey(std::int64_t key) const {
  // The newest ones are asked for most.
  for (std::size_t i = qsos_.size(); i-- > 0;) {
    if (KeyOf(qsos_[i].contact) == key) return i;
  }
  return std::nullopt;
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

bool GaraContest::Wants(PartKind kind) const { return rule_.Part(kind) != nullptr; }

std::optional<GaraContest::Lack> GaraContest::FindLack(const forms::TextField* but) {
  const auto text = [](const forms::TextField& field) { return base::Trim(field.Text()); };
  const auto lacks = [&](forms::TextField& field, bool isThere,
                         std::string what) -> std::optional<Lack> {
    if (isThere || &field == but) return std::nullopt;
    return Lack{&field, std::move(what)};
  };
  const ExchangePart* const serial = rule_.Part(PartKind::kSerial);
  const ExchangePart* const province = rule_.Part(PartKind::kProvince);
  const ExchangePart* const own = rule_.Part(PartKind::kOwn);
  const ExchangePart* const other = province != nullptr ? province : own;
  const bool hasSerial = !text(SerialeRicevuto).empty() && base::Val(SerialeRicevuto.Text()) > 0;
  const bool hasOther = !text(Scambio).empty();
  const bool either = serial != nullptr && serial->mayLack && other != nullptr;
  if (auto lack = lacks(Call, text(Call).size() >= 3, "il nominativo")) return lack;
  for (forms::TextField* report : {&RapportoDato, &RapportoRicevuto}) {
    if (auto lack = lacks(*report, !text(*report).empty(), "il rapporto")) return lack;
  }
  if (serial != nullptr && (!serial->mayLack || (either && !hasOther))) {
    if (auto lack = lacks(SerialeRicevuto, hasSerial, "il progressivo ricevuto")) return lack;
  }
  if (other != nullptr && !other->mayLack && !(either && hasSerial)) {
    if (auto lack = lacks(Scambio, hasOther, "lo scambio ricevuto")) return lack;
  }
  if (Wants(PartKind::kLocator)) {
    if (auto lack =
            lacks(Locator, IsLocator(text(Locator), 6), "il locatore di sei lettere e cifre"))
      return lack;
  }
  return std::nullopt;
}

void GaraContest::EnterPressed(forms::TextField& from) {
  if (!HasContest()) return Say("Prima si sceglie o si comincia un contest");
  if (const auto elsewhere = FindLack(&from)) return Host().MoveFocus(*elsewhere->field);
  if (const auto here = FindLack()) return Say("Manca " + here->text);
  Store();
}

void GaraContest::ClearEntry() {
  corrected_.reset();
  for (forms::TextField* field : {&Call, &SerialeRicevuto, &Scambio, &Locator, &Quando}) {
    field->SetText("");
  }
  const std::string report = core::UsualReport(Modo.Text(), std::nullopt);
  RapportoDato.SetText(report);
  RapportoRicevuto.SetText(report);
  const auto& rig = session_.Rig.Now();
  if (session_.Choices.Get<core::choice::kRigInContest>() && rig) {
    const std::string band = base::Trim(rig->banda);
    if (std::ranges::find(Banda.Items(), band) != Banda.Items().end()) Banda.SetText(band);
    const std::string family(ModeFamily(rig->modo));
    if (!rig->modo.empty() && std::ranges::find(Modo.Items(), family) != Modo.Items().end()) {
      Modo.SetText(family);
    }
  }
  ShowSerial();
  ShowStatus();
}

void GaraContest::Empty() {
  const bool isEmpty = base::Trim(Call.Text()).empty() && base::Trim(Locator.Text()).empty() &&
                       base::Trim(SerialeRicevuto.Text()).empty() &&
                       base::Trim(Scambio.Text()).empty() && !corrected_;
  if (!isEmpty) {
    kept_ = std::make_unique<Kept>(Kept{Call.Text(), RapportoDato.Text(), RapportoRicevuto.Text(),
                                        SerialeRicevuto.Text(), Scambio.Text(), Locator.Text(),
                                        Quando.Text()});
    ClearEntry();
    return Say("Campi svuotati: ancora Svuota li rimette");
  }
  if (kept_ == nullptr) return;
  const Kept kept = *kept_;
  kept_.reset();
  Call.SetText(kept.call);
  RapportoDato.SetText(kept.sent);
  RapportoRicevuto.SetText(kept.received);
  SerialeRicevuto.SetText(kept.serial);
  Scambio.SetText(kept.exchange);
  Locator.SetText(kept.locator);
  Quando.SetText(kept.when);
  Say("Campi rimessi");
}

void GaraContest::Step(forms::ListField& list) {
  if (list.Items().empty()) return;
  list.SetListIndex((list.ListIndex() + 1) % static_cast<int>(list.Items().size()));
}

bool GaraContest::TableKey(char32_t) { return false; }

Contact GaraContest::TypedContact() const {
  Contact contact;
  contact.band = Banda.Text();
  contact.mode = Modo.Text();
  contact.call = base::UpperAscii(base::Trim(Call.Text()));
  contact.reportSent = base::Trim(RapportoDato.Text());
  contact.reportReceived = base::Trim(RapportoRicevuto.Text());
  contact.serialReceived =
      static_cast<std::int64_t>(std::clamp(base::Val(SerialeRicevuto.Text()), 0.0, 999999.0));
  contact.exchange = base::UpperAscii(base::Trim(Scambio.Text()));
  contact.locator = base::UpperAscii(base::Trim(Locator.Text()));
  return contact;
}

std::int64_t GaraContest::NextSerial(const std::string& band) {
  if (entry_ == nullptr) return 0;
  const ExchangePart* const part = rule_.Part(PartKind::kSerial);
  const bool perBand = part == nullptr || part->serialPerBand;
  const auto last = [&](const std::string& of) {
    const auto known = serials_.find(of);
    if (known != serials_.end()) return known->second;
    return serials_[of] = LastSerial(session_.Db, *entry_, of);
  };
  if (perBand) return last(band) + 1;
  std::int64_t highest = 0;
  for (const std::string& each : rule_.bands) highest = std::max(highest, last(each));
  return highest + 1;
}

void GaraContest::Store() {
  if (!HasContest()) return Say("Prima si sceglie o si comincia un contest");
  if (const auto lack = FindLack()) {
    Say("Manca " + lack->text);
    return Host().MoveFocus(*lack->field);
  }
  StoredQso qso;
  qso.contact = TypedContact();
  Contact& contact = qso.contact;
  std::optional<std::size_t> place;
  if (corrected_) {
    place = PlaceOfKey(*corrected_);
    if (!place) {
      corrected_.reset();
      return Say("Il Qso che si correggeva non c'è più");
    }
    qso.note = qsos_[*place].note;
    qso.qsl = qsos_[*place].qsl;
    qso.inLog = qsos_[*place].inLog;
    contact.serialSent = qsos_[*place].contact.serialSent;
    if (contact.band != qsos_[*place].contact.band) {
      return Say("La banda di un Qso non si corregge: si cancella e si scrive sull'altra");
    }
  }
  if (const std::string typed = base::Trim(Quando.Text()); typed.empty()) {
    const base::DateTime now = session_.Machine.GetClock().UtcNow();
    contact.time = place ? qsos_[*place].contact.time : now;
  } else {
    const std::size_t blank = typed.find(' ');
    const auto day = base::ParseDate(typed.substr(0, blank));
    const auto time = blank == std::string::npos ? std::nullopt
                                                 : base::ParseTime(base::Trim(typed.substr(blank)));
    if (!day || !time) {
      Say("Quando si scrive come 07/09/2024 14:05");
      return Host().MoveFocus(Quando);
    }
    contact.time = day->DatePart() + time->TimePart();
    // The field has no seconds; a minute that was left alone keeps those of the contact.
    constexpr std::int64_t kMinute = 60;
    if (place &&
        qsos_[*place].contact.time.Seconds() / kMinute == contact.time.Seconds() / kMinute) {
      contact.time = qsos_[*place].contact.time;
    }
  }
  contact.place = PlaceOf(contact);
  if (const std::string why = WhyNoBand(session_, entry_->number, entry_->begin, contact.band);
      !place && !why.empty()) {
    return Say(why);
  }
  struct Storing {
    explicit Storing(bool& state) : flag(state) { flag = true; }
    ~Storing() { flag = false; }
    bool& flag;
  };
  if (!place) contact.serialSent = NextSerial(contact.band);
  const bool atEnd = !place && (qsos_.empty() || !(contact.time < qsos_.back().contact.time));
  std::string said;
  if (atEnd) {
    qso.worth = count_->Try(contact);
    {
      const Storing storing(storing_);
      StoreNewQso(session_, put_, *entry_, qso, {});
    }
    count_->Add(contact);
    worked_.insert(contact.call);
    qsos_.push_back(qso);
    rows_.PutNumbered(KeyOf(contact), RowOf(qsos_.size() - 1));
    ShowRows(KeyOf(contact));
  } else {
    std::vector<StoredQso> before = qsos_;
    const std::vector<Worth> worths = count_->Worths();
    if (place) qsos_.erase(qsos_.begin() + static_cast<std::ptrdiff_t>(*place));
    const auto at = std::ranges::upper_bound(
        qsos_, contact.time, {}, [](const StoredQso& each) { return each.contact.time; });
    const std::size_t here = static_cast<std::size_t>(qsos_.insert(at, qso) - qsos_.begin());
    Count counted(rule_, Own());
    for (const StoredQso& each : qsos_) counted.Add(each.contact);
    qso.worth = counted.Worths()[here];
    std::vector<ChangedWorth> others;
    std::map<std::int64_t, const Worth*> old;
    for (std::size_t i = 0; i < before.size(); ++i) old[KeyOf(before[i].contact)] = &worths[i];
    for (std::size_t i = 0; i < qsos_.size(); ++i) {
      const auto was = old.find(KeyOf(qsos_[i].contact));
      if (i == here || was == old.end()) continue;
      const Worth& now = counted.Worths()[i];
      if (was->second->points == now.points && was->second->multipliers == now.multipliers &&
          was->second->duplicateOf.has_value() == now.duplicateOf.has_value()) {
        continue;
      }
      others.push_back({qsos_[i].contact.band, qsos_[i].contact.serialSent, now});
    }
    try {
      const Storing storing(storing_);
      if (place) {
        ChangeQso(session_, put_, *entry_, contact.band, contact.serialSent, qso, others);
      } else {
        StoreNewQso(session_, put_, *entry_, qso, others);
      }
    } catch (...) {
      qsos_ = std::move(before);
      throw;
    }
    for (std::size_t i = 0; i < qsos_.size(); ++i) qsos_[i].worth = counted.Worths()[i];
    Recount();
    ShowRows(KeyOf(contact));
  }
  serials_[contact.band] = std::max(serials_[contact.band], contact.serialSent);
  const auto stored = PlaceOfKey(KeyOf(contact));
  const Worth worth = stored ? count_->Worths()[*stored] : Worth();
  said = fmt::format(
      "Qso {}: {}", place ? "corretto" : "registrato",
      core::Joined({std::to_string(contact.serialSent), contact.call, contact.locator,
                    std::to_string(worth.points) + " punti", worth.duplicateOf ? "doppio" : ""}));
  kept_.reset();
  ClearEntry();
  ShowTotals();
  Say(said);
  Host().MoveFocus(Call);
}

void GaraContest::TakeUp() {
  if (const auto key = ChosenKey()) TakeUp(*key);
}

void GaraContest::TakeUp(std::int64_t key) {
  const auto place = PlaceOfKey(key);
  if (!place) return;
  const Contact contact = qsos_[*place].contact;
  Banda.SetText(contact.band);
  if (std::ranges::find(Modo.Items(), contact.mode) == Modo.Items().end()) {
    Modo.AddItem(contact.mode);
  }
  Modo.SetText(contact.mode);
  corrected_ = key;
  Call.SetText(contact.call);
  RapportoDato.SetText(contact.reportSent);
  RapportoRicevuto.SetText(contact.reportReceived);
  SerialeRicevuto.SetText(contact.serialReceived == 0 ? ""
                                                      : std::to_string(contact.serialReceived));
  Scambio.SetText(contact.exchange);
  Locator.SetText(contact.locator);
  Quando.SetText(base::DateText(contact.time) + " " + core::HourMinute(contact.time));
  ShowSerial();
  ShowStatus();
  Say(fmt::format("Si corregge il Qso {} con {}: Inserisci lo registra, Svuota lo lascia com'era",
                  contact.serialSent, contact.call));
  Host().MoveFocus(Call);
}

void GaraContest::Remove() {
  const auto key = ChosenKey();
  const auto place = key ? PlaceOfKey(*key) : std::nullopt;
  if (!place) return;
  const Contact contact = qsos_[*place].contact;
  if (!session_.Messages().AskYesNo("Contest", fmt::format("Cancellare il Qso {} con {} ?",
                                                           contact.serialSent, contact.call))) {
    return;
  }
  const std::vector<Worth> worths = count_->Worths();
  std::vector<StoredQso> left = qsos_;
  left.erase(left.begin() + static_cast<std::ptrdiff_t>(*place));
  Count counted(rule_, Own());
  std::vector<ChangedWorth> others;
  for (std::size_t i = 0; i < left.size(); ++i) {
    const Worth& was = worths[i < *place ? i : i + 1];
    const Worth& now = counted.Add(left[i].contact);
    if (was.points != now.points || was.multipliers != now.multipliers ||
        was.duplicateOf.has_value() != now.duplicateOf.has_value()) {
      others.push_back({left[i].contact.band, left[i].contact.serialSent, now});
    }
  }
  storing_ = true;
  try {
    DeleteQso(session_, *entry_, contact.band, contact.serialSent, others);
  } catch (...) {
    storing_ = false;
    throw;
  }
  storing_ = false;
  qsos_ = std::move(left);
  for (std::size_t i = 0; i < qsos_.size(); ++i) qsos_[i].worth = counted.Worths()[i];
  if (corrected_ == key) ClearEntry();
  Recount();
  ShowStatus();
  Say(fmt::format("Qso {} con {} cancellato", contact.serialSent, contact.call));
}

}  // namespace brenvo::gara
