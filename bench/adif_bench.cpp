// Log files read, brought in and written. A file of as many contacts as the log is told to hold
// goes into an empty one and out again; one of 100,000 comes to a log that is full already. By
// hand: the rows that came of it, copied from one database to the other.
#include <fmt/format.h>

#include <fstream>
#include <sstream>

#include "adif/adif_export.h"
#include "adif/adif_import.h"
#include "bench/support/bench_station.h"
#include "bench/support/figures.h"
#include "bench/support/hand.h"
#include "tests/support/adif_samples.h"

namespace brenvo::bench {
namespace {

constexpr std::int64_t kInFile = 100'000;

bool KeepOn(std::int64_t) { return true; }

void WriteFile(const std::filesystem::path& file, std::int64_t count) {
  std::ofstream out(file, std::ios::binary);
  out << "bench\r\n<ADIF_VER:5>3.1.7\r\n<EOH>\r\n";
  for (std::int64_t i = 0; i < count; ++i) out << GeneratedRecord(i);
}

void Read(const std::filesystem::path& file) {
  std::ifstream in(file, std::ios::binary);
  adif::AdifReader reader([&](char* buffer, std::size_t size) {
    in.read(buffer, static_cast<std::streamsize>(size));
    return static_cast<std::size_t>(in.gcount());
  });
  adif::AdifRecord record;
  while (reader.Next(record)) {
  }
}

void Import(BenchStation& station, const std::filesystem::path& file) {
  std::ostringstream report;
  adif::ImportContacts(station.session, file, {}, KeepOn, report);
}

// Copies log, names and kept fields of another file behind the contacts that are there.
void CopyByHand(sqlite3* file, const std::filesystem::path& from) {
  const std::string attach = "ATTACH '" + from.string() + "' AS other";
  RunByHand(file, attach.c_str());
  RunByHand(
      file,
      "BEGIN; CREATE TEMP TABLE Before AS SELECT ifnull(max(QsoNr),0) AS QsoNr FROM main.Log; "
      "INSERT OR IGNORE INTO main.Log SELECT QsoNr+(SELECT QsoNr FROM Before),DataQso,Call,"
      "Manager,Qra,Qth,Prefisso,\"Zona CQ\",\"Zona ITU\",Continente,Country,Provincia,Locator,"
      "Qrb,Banda,Frequenza,Potenza,Modo,Propagazione,QrkDato,QrkRicevuto,QslDaInviare,"
      "QslRicevuta,QslInviata,Note FROM other.Log; "
      "INSERT INTO main.LogOrigine SELECT QsoNr+(SELECT QsoNr FROM Before),Uuid,Stazione "
      "FROM other.LogOrigine; "
      "INSERT INTO main.LogAdif SELECT QsoNr+(SELECT QsoNr FROM Before),Campo,Valore "
      "FROM other.LogAdif; COMMIT");
}

// The same into a log without contacts, whose indexes are made afterwards.
void CopyAndIndexByHand(sqlite3* file, const std::filesystem::path& from) {
  std::vector<std::string> drop, make;
  {
    Hand indexes(file,
                 "SELECT name, sql FROM sqlite_schema WHERE type='index' AND tbl_name IN "
                 "('Log','LogOrigine') AND "
                 "sql LIKE 'CREATE INDEX%'");
    while (indexes.Step()) {
      drop.push_back("DROP INDEX \"" + indexes.Cell(0) + "\"");
      make.push_back(indexes.Cell(1));
    }
  }
  for (const std::string& each : drop) RunByHand(file, each.c_str());
  CopyByHand(file, from);
  for (const std::string& each : make) RunByHand(file, each.c_str());
}

// Every column of every contact as a field, in the order of the export.
void ExportByHand(sqlite3* file, const std::filesystem::path& to) {
  Hand contacts(file, "SELECT * FROM \"Log\" ORDER BY \"DataQso\",\"QsoNr\"");
  std::ofstream out(to, std::ios::binary);
  std::string line;
  constexpr int kColumns = 25;
  while (contacts.Step()) {
    line.clear();
    for (int i = 0; i < kColumns; ++i) {
      const std::string_view text = contacts.View(i);
      if (!text.empty()) {
        fmt::format_to(std::back_inserter(line), "<{}:{}>{} ", contacts.Name(i), text.size(), text);
      }
    }
    line += "<EOR>\r\n";
    out << line;
  }
}

// The most memory that the process has held since it was last forgotten.
void ForgetPeakMemory() { std::ofstream("/proc/self/clear_refs") << "5"; }
std::string PeakMemory() {
  std::ifstream status("/proc/self/status");
  std::string word;
  while (status >> word && word != "VmHWM:") {
  }
  std::int64_t kibibytes = 0;
  status >> kibibytes;
  return fmt::format("{} MB", kibibytes / 1024);
}

class AdifTasks {
 public:
  AdifTasks(const Figures& figures, std::int64_t size) : figures_(figures), size_(size) {}

