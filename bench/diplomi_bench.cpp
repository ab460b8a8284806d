// Awards: the log read once, then a page of each award and the contacts of a cell. The aim is 0.5 s
// a page on a log of a million.
#include <fmt/format.h>

#include <filesystem>
#include <span>
#include <string>

#include "bench/support/bench_station.h"
#include "bench/support/figures.h"
#include "diplomi/diplomi.h"
#include "diplomi/read_log.h"
#include "worked/load_rules.h"

namespace brenvo::bench {
namespace {

constexpr int kRuns = 7;

// Half of the contacts are confirmed by LoTW, a tenth by card.
void Confirm(BenchStation& station) {
  station.session.Db.Execute(
      "insert into LogAdif (QsoNr,Campo,Valore) select QsoNr,'LOTW_QSL_RCVD','Y' from Log where "
      "Call<'IK5'");
}

void Run(const Figures& figures, std::int64_t contacts) {
  BenchStation station(contacts);
  core::Session& session = station.session;
  Confirm(station);
  const auto ignore = [](const std::string&) {};
  const auto rules = worked::LoadRules(session, ignore);
  diplomi::World world = diplomi::ReadWorld(session);
  const auto awards = diplomi::LoadAwards(session, *rules, world, ignore);
  const auto places = diplomi::ReadPlaces(session);
  diplomi::LogReading reading(session, awards, *rules);
  std::optional<diplomi::LogImage> log;
  Samples read, again;
  for (int run = 0; run < 3; ++run) read.Measure([&] { log = reading.Read({}); });
  again.Measure([&] { reading.ReadAgain(*log, contacts / 2); });
  figures.Line(contacts, "awards: the log read", read, {});
  figures.Line(contacts, "awards: one contact read again", again, {});
  figures.Value(contacts, "awards: memory", fmt::format("{} MB", log->Bytes() / 1024 / 1024));
  for (const diplomi::Award& award : awards) {
    Samples page, cell;
    diplomi::Counted counted;
    for (int run = 0; run < kRuns; ++run) {
      page.Measure([&] { counted = diplomi::Count(award, *log, world, places, *rules, {}); });
    }
    figures.Line(
        contacts, fmt::format("awards: a page of {}", award.name), page, {},
        fmt::format("{} units, {} worked", counted.units.size(), counted.totals.front().worked));
    if (counted.units.empty()) continue;
    cell.Measure([&] {
      (void)diplomi::FillingsOf(award, *log, world, places, *rules, {}, counted.units[0].code, "",
                                50);
    });
    figures.Line(contacts, fmt::format("awards: the contacts of a cell of {}", award.name), cell,
                 {});
  }
  log.reset();
  Samples opened, chosen;
  diplomi::Diplomi* window = nullptr;
  opened.Measure([&] { window = &station.Open<diplomi::Diplomi>("Diplomi"); });
  chosen.Measure([&] { window->Diploma.Pick(window->Diploma.ListIndex() == 0 ? 1 : 0); });
  figures.Line(contacts, "awards: the window opened", opened, {});
  figures.Line(contacts, "awards: another award in the window", chosen, {});
  station.Close(*window);
}

}  // namespace
}  // namespace brenvo::bench

int main(int argc, char** argv) {
  using namespace brenvo::bench;
  const Figures figures("diplomi", argc, argv);
  for (const std::int64_t size : figures.Sizes()) Run(figures, size);
}
