#include "checks/check_log.h"

#include <fmt/format.h>

#include <algorithm>
#include <string_view>
#include <unordered_map>

#include "base/text.h"
#include "core/quoted.h"

namespace brenvo::checks {
namespace {

constexpr std::string_view kColumns =
    "QsoNr,DataQso,Call,Qra,Qth,Country,Provincia,Locator,Banda,Modo,Propagazione,Frequenza,"
    "QslRicevuta";
// In the order of these.
enum Column : std::size_t {
  kQsoNr,
  kDataQso,
  kCall,
  kQra,
  kQth,
  kCountry,
  kProvincia,
  kLocator,
  kBanda,
  kModo,
  kPropagazione,
  kFrequenza,
  kQslRicevuta
};

void SeeRow(engine::Reader::Row& row, LogCheck& check) {
  CheckedContact contact;
  contact.qsoNr = row.Integer(kQsoNr);
  contact.DataQso = row.Date(kDataQso).value_or(base::DateTime());
  contact.Call = row.Text(kCall);
  contact.Qra = row.Text(kQra);
  contact.Qth = row.Text(kQth);
  contact.Country = row.Text(kCountry);
  contact.Provincia = row.Text(kProvincia);
  contact.Locator = row.Text(kLocator);
  contact.Banda = row.Text(kBanda);
  contact.Modo = row.Text(kModo);
  contact.Propagazione = row.Text(kPropagazione);
  contact.Frequenza = row.Number(kFrequenza);
  contact.QslRicevuta = row.Bool(kQslRicevuta);
  check.See(contact);
}

// With the contacts that they are of.
std::vector<ListedFinding> Listed(core::Session& session, std::vector<Finding> findings) {
  constexpr std::size_t kAtOnce = 500;
  std::vector<ListedFinding> listed;
  std::unordered_map<std::int64_t, std::vector<std::size_t>> places;  // of a contact
  for (Finding& each : findings) {
    places[each.qsoNr].push_back(listed.size());
    listed.push_back({std::move(each), {}, {}, {}});
  }
  for (std::size_t from = 0; from < listed.size(); from += kAtOnce) {
    std::string numbers;
    for (std::size_t i = from; i < std::min(listed.size(), from + kAtOnce); ++i) {
      numbers += (numbers.empty() ? "" : ",") + std::to_string(listed[i].qsoNr);
    }
    session.Db.OpenReader()->ForEach(
        fmt::format("select QsoNr,DataQso,Call,Banda from Log where QsoNr in ({})", numbers),
        [&](auto& row) {
          for (const std::size_t at : places[row.Integer(0)]) {
            listed[at].DataQso = row.Date(1).value_or(base::DateTime());
            listed[at].Call = base::Trim(row.Text(2));
            listed[at].Banda = base::Trim(row.Text(3));
          }
          return true;
        });
  }
  return listed;
}

void Forget(core::Session& session, const Finding& finding) {
  session.Db.Execute(fmt::format("delete from Verificati where QsoNr={} and Regola={}",
                                 finding.qsoNr, core::Quoted(finding.rule)));
}

}  // namespace

std::optional<CheckedLog> CheckLog(core::Session& session, const CheckFacts& facts) {
  std::int64_t total = 0;
  {
    const auto count = session.Db.OpenSnapshot("select count(*) from Log");
    total = count->Field(0).Integer();
  }
  const forms::BusyPointer busy(session.Host());
  const auto progress = session.Machine.ShowProgress("Verifica del log", total);
  LogCheck check(facts);
  const bool whole = session.Db.OpenReader()->ForEach(
      fmt::format("select {} from Log order by DataQso", kColumns), [&](auto& row) {
        SeeRow(row, check);
        return progress->Advance(check.Contacts());
      });
  if (!whole) return std::nullopt;
  CheckedLog checked;
  checked.findings = Listed(session, check.Finish());
  checked.contacts = check.Contacts();
  checked.count = check.Count();
  return checked;
}

CheckedLog CheckCalls(core::Session& session, const CheckFacts& facts,
                      const std::vector<std::string>& calls) {
  LogCheck check(facts);
  std::string in;
  for (const std::string& call : calls) in += (in.empty() ? "" : ",") + core::Quoted(call);
  if (!in.empty()) {
    session.Db.OpenReader()->ForEach(
        fmt::format("select {} from Log where Call in ({}) order by DataQso", kColumns, in),
        [&](auto& row) {
          SeeRow(row, check);
          return true;
        });
  }
  CheckedLog checked;
  std::vector<Finding> findings = check.Finish();
  std::erase_if(findings, [](const Finding& each) { return each.rule == rule::kSimilar; });
  checked.findings = Listed(session, std::move(findings));
  checked.contacts = check.Contacts();
  checked.count = std::ssize(checked.findings);
  return checked;
}

void LetStand(core::Session& session, const Finding& finding) {
  Forget(session, finding);
  session.Db.Execute(fmt::format("insert into Verificati (QsoNr,Regola,Motivo) values ({},{},{})",
                                 finding.qsoNr, core::Quoted(finding.rule),
                                 core::Quoted(finding.reason)));
}

void LookAgain(core::Session& session, const Finding& finding) { Forget(session, finding); }

LetStandFindings::LetStandFindings(core::Session& session) {
  const auto rows =
      session.Db.OpenSnapshot("select QsoNr,Regola,Motivo from Verificati order by QsoNr,Regola");
  for (; !rows->EOF_(); rows->MoveNext()) {
    const std::string name = rows->Field(1).Text();
    const auto known = std::ranges::find(Rules(), name, &Rule::name);
    if (known == Rules().end()) continue;  // of another version
    all_.push_back({rows->Field(0).Integer(), known->name, rows->Field(2).Text()});
  }
}

bool LetStandFindings::Holds(const Finding& finding) const {
  const auto [from, to] = std::ranges::equal_range(all_, finding.qsoNr, {}, &Finding::qsoNr);
  return std::find(from, to, finding) != to;
}

}  // namespace brenvo::checks
