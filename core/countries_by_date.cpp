#include "core/countries_by_date.h"

#include <fmt/format.h>

#include <algorithm>
#include <filesystem>

#include "base/text.h"
#include "core/quoted.h"
#include "core/session.h"
#include "core/transaction.h"

namespace brenvo::core {
namespace {

constexpr std::string_view kLoads = "EntitaCarichi", kLines = "EntitaRighe";

bool Replaces(const EntityLoad& load, std::string_view file) {
  return load.inUse && base::SameText(load.file, file);
}

// A load as it was kept, line by line.
entities::Table ReadLoad(engine::Database& database, const EntityLoad& load) {
  std::string text;
  const auto rows = database.OpenSnapshot(
      fmt::format("select Testo from {} where Carico={} order by Riga", kLines, load.number));
  for (; !rows->EOF_(); rows->MoveNext()) text += rows->Field(0).Text() + "\n";
  entities::Table table = entities::ReadOwnTable(text, load.file);
  table.version = load.version;
  return table;
}

// What stands in a row may itself go over lines, within its quotes.
std::vector<std::string_view> LinesOf(std::string_view text) {
  std::vector<std::string_view> lines;
  while (!text.empty()) {
    const std::size_t end = std::min(text.find('\n'), text.size() - 1);
    std::string_view line = text.substr(0, end + 1);
    text.remove_prefix(line.size());
    while (line.ends_with('\n') || line.ends_with('\r')) line.remove_suffix(1);
    lines.push_back(line);
  }
  return lines;
}

void SetInUse(engine::Database& database, std::int64_t load, bool inUse) {
  database.Execute(fmt::format("update {} set InUso={} where Carico={}", kLoads,
                               inUse ? "True" : "False", load));
}

bool HasRow(engine::Database& database, std::int64_t qsoNr) {
  return !database.OpenSnapshot(fmt::format("select QsoNr from EntitaQso where QsoNr={}", qsoNr))
              ->EOF_();
}

// `set` is what stands behind SET of an update.
void WriteBeside(engine::Database& database, std::int64_t qsoNr, std::string_view set) {
  if (!HasRow(database, qsoNr)) {
    database.Execute(fmt::format("insert into EntitaQso (QsoNr) values ({})", qsoNr));
  }
  database.Execute(fmt::format("update EntitaQso set {} where QsoNr={}", set, qsoNr));
}

std::string Titled(const entities::Table& table) {
  return table.version.empty() ? table.file : fmt::format("{} ({})", table.file, table.version);
}

}  // namespace

std::vector<EntityLoad> EntityLoads(engine::Database& database) {
  std::vector<EntityLoad> loads;
  const auto rows = database.OpenSnapshot(
      fmt::format("select Carico,File,Formato,Versione,Quando,Regole,InUso,Sostituisce from {} "
                  "order by Carico",
                  kLoads));
  for (; !rows->EOF_(); rows->MoveNext()) {
    loads.push_back({rows->Field(0).Integer(), rows->Field(1).Text(), rows->Field(2).Text(),
                     rows->Field(3).Text(), rows->Field(4).Date(), rows->Field(5).Integer(),
                     rows->Field(6).Bool(), rows->Field(7).Integer()});
  }
  return loads;
}

struct CountriesByDate::Held {
  std::vector<entities::Table> tables;  // the delivered one first, then the loads by their numbers
  std::string fault;
  std::optional<entities::Resolver> rules;

