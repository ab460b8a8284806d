// Confirmations: 100,000 records of a report read, given their contacts, taken to them, and taken
// back. The aim is 5 s for the contacts on a log of a million.
#include <fmt/format.h>

#include <algorithm>
#include <optional>
#include <sstream>
#include <string>

#include "adif/adif_names.h"
#include "adif/station_tables.h"
#include "base/text.h"
#include "bench/support/bench_station.h"
#include "bench/support/figures.h"
#include "bench/support/peak_memory.h"
#include "conferme/taking.h"
#include "history/take_back.h"

namespace brenvo::bench {
namespace {

constexpr std::int64_t kMostRecords = 100'000;

std::string Field(std::string_view name, std::string_view value) {
  return fmt::format("<{}:{}>{}\n", name, value.size(), value);
}

// A report of every so many of the log's contacts, some a few minutes off.
std::string ReportOf(BenchStation& station, std::int64_t contacts) {
  const std::int64_t step = std::max<std::int64_t>(1, contacts / kMostRecords);
  std::string text;
  std::int64_t count = 0, row = 0;
  const adif::StationTables tables(station.session);
  station.session.Db.OpenReader()->ForEach(
      "select DataQso,Call,Banda,Modo,Frequenza from Log order by QsoNr",
      [&](engine::Reader::Row& each) {
        if (row++ % step != 0 || count == kMostRecords) return true;
        const auto when = each.Date(0);
        const adif::AdifBand* const band =
            tables.AdifBandOf(each.Text(2), base::Mhz(each.Number(4)));
        const auto mode = adif::FindAdifMode(adif::AdifWordOf(base::Trim(each.Text(3))));
        if (!when || band == nullptr || !mode) return true;
        std::string iso = base::IsoText(when->Later(count % 7 * 60));
        std::erase_if(iso, [](char c) { return c < '0' || c > '9'; });
        text += Field("CALL", base::Trim(each.Text(1))) + Field("BAND", band->name) +
                Field("MODE", mode->mode) + Field("SUBMODE", mode->submode) +
                Field("QSO_DATE", iso.substr(0, 8)) + Field("TIME_ON", iso.substr(8)) +
                Field("QSL_RCVD", "Y") + Field("QSLRDATE", "20010201") +
                Field("GRIDSQUARE", "JN65AA") + "<eor>\n";
        ++count;
        return true;
      });
  return fmt::format("<PROGRAMID:4>LoTW<APP_LoTW_NUMREC:{}>{}<eoh>\n", std::to_string(count).size(),
                     count) +
         text + "<APP_LoTW_EOF>\n";
}

void Run(const Figures& figures, std::int64_t contacts) {
  BenchStation station(contacts);
  const std::string text = ReportOf(station, contacts);
  std::optional<conferme::Report> report;
  Samples reading, matching, taking, takingBack;
  reading.Measure([&] {
    std::size_t at = 0;
    report = conferme::ReadReport([&](char* buffer, std::size_t size) {
      const std::size_t got = std::min(size, text.size() - at);
      std::copy_n(text.data() + at, got, buffer);
      at += got;
      return got;
    });
  });
  std::optional<conferme::MatchedReport> matched;
  ForgetPeakMemory();
  matching.Measure([&] { matched = conferme::MatchLog(station.session, report->records); });
  const std::string peak = PeakMemory();
  conferme::TakenCounts counts;
  taking.Measure([&] {
    std::ostringstream told;
    counts = conferme::TakeReport(station.session, "prova", *report, *matched, told);
  });
  const std::string peakTaken = PeakMemory();
  takingBack.Measure([&] { history::TakeBackLast(station.session); });
  const auto value = [&](std::string_view what, const Samples& samples) {
    figures.Value(contacts, fmt::format("{}, {} records", what, report->records.size()),
                  fmt::format("{:.2f} s", samples.Median() / 1000));
  };
  value("a report read", reading);
  value("its contacts found", matching);
  figures.Value(contacts, "its contacts found, memory", peak);
  value("taken to them", taking);
  figures.Value(contacts, "taken to them, memory", peakTaken);
  value("taken back", takingBack);
  figures.Value(contacts, "of these matched",
                fmt::format("{}, doubtful {}", counts.matched, counts.doubtful));
}

}  // namespace
}  // namespace brenvo::bench

int main(int argc, char** argv) {
  using namespace brenvo::bench;
  const Figures figures("conferme", argc, argv);
  for (const std::int64_t size : figures.Sizes()) Run(figures, size);
}
