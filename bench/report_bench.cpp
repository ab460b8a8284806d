// A report of the whole log, streamed: processor time and peak memory for 10,000 and 100,000
// contacts, on a printer that only counts, into a PDF file, and into the preview's pages. Each task
// runs in a process of its own, so that its peak is its own.
#include <fmt/format.h>
#include <sqlite3.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <fstream>
#include <iterator>
#include <memory>
#include <QApplication>
#include <vector>

#include "core/session.h"
#include "print/report_engine.h"
#include "print/report_layout.h"
#include "recorder/recording_platform.h"
#include "tests/support/places.h"
#include "tests/support/scratch_directory.h"
#include "tools/mkdatabase/database_maker.h"
#include "ui/print_preview.h"
#include "ui/qt_printer.h"
#include "ui/text.h"

namespace brenvo::bench {
namespace {

// Contacts of a station on VHF; every third has a long note.
void FillLog(const std::filesystem::path& database, int contacts) {
  sqlite3* file = nullptr;
  sqlite3_open(database.c_str(), &file);
  std::string fill = "BEGIN;";
  for (int i = 0; i < contacts; ++i) {
    fill += fmt::format(
        "INSERT INTO Log (DataQso,Call,Qra,Qth,Country,Locator,Banda,Frequenza,Modo,QrkDato,"
        "QrkRicevuto,Qrb,QslRicevuta,Note) VALUES ('20{:02}-{:02}-{:02} "
        "{:02}:{:02}:00','IK{}{}{}{}',"
        "'Nicolò','Forlì','I','JN{}{}AB','  2 m',144.3,'SSB','59','59',{},{},'{}');",
        i / 8000, 1 + i % 12, 1 + i % 28, i % 24, i % 60, i % 10,
        static_cast<char>('A' + i / 676 % 26), static_cast<char>('A' + i / 26 % 26),
        static_cast<char>('A' + i % 26), i % 10, i / 10 % 10, i % 900, i % 5 == 0 ? -1 : 0,
        i % 3 == 0 ? "segnale molto forte, collegamento lungo con molte parole" : "");
    if (fill.size() > 1'000'000) {
      sqlite3_exec(file, fill.c_str(), nullptr, nullptr, nullptr);
      fill.clear();
    }
  }
  sqlite3_exec(file, (fill + "COMMIT").c_str(), nullptr, nullptr, nullptr);
  sqlite3_close(file);
}

ui::QtPrinter PrinterInto(ui::QtPrinter::Chooser chooser) {
  return ui::QtPrinter(std::move(chooser), [](const forms::Window&) { return QPixmap(); });
}

struct Task {
  const char* name;
  void (*print)(const std::filesystem::path& directory,
                const std::function<void(platform::Printer&)>& report);
};

constexpr Task kTasks[] = {
    {"rows alone",
     [](const std::filesystem::path&, const std::function<void(platform::Printer&)>& report) {
       recorder::RecordingPlatform silent{[](const std::string&) {}};
       report(silent.GetPrinter());
     }},
    {"PDF file",
     [](const std::filesystem::path& directory,
        const std::function<void(platform::Printer&)>& report) {
       ui::QtPrinter printer = PrinterInto([&](bool landscape) -> std::unique_ptr<ui::PageTarget> {
         return ui::PaperTarget::Pdf(ui::PathToQt(directory / "log.pdf"), landscape);
       });
       report(printer);
     }},
    {"preview",
     [](const std::filesystem::path&, const std::function<void(platform::Printer&)>& report) {
       ui::QtPrinter printer = PrinterInto([](bool landscape) -> std::unique_ptr<ui::PageTarget> {
         return std::make_unique<ui::PreviewTarget>(ui::NewPrinter(landscape)->pageLayout(),
                                                    [](ui::PageSpool&, const QPageLayout&) {});
       });
       report(printer);
     }},
};

double PeakMegabytes() {
  rusage use{};
  getrusage(RUSAGE_SELF, &use);
  return static_cast<double>(use.ru_maxrss) / 1024;
}

double ProcessorSeconds() { return static_cast<double>(std::clock()) / CLOCKS_PER_SEC; }

void Measure(const Task& task, const std::filesystem::path& database, int contacts) {
  int argc = 1;
  char name[] = "report_bench";
  char* argv[] = {name, nullptr};
  const QApplication application(argc, argv);
  ScratchDirectory directory;
  std::filesystem::copy_file(database, directory.Path() / "Brenvo.mdb");
  recorder::RecordingPlatform machine{[](const std::string&) {}};
  core::Session session{machine, directory.Path()};
  session.Open();
  const double begun = ProcessorSeconds();
  session.Db.Execute("DELETE FROM SLog");
  session.Db.Execute("INSERT INTO SLog SELECT * FROM Log  ORDER BY DataQso");
  const double staged = ProcessorSeconds() - begun;
  const double before = PeakMegabytes();
  std::ifstream file(SourceDir() / "data" / "logv.rpt", std::ios::binary);
  const print::ReportLayout layout =
      print::ParseReportLayout(std::string(std::istreambuf_iterator<char>(file), {}));
  const double started = ProcessorSeconds();
  task.print(directory.Path(), [&](platform::Printer& printer) {
    print::PrintRows(session.Db, layout, {{"call", "I0XXX"}}, printer,
                     [](std::int64_t, std::int64_t) { return true; });
  });
  std::printf("%-12s %9d %10.2f %10.2f %12.1f %12.1f\n", task.name, contacts, staged,
              ProcessorSeconds() - started, before, PeakMegabytes());
  std::fflush(stdout);
  session.CloseTables();
}

void MeasureAll(const std::vector<int>& sizes) {
  const auto source = SourceDir() / "data";
  std::printf("%-12s %9s %10s %10s %12s %12s\n", "report", "contacts", "staging s", "printing s",
              "MB before", "MB at peak");
  for (const int contacts : sizes) {
    ScratchDirectory directory;
    const auto database = directory.Path() / "Brenvo.mdb";
    mkdatabase::MakeDatabase(source / "schema.sql", source, database);
    FillLog(database, contacts);
    for (const Task& task : kTasks) {
      std::fflush(stdout);
      if (const pid_t child = fork(); child == 0) {
        Measure(task, database, contacts);
        std::_Exit(0);
      } else {
        waitpid(child, nullptr, 0);
      }
    }
  }
}

}  // namespace
}  // namespace brenvo::bench

int main(int argc, char** argv) {
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  std::vector<int> sizes;
  for (int i = 1; i < argc; ++i) sizes.push_back(std::atoi(argv[i]));
  brenvo::bench::MeasureAll(sizes.empty() ? std::vector{10'000, 100'000} : sizes);
  return 0;
}
