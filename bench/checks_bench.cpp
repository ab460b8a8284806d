// The whole log gone through by the rules of the check: how long it takes, what it finds, and what
// memory it holds meanwhile. By hand: the same columns read by date, and nothing done with them.
#include <fmt/format.h>
#include <malloc.h>

#include <map>
#include <optional>
#include <stdexcept>
#include <string>

#include "bench/support/bench_station.h"
#include "bench/support/figures.h"
#include "bench/support/hand.h"
#include "checks/check_log.h"

namespace brenvo::bench {
namespace {

// What the program holds from the system's allocator, MB.
double Allocated() {
  const struct mallinfo2 info = mallinfo2();
  return static_cast<double>(info.uordblks + info.hblkhd) / 1e6;
}

void Check(const Figures& figures, std::int64_t contacts) {
  constexpr std::string_view kTask = "check the log";
  if (!figures.Wants(kTask)) return;
  const BenchDirectory directory(contacts);
  QuietPlatform platform;
  core::Session session(platform, directory.Path());
  session.Open();
  const checks::CheckFacts facts = checks::FactsOf(session);
  sqlite3* file = nullptr;
  if (sqlite3_open(directory.File().c_str(), &file) != SQLITE_OK) {
    throw std::runtime_error("no database");
  }
  std::optional<Hand> rows(
      std::in_place, file,
      "SELECT QsoNr,DataQso,Call,Qra,Qth,Country,Provincia,Locator,Banda,Modo,Propagazione,"
      "Frequenza,QslRicevuta FROM Log ORDER BY DataQso");
  std::optional<checks::CheckedLog> checked;
  figures.Compare(
      contacts, kTask, 3, [&] { checked = checks::CheckLog(session, facts); },
      [&] { rows->ReadAll(); });

  std::map<std::string_view, int> found;
  for (const checks::ListedFinding& each : checked->findings) ++found[each.rule];
  std::string text;
  for (const auto& [rule, count] : found) text += fmt::format(" {} {}", rule, count);
  figures.Value(contacts, "check the log, findings", fmt::format("{}:{}", checked->count, text));

  checks::LogCheck check(facts);
  const double before = Allocated();
  session.Db.OpenReader()->ForEach("select QsoNr,Call,Locator from Log order by DataQso",
                                   [&](auto& row) {
                                     checks::CheckedContact contact;
                                     contact.qsoNr = row.Integer(0);
                                     contact.Call = row.Text(1);
                                     contact.Locator = row.Text(2);
                                     check.See(contact);
                                     return true;
                                   });
  figures.Value(contacts, "check the log, memory", fmt::format("{:.1f} MB", Allocated() - before));
  session.CloseTables();
  rows.reset();
  sqlite3_close(file);
}

}  // namespace
}  // namespace brenvo::bench

int main(int argc, char** argv) {
  using namespace brenvo::bench;
  const Figures figures("checks", argc, argv);
  for (const std::int64_t size : figures.Sizes()) Check(figures, size);
}
