#include "checks/entity_check.h"

#include <fmt/format.h>

#include <algorithm>
#include <map>
#include <tuple>

#include "base/text.h"
#include "core/history.h"
#include "core/log_time.h"
#include "core/long_run.h"
#include "core/quoted.h"
#include "core/transaction.h"

namespace brenvo::checks {
namespace {

constexpr std::string_view kTitle = "Verifica entità";
// Numbers that one statement names.
constexpr std::size_t kKeysAStatement = 1000;
// Logs know no continent of its own for it.
constexpr std::string_view kAntarctica = "AN";

// What counts before a rule.
struct Beside {
  std::optional<int> told;
  bool chosen = false;
};

// What is kept beside the contacts, by their numbers.
class KeptBeside {
 public:
  explicit KeptBeside(core::Session& session) {
    session.Db.OpenReader()->ForEach("select QsoNr,Dxcc,Scelta from EntitaQso order by QsoNr",
                                     [&](auto& row) {
                                       Kept kept{row.Integer(0), {}};
                                       if (!row.Text(1).empty()) {
                                         kept.of.told = static_cast<int>(row.Integer(1));
                                       }
                                       kept.of.chosen = row.Bool(2);
                                       all_.push_back(kept);
                                       return true;
                                     });
  }
  bool Has(std::int64_t qsoNr) const { return Find(qsoNr) != nullptr; }
  Beside Of(std::int64_t qsoNr) const {
    const Kept* const kept = Find(qsoNr);
    return kept == nullptr ? Beside() : kept->of;
  }

 private:
  struct Kept {
    std::int64_t qsoNr;
    Beside of;
  };
  const Kept* Find(std::int64_t qsoNr) const {
    const auto at = std::ranges::lower_bound(all_, qsoNr, {}, &Kept::qsoNr);
    return at == all_.end() || at->qsoNr != qsoNr ? nullptr : &*at;
  }
  std::vector<Kept> all_;
};

ContactPlace PlaceOf(const entities::Answer& answer) {
  if (answer.what == nullptr) return {};
  return {answer.what->country, answer.cq, answer.itu, std::string(answer.continent)};
}

class EntityCheck {
 public:
  EntityCheck(core::Session& session, const entities::Resolver& rules)
      : rules_(rules), times_(session) {}

  base::DateTime UtcOf(base::DateTime inLog) const { return times_.ToUtc(inLog); }

  // Fills in what the rule says; false where it says nothing, or the same as the contact.
  bool Differs(EntityFinding& finding, const Beside& kept) const {
    finding.chosen = kept.chosen;
    const entities::Answer answer = rules_.Resolve(finding.Call, UtcOf(finding.DataQso));
    if (kept.told) {
      if (!Told(finding, *kept.told, answer)) return false;
    } else {
      if (answer.reason == entities::Reason::kUnknown) return false;
      finding.after = PlaceOf(answer);
      finding.why = entities::Explanation(finding.Call, answer);
      finding.rule = answer.rule;
      finding.file = answer.file;
    }
    return Complete(finding);
  }

 private:
  bool Told(EntityFinding& finding, int told, const entities::Answer& answer) const {
    const entities::Entity* const entity = told == 0 ? nullptr : rules_.Find(told);
    if (told != 0 && entity == nullptr) return false;
    if (entity != nullptr && answer.entity == told) {
      finding.after = PlaceOf(answer);
    } else if (entity != nullptr) {
      finding.after = {entity->country, entity->cq, entity->itu, entity->continent};
    }
    finding.why = fmt::format("{}: {}, detto da un file di log", finding.Call,
                              entity == nullptr ? "nessun country" : entity->name);
    return true;
  }

  // What the rule does not know is the contact's own.
  static bool Complete(EntityFinding& finding) {
    const bool none = finding.after.country.empty();
    const bool other = finding.OtherCountry() && !none;
    ContactPlace &before = finding.before, &after = finding.after;
    if (after.cq == 0 && !other) after.cq = before.cq;
    if (after.itu == 0 && !other) after.itu = before.itu;
    const bool unknown = after.continent.empty() || after.continent == kAntarctica ||
                         before.continent == kAntarctica;
    if (unknown && (!other || after.continent == kAntarctica) && !before.continent.empty()) {
      after.continent = before.continent;
    }
    return before != after;
  }

