// A contest by rules with 5,000 contacts: what an operator waits for at a key and at a contact, and
// for its check. By hand: the rows that a contact leaves, in one transaction.
#include <fmt/format.h>

#include <filesystem>
#include <stdexcept>
#include <string>

#include "bench/support/bench_station.h"
#include "bench/support/figures.h"
#include "bench/support/hand.h"
#include "gara/contest_log.h"
#include "gara/gara_contest.h"
#include "tests/support/places.h"
#include "tools/mklog/other_stations.h"

namespace brenvo::bench {
namespace {

constexpr int kContacts = 5000;

void Run(const Figures& figures) {
  BenchStation station(10'000);
  core::Session& session = station.session;
  if (!std::filesystem::exists(station.directory.Path() / "Contest")) {
    std::filesystem::copy(SourceDir() / "data/contests", station.directory.Path() / "Contest");
  }
  station.machine.SetNow(base::DateTime::Of(2024, 9, 7, 16, 0, 0));
  session.Station.MyLocator = "JN54MN";
  auto& window = station.Open<gara::GaraContest>("GaraContest");
  window.Regole.SetText("IARU Region 1 145 MHz");
  window.Dal.SetText("07/09/2024");
  window.cmNuova.Press();

  const mklog::OtherStations others(station.file, 3);
  int next = 0;
  const auto type = [&] {
    const mklog::OtherStation other = others.Make(static_cast<std::uint64_t>(next));
    window.Call.SetText(other.call);
    window.SerialeRicevuto.SetText(std::to_string(++next));
    window.Locator.SetText(other.locator.substr(0, 6));
  };
  const auto work = [&] {
    type();
    window.cmInserisci.Press();
  };
  while (next < kContacts) work();

  Hand contact(station.file,
               "INSERT INTO \"Contest Qso\" VALUES ('2024-09-07 00:00:00','  2 m',?1,?1,7,"
               "'1899-12-30 14:00:00',?2,59,59,'JN48QT','SSB',500,500,'',0,0)");
  Hand beside(station.file,
              "INSERT INTO GareQso VALUES ('2024-09-07 00:00:00','  2 m',?1,"
              "'2024-09-07 14:00:00','SSB','59','59','',500,'',0,0)");
  int byHand = 100000;
  figures.Compare(kContacts, "a contact of a contest by rules", 200, work, [&] {
    RunByHand(station.file, "BEGIN IMMEDIATE");
    contact.Number(1, ++byHand).Text(2, "IK3NEW").Step();
    contact.Done();
    beside.Number(1, byHand).Step();
    beside.Done();
    RunByHand(station.file, "COMMIT");
  });
  Samples key;
  for (int i = 0; i < 200; ++i) {
    type();
    window.Call.SetText("");
    window.Call.SetText("IK3");
    key.Measure([&] { window.Call.TypeKey('A' + i % 26); });
  }
  figures.Line(kContacts, "a key of the call", key, {});
  Samples check;
  for (int i = 0; i < 5; ++i) check.Measure([&] { window.cmVerifica.Press(); });
  figures.Line(kContacts, "check the log of a contest", check, {});
  if (window.Qso.Rows() < kContacts) throw std::runtime_error("contacts were not stored");
}

}  // namespace
}  // namespace brenvo::bench

int main(int argc, char** argv) {
  using namespace brenvo::bench;
  const Figures figures("gara", argc, argv);
  if (figures.WantsAnyOf(
          {"a contact of a contest by rules", "a key of the call", "check the log of a contest"})) {
    Run(figures);
  }
}
