// Links: print recorder
// Arbitrary text as a report's layout: it is refused in words, or rows are printed by it from a
// table in which nothing changes.
#include <cstdint>
#include <cstdlib>
#include <optional>

#include "print/report_engine.h"
#include "recorder/recording_platform.h"
#include "tests/support/scratch_database.h"

namespace {

using namespace brenvo;

struct Station {
  Station() {
    directory.Sql(
        "INSERT INTO SLog (DataQso,Call,Banda,Modo,Frequenza,Qrb,QslRicevuta,Note) VALUES"
        "('2001-02-03 04:05:06','IK2AAA',' 20 m','SSB',14.195,1234,-1,'prima'),"
        "('2002-02-03 04:05:06','DL1ABC','  2 m','CW',144.3,NULL,0,'una nota molto lunga'),"
        "(NULL,NULL,NULL,NULL,NULL,NULL,0,NULL)");
    database.emplace(directory.Open());
  }
  std::int64_t Rows() {
    return database->OpenSnapshot("select Count(*) from SLog")->Field(0).Integer();
  }

  ScratchDatabase directory;
  std::optional<engine::Database> database;
  recorder::RecordingPlatform machine{[](const std::string&) {}};
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static Station station;
  static const print::ReportTexts kTexts = {
      {"call", "I0XXX"}, {"qra", "{call}"}, {"data", "03/02/2001"}};
  try {
    const print::ReportLayout layout =
        print::ParseReportLayout({reinterpret_cast<const char*>(data), size});
    if (layout.columns.empty() || print::RowsPerPage(layout, base::Mm(297)) < 1) std::abort();
    station.machine.GetPrinter().SetFont("Arial", 10, false);
    print::PrintRows(*station.database, layout, kTexts, station.machine.GetPrinter(),
                     [](std::int64_t, std::int64_t) { return true; });
  } catch (const print::LayoutError&) {
  } catch (const engine::DatabaseError&) {
    // An order that is none, a cell that is no date.
  }
  if (station.Rows() != 3) std::abort();
  return 0;
}