  const entities::Resolver& rules_;
  core::LogTimes times_;
};

constexpr std::string_view kColumns =
    "QsoNr,DataQso,Call,Banda,Country,[Zona CQ],[Zona ITU],Continente";

EntityFinding FindingOf(engine::Reader::Row& row) {
  EntityFinding finding;
  finding.qsoNr = row.Integer(0);
  finding.DataQso = row.Date(1).value_or(base::DateTime());
  finding.Call = base::Trim(row.Text(2));
  finding.Banda = base::Trim(row.Text(3));
  finding.before = {base::UpperAscii(base::Trim(row.Text(4))), static_cast<int>(row.Integer(5)),
                    static_cast<int>(row.Integer(6)), base::UpperAscii(base::Trim(row.Text(7)))};
  return finding;
}

// `see` says whether the contact is a finding, and completes it.
template <class See>
std::optional<CheckedEntities> GoThrough(core::Session& session, const See& see) {
  std::int64_t total = 0;
  {
    const auto count = session.Db.OpenSnapshot("select count(*) from Log");
    total = count->Field(0).Integer();
  }
  const forms::BusyPointer busy(session.Host());
  const auto progress = session.Machine.ShowProgress(kTitle, total);
  CheckedEntities checked;
  const bool whole = session.Db.OpenReader()->ForEach(
      fmt::format("select {} from Log order by QsoNr", kColumns), [&](auto& row) {
        ++checked.contacts;
        EntityFinding finding = FindingOf(row);
        if (see(finding)) {
          ++checked.count;
          if (checked.findings.size() < kMostEntityFindings) {
            checked.findings.push_back(std::move(finding));
          }
        }
        return progress->Advance(checked.contacts);
      });
  if (!whole) return std::nullopt;
  return checked;
}

// By which rules these contacts have got their countries.
void KeepRules(core::Session& session, const std::vector<const EntityFinding*>& findings) {
  const KeptBeside kept(session);
  const auto rows = session.Db.OpenAppender("EntitaQso");
  for (const EntityFinding* each : findings) {
    if (each->chosen || !each->OtherCountry()) continue;
    if (kept.Has(each->qsoNr)) {
      core::KeepAppliedRule(session.Db, each->qsoNr,
                            {each->after.country, each->why, each->rule, each->file});
    } else {
      rows->Append({each->qsoNr, engine::Value(), false, each->after.country, each->why, each->rule,
                    each->file});
    }
  }
}

std::string NumberOrNull(int number) { return number == 0 ? "Null" : std::to_string(number); }

}  // namespace

std::string PlaceText(const ContactPlace& place) {
  std::string text = place.country.empty() ? "nessun country" : place.country;
  if (place.cq != 0 || place.itu != 0) text += fmt::format(" {}/{}", place.cq, place.itu);
  if (!place.continent.empty()) text += ' ' + place.continent;
  return text;
}

std::optional<CheckedEntities> CheckEntities(core::Session& session) {
  const EntityCheck check(session, session.ByDate.Rules());
  const KeptBeside kept(session);
  return GoThrough(session, [&](EntityFinding& finding) {
    return check.Differs(finding, kept.Of(finding.qsoNr));
  });
}

std::optional<EntityFinding> CheckEntity(core::Session& session,
                                         const core::StoredContact& stored) {
  const core::LogContact& contact = stored.contact;
  EntityFinding finding;
  finding.qsoNr = stored.key;
  finding.DataQso = contact.DataQso;
  finding.Call = base::Trim(contact.Call);
  finding.Banda = base::Trim(contact.Banda);
  finding.before = {base::UpperAscii(base::Trim(contact.Country)), static_cast<int>(contact.ZonaCQ),
                    static_cast<int>(contact.ZonaITU),
                    base::UpperAscii(base::Trim(contact.Continente))};
  const EntityCheck check(session, session.ByDate.Rules());
  const core::EntityOfContact kept = core::EntityKeptOf(session.Db, stored.key);
  if (!check.Differs(finding, {kept.told, kept.chosen})) return std::nullopt;
  return finding;
}

std::optional<CheckedEntities> CompareRules(core::Session& session,
                                            const entities::Resolver& other) {
  const entities::Resolver& rules = session.ByDate.Rules();
  const EntityCheck times(session, rules);
  const KeptBeside kept(session);
  return GoThrough(session, [&](EntityFinding& finding) {
    const Beside beside = kept.Of(finding.qsoNr);
    if (beside.chosen || beside.told) return false;
    const base::DateTime utc = times.UtcOf(finding.DataQso);
    const entities::Answer after = other.Resolve(finding.Call, utc);
    finding.before = PlaceOf(rules.Resolve(finding.Call, utc));
    finding.after = PlaceOf(after);
    if (finding.before == finding.after) return false;
    finding.why = entities::Explanation(finding.Call, after);
    finding.rule = after.rule;
    finding.file = after.file;
    return true;
  });
}

std::optional<std::int64_t> TakeOver(core::Session& session, std::string_view title,
                                     const std::vector<const EntityFinding*>& findings) {
  // One statement for all that get the same.
  using Same = std::tuple<bool, std::string, int, int, std::string>;
  std::map<Same, std::vector<std::int64_t>> works;
  std::int64_t count = 0;
  for (const EntityFinding* each : findings) {
    if (each->chosen) continue;
    const ContactPlace& after = each->after;
    works[{each->OtherCountry(), after.country, after.cq, after.itu, after.continent}].push_back(
        each->qsoNr);
    ++count;
  }
  const auto statements = [&] {
    core::Transaction transaction(session);
    for (const auto& [same, keys] : works) {
      const auto& [otherCountry, country, cq, itu, continent] = same;
      // A province is one of its country.
      const std::string set =
          fmt::format("update Log set Country={},[Zona CQ]={},[Zona ITU]={},Continente={}{}",
                      core::Quoted(country), NumberOrNull(cq), NumberOrNull(itu),
                      core::Quoted(continent), otherCountry ? ",Provincia=''" : "");
      for (std::size_t from = 0; from < keys.size(); from += kKeysAStatement) {
        std::string where = " where QsoNr in (";
        const std::size_t to = std::min(from + kKeysAStatement, keys.size());
        for (std::size_t i = from; i < to; ++i) {
          where += fmt::format("{}{}", i == from ? "" : ",", keys[i]);
        }
        where += ')';
        session.Contacts.Past().KeepWhere(where);
        session.Db.Execute(set + where);
      }
    }
    KeepRules(session, findings);
    transaction.Commit();
  };
  if (count == 0) return count;
  const bool done = session.Contacts.ChangeMany(title, {core::ContactTable::kLog}, [&] {
    return core::RunLongStatements(session, title, "Interrotto: il log è rimasto com'era.",
                                   statements);
  });
  if (!done) return std::nullopt;
  return count;
}

}  // namespace brenvo::checks
