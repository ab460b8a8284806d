#include "checks/verifica_entita.h"

#include <fmt/format.h>

#include <algorithm>

#include "base/number.h"
#include "base/text.h"
#include "core/open_in_log.h"
#include "core/transaction.h"

namespace brenvo::checks {
namespace {

constexpr std::string_view kOutOfDate = "Il log è cambiato: F5 lo verifica di nuovo";
constexpr std::string_view kOtherRules = "Le regole sono cambiate: F5 verifica di nuovo il log";
constexpr std::string_view kFiles = "*.dat *.csv *.xml *.tab *.tbl *.txt *.DAT *.CSV *.XML";
constexpr std::string_view kPickTitle = "Carica tabella";

enum What : int { kAll, kCountry, kZones, kContinent };
const std::vector<std::string> kWhat = {"Tutte", "Country", "Zone", "Continente"};

std::string Number(std::int64_t number) {
  return base::FormatNumber(static_cast<double>(number), "#,##0");
}

std::string Contacts(std::int64_t count) {
  return count == 1 ? "un Qso" : count == 0 ? "nessun Qso" : Number(count) + " Qso";
}

}  // namespace

VerificaEntita::VerificaEntita(core::Session& session)
    : core::ArrangedWindow(session, "VerificaEntita", "Verifica entità", base::Twips(16200),
                           base::Twips(8400)),
      stored_(
          session,
          [this](const std::vector<core::OneContact>& changes) {
            for (const core::OneContact& each : changes) CheckAgain(each);
            FillTable();
          },
          [this] { OutOfDate(); }) {
  ShowCommands({&cmVerifica, &cmApri, &cmPrendi, &cmTieni, &cmRivedi, forms::Separator{}, &cmCarica,
                &cmUsa, &cmLascia, &cmPrecedente});
  DefaultCommand = &cmApri;
  CheCosa.SetItems(kWhat);
  CheCosa.SetListIndex(kAll);
  CheCosa.OnChange = [this] { FillTable(); };
  AncheScelti.OnChange = [this] { FillTable(); };
  rules_ = session.ByDate.Changed.Subscribe([this] {
    ShowTables();
    if (checked_) Say(kOtherRules);
  });
  closing_ = session.Closing.Subscribe([this] { OutOfDate(); });
}

VerificaEntita::~VerificaEntita() = default;

void VerificaEntita::Load() {
  core::ArrangedWindow::Load();
  using enum core::ColumnKind;
  ArrangeTable(rows_, {{"Qso nr", kNumber},
                       {"Data", kDate},
                       {"Call"},
                       {"Banda"},
                       {"Prima"},
                       {"Dopo"},
                       {"Motivo"},
                       {"Regola"},
                       {"Tabella"},
                       {"Tenuto"}});
  ShowTables();
  Say("F5 verifica il log");
}

void VerificaEntita::Activate() { stored_.TellNow(); }

void VerificaEntita::ShowTables() {
  const std::string tables = session_.ByDate.TablesText();
  std::string text = "Tabelle: " + (tables.empty() ? "nessuna" : tables);
  if (const std::string& fault = session_.ByDate.Fault(); !fault.empty()) text += "; " + fault;
  Tabelle.SetText(text);
}

void VerificaEntita::CheckAll() {
  auto checked = CheckEntities(session_);
  if (!checked) {
    Say("Verifica interrotta: l'elenco resta com'era");
    return;
  }
  staged_.reset();
  checked_ = true;
  const std::int64_t contacts = checked->contacts, count = checked->count;
  Show(std::move(*checked));
  const auto chosen = std::ranges::count_if(findings_, &EntityFinding::chosen);
  std::string told = fmt::format("{} verificati: {} non come la regola del giorno",
                                 Contacts(contacts), Contacts(count));
  if (chosen > 0) told += fmt::format(", di cui {} tenuti", Number(chosen));
  if (count > std::ssize(findings_)) {
    told += fmt::format("; si vedono i primi {}", Number(std::ssize(findings_)));
  }
  Say(told);
}

void VerificaEntita::Show(CheckedEntities checked) {
  findings_ = std::move(checked.findings);
  ForgetMarks();
  FillTable();
}

bool VerificaEntita::IsWanted(const EntityFinding& finding) const {
  if (finding.chosen && !AncheScelti.IsOn()) return false;
  switch (CheCosa.ListIndex()) {
    case kCountry:
      return finding.OtherCountry();
    case kZones:
      return finding.OtherZones();
    case kContinent:
      return finding.OtherContinent();
    default:
      return true;
  }
}

void VerificaEntita::FillTable() {
  const auto key = ChosenKey();
  std::vector<core::KeyedRows::Keyed> rows;
  for (const EntityFinding& each : findings_) {
    if (!IsWanted(each)) continue;
    rows.push_back({each.qsoNr,
                    {std::to_string(each.qsoNr), base::DateTimeText(each.DataQso), each.Call,
                     each.Banda, PlaceText(each.before), PlaceText(each.after), each.why, each.rule,
                     each.file, each.chosen ? "sì" : ""}});
  }
  rows_.SetKeyed(std::move(rows));
  ShowRows(key);
}

EntityFinding* VerificaEntita::Find(std::optional<std::int64_t> key) {
  if (!key) return nullptr;
  const auto at = std::ranges::lower_bound(findings_, *key, {}, &EntityFinding::qsoNr);
  return at == findings_.end() || at->qsoNr != *key ? nullptr : &*at;
}

void VerificaEntita::RowChosen() {
  const EntityFinding* const chosen = Find(ChosenKey());
  Spiegazione.SetText(chosen == nullptr ? "" : chosen->why);
}

bool VerificaEntita::AnyChosen(bool chosen) {
  return std::ranges::any_of(MarkedKeys(), [&](std::int64_t key) {
    const EntityFinding* const each = Find(key);
    return each != nullptr && each->chosen == chosen;
  });
}

void VerificaEntita::OpenInLog() {
  if (const auto key = ChosenKey()) core::OpenInLog(session_, *key);
}

void VerificaEntita::TakeRules() {
  std::vector<std::int64_t> keys = MarkedKeys();
  std::ranges::sort(keys);
  std::vector<const EntityFinding*> wanted;
  for (const std::int64_t key : keys) {
    if (const EntityFinding* const each = Find(key)) wanted.push_back(each);
  }
  const auto changed = TakeOver(session_, "Verifica entità: prende la regola", wanted);
  if (!changed) {
    Say("Interrotto: nulla è cambiato");
    return;
  }
  std::erase_if(findings_, [&](const EntityFinding& each) {
    return !each.chosen && std::ranges::binary_search(keys, each.qsoNr);
  });
  checked_ = true;  // the announcement of these changes has called it out of date
  ForgetMarks();
  FillTable();
  Say(fmt::format("La regola del giorno in {}", Contacts(*changed)));
}

void VerificaEntita::KeepOwn(bool own) {
  std::int64_t count = 0;
  core::Transaction transaction(session_.Db);
  std::vector<EntityFinding*> changed;
  for (const std::int64_t key : MarkedKeys()) {
    EntityFinding* const each = Find(key);
    if (each == nullptr || each->chosen == own) continue;
    core::KeepChosenEntity(session_.Db, key, own);
    changed.push_back(each);
    ++count;
  }
  transaction.Commit();
  for (EntityFinding* const each : changed) each->chosen = own;
  ForgetMarks();
  FillTable();
  Say(fmt::format("{}: {}", own ? "Tenuti come sono" : "Da rivedere", Contacts(count)));
}

void VerificaEntita::LoadTable() {
  const auto file = session_.Machine.PickFile(kPickTitle, kFiles);
  if (!file) return;
  const forms::BusyPointer busy(Host());
  std::optional<entities::Table> table;
  try {
    table = entities::ReadTableFile(*file, session_.ByDate.Known());
  } catch (const entities::TableError& fault) {
    session_.Messages().Show(platform::MessageIcon::kCritical, kPickTitle, fault.what());
    return;
  }
  auto compared = CompareRules(session_, session_.ByDate.With(*table));
  if (!compared) {
    Say("Confronto interrotto: la tabella non è caricata");
    return;
  }
  staged_ = std::move(table);
  checked_ = false;
  const std::int64_t count = compared->count;
  Show(std::move(*compared));
  std::string told = fmt::format("{}, {} regole: cambierebbe la risposta di {}", staged_->file,
                                 Number(std::ssize(staged_->rules)), Contacts(count));
  if (staged_->faultCount > 0) {
    told += fmt::format("; righe saltate {} ({})", staged_->faultCount, staged_->faults.front());
  }
  Say(told + "; F9 la usa");
}

void VerificaEntita::UseTable() {
  const std::string file = staged_->file;
  session_.ByDate.Apply(*staged_);
  staged_.reset();
  Show({});
  Say(fmt::format("{} è in uso: F5 verifica il log", file));
}

void VerificaEntita::LeaveTable() {
  const std::string file = staged_->file;
  staged_.reset();
  Show({});
  Say(fmt::format("{} non è in uso", file));
}

void VerificaEntita::TakeTableBack() {
  const auto load = session_.ByDate.TakeBack();
  if (!load) {
    Say("Nessuna tabella caricata è in uso");
    return;
  }
  checked_ = false;
  Show({});
  Say(fmt::format("{} non è più in uso: F5 verifica il log", load->file));
}

void VerificaEntita::OutOfDate() {
  if (checked_) Say(kOutOfDate);
}

void VerificaEntita::CheckAgain(const core::OneContact& change) {
  if (!checked_) return;
  const std::int64_t qsoNr = (change.after ? change.after : change.before)->key;
  std::erase_if(findings_, [&](const EntityFinding& each) { return each.qsoNr == qsoNr; });
  if (!change.after) {
    Say(fmt::format("Qso {} cancellato", qsoNr));
    return;
  }
  auto finding = CheckEntity(session_, *change.after);
  Say(fmt::format("Qso {} verificato di nuovo: {}", qsoNr,
                  finding ? "non come la regola del giorno" : "come la regola del giorno"));
  if (!finding) return;
  const auto at = std::ranges::lower_bound(findings_, qsoNr, {}, &EntityFinding::qsoNr);
  findings_.insert(at, std::move(*finding));
}

}  // namespace brenvo::checks
