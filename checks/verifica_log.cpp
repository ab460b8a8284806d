#include "checks/verifica_log.h"

#include <fmt/format.h>

#include <algorithm>

#include "base/number.h"
#include "base/text.h"
#include "core/open_in_log.h"
#include "core/transaction.h"

namespace brenvo::checks {
namespace {

constexpr std::string_view kAllRules = "Tutte";
constexpr std::string_view kOutOfDate = "Il log è cambiato: F5 lo verifica di nuovo";

std::string Number(std::int64_t number) {
  return base::FormatNumber(static_cast<double>(number), "#,##0");
}

std::string Reasons(std::int64_t count) {
  return count == 1 ? "un motivo" : count == 0 ? "nessun motivo" : Number(count) + " motivi";
}

bool IsOf(const ListedFinding& finding, const std::vector<std::string>& calls) {
  return std::ranges::find(calls, CheckFacts::Name(finding.Call)) != calls.end();
}

}  // namespace

VerificaLog::VerificaLog(core::Session& session)
    : core::ArrangedWindow(session, "VerificaLog", "Verifica del log", base::Twips(16200),
                           base::Twips(8400)),
      stored_(
          session,
          [this](const std::vector<core::OneContact>& changes) {
            if (!facts_) return;
            for (const core::OneContact& each : changes) CheckAgain(each);
          },
          [this] {
            if (facts_) Say(kOutOfDate);
          }) {
  ShowCommands({&cmVerifica, &cmApri, &cmVaBene, &cmRivedi});
  DefaultCommand = &cmApri;
  std::vector<std::string> names = {std::string(kAllRules)};
  for (const Rule& each : Rules()) names.emplace_back(each.name);
  Regola.SetItems(std::move(names));
  Regola.SetListIndex(0);
  Regola.OnChange = [this] { FillTable(); };
  AncheVerificati.OnChange = [this] { FillTable(); };
  closing_ = session.Closing.Subscribe([this] {
    if (facts_) Say(kOutOfDate);
  });
}

VerificaLog::~VerificaLog() = default;

void VerificaLog::Load() {
  core::ArrangedWindow::Load();
  using enum core::ColumnKind;
  ArrangeTable(rows_, {{"Qso nr", kNumber},
                       {"Data", kDate},
                       {"Call"},
                       {"Banda"},
                       {"Regola"},
                       {"Motivo"},
                       {"Va bene"}});
  Say("F5 verifica il log");
}

void VerificaLog::CheckAll() {
  facts_ = FactsOf(session_);
  auto checked = CheckLog(session_, *facts_);
  if (!checked) {
    Say("Verifica interrotta: l'elenco resta com'era");
    return;
  }
  listed_.clear();
  TakeIn(std::move(checked->findings));
  ForgetMarks();
  FillTable();
  const auto stand = std::ranges::count_if(listed_, &Listed::letStand);
  std::string told =
      fmt::format("{} Qso verificati: {}", Number(checked->contacts), Reasons(checked->count));
  if (stand > 0) told += fmt::format(", {} {} bene così", stand, stand == 1 ? "va" : "vanno");
  if (checked->count > std::ssize(listed_)) {
    told += fmt::format("; si vedono i primi {}", Number(std::ssize(listed_)));
  }
  if (!facts_->hasExtents) {
    told += fmt::format("; senza {} i locator non sono confrontati con i country", kExtentsFile);
  }
  Say(told);
}

void VerificaLog::TakeIn(std::vector<ListedFinding> findings) {
  const LetStandFindings stand(session_);
  for (ListedFinding& each : findings) {
    const bool letStand = stand.Holds(each);
    listed_.push_back({++lastKey_, std::move(each), letStand});
  }
}

void VerificaLog::FillTable() {
  const auto key = ChosenKey();
  std::vector<core::KeyedRows::Keyed> rows;
  for (const Listed& each : listed_) {
    const ListedFinding& finding = each.finding;
    if (each.letStand && !AncheVerificati.IsOn()) continue;
    if (Regola.ListIndex() > 0 && Regola.Text() != finding.rule) continue;
    rows.push_back(
        {each.key,
         {std::to_string(finding.qsoNr), base::DateTimeText(finding.DataQso), finding.Call,
          finding.Banda, std::string(finding.rule), finding.reason, each.letStand ? "sì" : ""}});
  }
  rows_.SetKeyed(std::move(rows));
  ShowRows(key);
}

VerificaLog::Listed* VerificaLog::Find(std::optional<std::int64_t> key) {
  if (!key) return nullptr;
  const auto at = std::ranges::lower_bound(listed_, *key, {}, &Listed::key);
  return at == listed_.end() || at->key != *key ? nullptr : &*at;
}

void VerificaLog::RowChosen() {
  const Listed* const chosen = Find(ChosenKey());
  Spiegazione.SetText(
      chosen == nullptr ? "" : fmt::format("{}: {}", chosen->finding.rule, chosen->finding.reason));
}

bool VerificaLog::AnyChosen(bool letStand) {
  return std::ranges::any_of(MarkedKeys(), [&](std::int64_t key) {
    const Listed* const each = Find(key);
    return each != nullptr && each->letStand == letStand;
  });
}

void VerificaLog::OpenInLog() {
  if (const Listed* const chosen = Find(ChosenKey())) {
    core::OpenInLog(session_, chosen->finding.qsoNr);
  }
}

void VerificaLog::LetChosenStand(bool stand) {
  const std::vector<std::int64_t> keys = MarkedKeys();
  std::vector<Listed*> changed;
  core::Transaction transaction(session_.Db);
  for (const std::int64_t key : keys) {
    Listed* const each = Find(key);
    if (each == nullptr || each->letStand == stand) continue;
    if (stand) {
      LetStand(session_, each->finding);
    } else {
      LookAgain(session_, each->finding);
    }
    changed.push_back(each);
  }
  transaction.Commit();
  for (Listed* const each : changed) each->letStand = stand;
  ForgetMarks();
  FillTable();
  Say(fmt::format("{}: {}", stand ? "Va bene così" : "Da rivedere", Reasons(std::ssize(changed))));
}

void VerificaLog::Activate() { stored_.TellNow(); }

void VerificaLog::CheckAgain(const core::OneContact& change) {
  std::vector<std::string> calls;
  for (const auto* side : {&change.before, &change.after}) {
    if (!*side) continue;
    const std::string call = CheckFacts::Name((*side)->contact.Call);
    if (std::ranges::find(calls, call) == calls.end()) calls.push_back(call);
  }
  if (calls.empty()) return;
  const std::int64_t qsoNr = (change.after ? change.after : change.before)->key;
  // Whether its call is like another one only the whole log can tell; it is no more once it is
  // another call, or confirmed.
  const bool sameCall =
      change.before && change.after && calls.size() == 1 && !change.after->contact.QslRicevuta;
  std::erase_if(listed_, [&](const Listed& each) {
    if (each.finding.rule != rule::kSimilar) return IsOf(each.finding, calls);
    return each.finding.qsoNr == qsoNr && !sameCall;
  });
  facts_->now = LatestNow(session_);
  TakeIn(CheckCalls(session_, *facts_, calls).findings);
  FillTable();
  if (!change.after) {
    Say(fmt::format("Qso {} cancellato: l'elenco è senza i suoi motivi", qsoNr));
    return;
  }
  const auto left = std::ranges::count_if(
      listed_, [&](const Listed& each) { return each.finding.qsoNr == qsoNr && !each.letStand; });
  Say(fmt::format("Qso {} verificato di nuovo: {}", qsoNr, Reasons(left)));
}

}  // namespace brenvo::checks