  // With another one behind them, null for none.
  entities::Resolver Make(const entities::Table* other) const {
    std::vector<const entities::Table*> all;
    if (other != nullptr) all.push_back(other);
    for (auto table = tables.rbegin(); table != tables.rend(); ++table) {
      const bool delivered = std::next(table) == tables.rend();
      if (other != nullptr && !delivered && base::SameText(table->file, other->file)) continue;
      all.push_back(&*table);
    }
    return entities::Resolver(all);
  }
};

CountriesByDate::CountriesByDate(Session& session)
    : session_(session), closing_(session.Closing.Subscribe([this] { Forget(); })) {}

void CountriesByDate::Forget() { held_.reset(); }

CountriesByDate::Held& CountriesByDate::All() {
  if (held_) return *held_;
  auto held = std::make_shared<Held>();
  const auto read = [&](const auto& table) {
    try {
      held->tables.push_back(table());
    } catch (const entities::TableError& fault) {
      if (held->fault.empty()) held->fault = fault.what();
    }
  };
  read([&] { return entities::ReadTableFile(session_.File(kEntitiesFile), {}); });
  if (held->tables.empty()) held->tables.emplace_back();
  for (const EntityLoad& load : EntityLoads(session_.Db)) {
    if (load.inUse) read([&] { return ReadLoad(session_.Db, load); });
  }
  held->rules.emplace(held->Make(nullptr));
  held_ = std::move(held);
  return *held_;
}

entities::Answer CountriesByDate::Of(std::string_view call, base::DateTime utc) {
  return Rules().Resolve(call, utc);
}

const entities::Resolver& CountriesByDate::Rules() { return *All().rules; }

const std::string& CountriesByDate::Fault() { return All().fault; }

std::string CountriesByDate::TablesText() {
  std::string text;
  for (const entities::Table& table : All().tables) {
    if (table.rules.empty()) continue;
    text += (text.empty() ? "" : ", ") + Titled(table);
  }
  return text;
}

entities::KnownEntities CountriesByDate::Known() {
  Held& held = All();
  return {.numberOf = [&held](std::string_view prefix) {
    const entities::Entity* found = held.rules->FindCountry(prefix);
    return found == nullptr ? 0 : found->number;
  }};
}

entities::Resolver CountriesByDate::With(const entities::Table& table) {
  return All().Make(&table);
}

void CountriesByDate::Apply(const entities::Table& table) {
  Transaction transaction(session_.Db);
  std::int64_t replaced = 0, number = 0;
  for (const EntityLoad& load : EntityLoads(session_.Db)) {
    number = load.number;
    if (!Replaces(load, table.file)) continue;
    replaced = load.number;
    SetInUse(session_.Db, load.number, false);
  }
  ++number;
  session_.Db.OpenAppender(kLoads)->Append({number, table.file, table.format, table.version,
                                            session_.Now(), std::ssize(table.rules), true,
                                            replaced});
  const auto lines = session_.Db.OpenAppender(kLines);
  std::int64_t place = 0;
  const std::string text = entities::OwnTableText(table);
  for (const std::string_view line : LinesOf(text)) {
    lines->Append({number, ++place, std::string(line)});
  }
  transaction.Commit();
  Forget();
  Changed();
}

std::optional<EntityLoad> CountriesByDate::TakeBack() {
  std::optional<EntityLoad> last;
  for (const EntityLoad& load : EntityLoads(session_.Db)) {
    if (load.inUse) last = load;
  }
  if (!last) return last;
  Transaction transaction(session_.Db);
  SetInUse(session_.Db, last->number, false);
  if (last->replaces != 0) SetInUse(session_.Db, last->replaces, true);
  transaction.Commit();
  Forget();
  Changed();
  return last;
}

void DropEntityLoads(engine::Database& database) {
  database.Execute(
      fmt::format("delete * from {} where Carico not in (select Carico from {} where "
                  "InUso=True)",
                  kLines, kLoads));
  database.Execute(fmt::format("delete * from {} where InUso=False", kLoads));
  database.Execute(fmt::format("update {} set Sostituisce=0", kLoads));
}

AppliedRule AppliedRuleOf(std::string_view call, const entities::Answer& answer) {
  return {answer.what == nullptr ? std::string() : answer.what->country,
          entities::Explanation(call, answer), std::string(answer.rule), std::string(answer.file)};
}

EntityOfContact EntityKeptOf(engine::Database& database, std::int64_t qsoNr) {
  const auto rows = database.OpenSnapshot(fmt::format(
      "select Dxcc,Scelta,Country,Motivo,Regola,Tabella from EntitaQso where QsoNr={}", qsoNr));
  if (rows->EOF_()) return {};
  EntityOfContact kept;
  if (!rows->Field(0).IsNull()) kept.told = static_cast<int>(rows->Field(0).Integer());
  kept.chosen = rows->Field(1).Bool();
  if (!rows->Field(3).IsNull()) {
    kept.applied = {rows->Field(2).Text(), rows->Field(3).Text(), rows->Field(4).Text(),
                    rows->Field(5).Text()};
  }
  return kept;
}

void KeepChosenEntity(engine::Database& database, std::int64_t qsoNr, bool chosen) {
  if (!chosen && !HasRow(database, qsoNr)) return;
  WriteBeside(database, qsoNr, fmt::format("Scelta={}", chosen ? "True" : "False"));
}

void KeepToldEntity(engine::Database& database, std::int64_t qsoNr, std::optional<int> number) {
  if (!number && !HasRow(database, qsoNr)) return;
  WriteBeside(database, qsoNr,
              fmt::format("Dxcc={}", number ? std::to_string(*number) : std::string("Null")));
}

void KeepAppliedRule(engine::Database& database, std::int64_t qsoNr, const AppliedRule& applied) {
  WriteBeside(database, qsoNr,
              fmt::format("Country={},Motivo={},Regola={},Tabella={}", Quoted(applied.country),
                          Quoted(applied.why), Quoted(applied.rule), Quoted(applied.file)));
}

std::string WhyCountry(Session& session, std::int64_t qsoNr, std::string_view call,
                       base::DateTime utc, std::string_view country) {
  const std::string code = base::Trim(country);
  const auto told = [](const AppliedRule& by) {
    if (by.rule.empty()) return by.why;
    return fmt::format("{} (regola {} di {})", by.why, by.rule, by.file);
  };
  if (qsoNr != 0) {
    const EntityOfContact kept = EntityKeptOf(session.Db, qsoNr);
    if (kept.chosen) return "Country tenuto com'è dall'operatore";
    if (kept.told) {
      const entities::Entity* const entity = session.ByDate.Rules().Find(*kept.told);
      if (base::SameText(code, entity == nullptr ? std::string_view() : entity->country)) {
        return fmt::format("Country detto da un file di log: {}",
                           entity == nullptr ? "nessuno" : entity->name);
      }
    }
    if (kept.applied && base::SameText(kept.applied->country, code)) return told(*kept.applied);
  }
  const entities::Answer answer = session.ByDate.Of(call, utc);
  if (answer.reason == entities::Reason::kUnknown) return {};
  const AppliedRule day = AppliedRuleOf(call, answer);
  return (base::SameText(day.country, code) ? "" : "La regola del giorno dice altro: ") + told(day);
}

}  // namespace brenvo::core
