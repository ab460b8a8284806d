#include "checks/check_log.h"

#include <fmt/format.h>

#include <algorithm>
#include <string_view>

#include "base/text.h"

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

// Statements are pasted together from texts.
std::string Quoted(std::string_view text) {
  std::string quoted = "'";
  for (const char c : text) quoted += c == '\'' ? std::string("''") : std::string(1, c);
  return quoted + "'";
}

void Forget(core::Session& session, const Finding& finding) {
  session.Db.Execute(fmt::format("delete from Verificati where QsoNr={} and Regola={}",
                                 finding.qsoNr, Quoted(finding.rule)));
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
  checked.findings = check.Finish();
  checked.contacts = check.Contacts();
  checked.count = check.Count();
  return checked;
}

CheckedLog CheckCalls(core::Session& session, const CheckFacts& facts,
                      const std::vector<std::string>& calls) {
  LogCheck check(facts);
  std::string in;
  for (const std::string& call : calls) in += (in.empty() ? "" : ",") + Quoted(call);
  if (!in.empty()) {
    session.Db.OpenReader()->ForEach(
        fmt::format("select {} from Log where Call in ({}) order by DataQso", kColumns, in),
        [&](auto& row) {
          SeeRow(row, check);
          return true;
        });
  }
  CheckedLog checked;
  checked.findings = check.Finish();
  std::erase_if(checked.findings, [](const Finding& each) { return each.rule == rule::kSimilar; });
  checked.contacts = check.Contacts();
  checked.count = std::ssize(checked.findings);
  return checked;
}

void LetStand(core::Session& session, const Finding& finding) {
  Forget(session, finding);
  session.Db.Execute(fmt::format("insert into Verificati (QsoNr,Regola,Motivo) values ({},{},{})",
                                 finding.qsoNr, Quoted(finding.rule), Quoted(finding.reason)));
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