  void Run() {
    InAndOut();
    IntoTheLog();
  }

 private:
  void Measure(std::string_view task, std::int64_t contacts, const std::function<void()>& work,
               const std::function<void()>& hand = {}, const std::function<void()>& limit = {}) {
    if (!figures_.Wants(task)) return;
    Samples ours, theirs, best;
    ours.Measure(work);
    if (hand) theirs.Measure(hand);
    if (limit) best.Measure(limit);
    constexpr double kMilliseconds = 1000;
    const double rate = static_cast<double>(contacts) / ours.Median() * kMilliseconds;
    figures_.Line(size_, task, ours, theirs, fmt::format("{:.0f} a second", rate), best);
  }

  void InAndOut() {
    if (!figures_.WantsAnyOf({"read a file", "into an empty log", "export of all"})) return;
    const auto file = directory_.Path() / "in.adi";
    WriteFile(file, size_);
    Measure("read a file", size_, [&] { Read(file); });
    if (!figures_.WantsAnyOf({"into an empty log", "export of all"})) return;
    BenchStation station(0);
    ForgetPeakMemory();
    Samples all;
    all.Measure([&] { Import(station, file); });
    if (figures_.Wants("import into an empty log")) {
      const std::string peak = PeakMemory();
      Samples hand, limit;
      BenchStation plain(0), bare(0);
      hand.Measure([&] { CopyByHand(plain.file, station.directory.File()); });
      limit.Measure([&] { CopyAndIndexByHand(bare.file, station.directory.File()); });
      figures_.Line(size_, "import into an empty log", all, hand, "", limit);
      figures_.Value(size_, "import into an empty log, memory", peak);
    }
    const auto out = directory_.Path() / "out.adi", plain = directory_.Path() / "plain.adi";
    const auto byHand = [&] { ExportByHand(station.file, plain); };
    Measure(
        "export of all", size_,
        [&] { adif::ExportContacts(station.session, adif::kAllContacts, out, KeepOn); }, {},
        byHand);
  }

  void IntoTheLog() {
    if (!figures_.WantsAnyOf({"preview of 100,000", "import of 100,000", "again"})) return;
    const auto file = directory_.Path() / "more.adi";
    WriteFile(file, kInFile);
    BenchStation station(size_), rows(0), copy(size_);
    Measure("preview of 100,000", kInFile,
            [&] { adif::PreviewImport(station.session, file, {}, KeepOn); });
    Import(rows, file);
    Measure(
        "import of 100,000", kInFile, [&] { Import(station, file); },
        [&] { CopyByHand(copy.file, rows.directory.File()); });
    Measure("again, everything repeated", kInFile, [&] { Import(station, file); });
  }

  const Figures& figures_;
  std::int64_t size_;
  ScratchDirectory directory_;
};

}  // namespace
}  // namespace brenvo::bench

int main(int argc, char** argv) {
  using namespace brenvo::bench;
  const Figures figures("adif", argc, argv);
  for (const std::int64_t size : figures.Sizes()) AdifTasks(figures, size).Run();
}
