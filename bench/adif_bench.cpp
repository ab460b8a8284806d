// Links: adif recorder
// How fast a log file is read, and how fast it comes into a log of a million contacts. Rates are by
// the time of the processor, so that a busy machine tells the same:
//   adif_bench DELIVERED_MDB [CONTACTS_IN_LOG [CONTACTS_IN_FILE]]
#include <sys/resource.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "adif/adif_export.h"
#include "adif/adif_import.h"
#include "core/main_frame.h"
#include "core/transaction.h"
#include "recorder/recording_platform.h"
#include "tests/support/adif_samples.h"
#include "tests/support/scratch_directory.h"

namespace brenvo {
namespace {

double ProcessorSeconds() {
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  const auto seconds = [](const timeval& time) {
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
  };
  return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

double Seconds(const std::function<void()>& work) {
  const double begin = ProcessorSeconds();
  work();
  return ProcessorSeconds() - begin;
}

long PeakKibibytes() {
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  return usage.ru_maxrss;
}

void Tell(const char* what, std::int64_t contacts, double seconds) {
  std::printf("%-44s %9lld contacts %8.2f s %9.0f a second, peak %ld MiB\n", what,
              static_cast<long long>(contacts), seconds, static_cast<double>(contacts) / seconds,
              PeakKibibytes() / 1024);
  std::fflush(stdout);
}

void WriteFile(const std::filesystem::path& file, std::int64_t first, std::int64_t count) {
  std::ofstream out(file, std::ios::binary);
  out << "bench\r\n<ADIF_VER:5>3.1.4\r\n<EOH>\r\n";
  for (std::int64_t i = 0; i < count; ++i) out << GeneratedRecord(first + i);
}

std::string ReadBytes(const std::filesystem::path& file) {
  std::ifstream in(file, std::ios::binary);
  return {std::istreambuf_iterator<char>(in), {}};
}

std::int64_t Parse(const std::filesystem::path& file) {
  std::ifstream in(file, std::ios::binary);
  AdifReader reader([&](char* buffer, std::size_t size) {
    in.read(buffer, static_cast<std::streamsize>(size));
    return static_cast<std::size_t>(in.gcount());
  });
  AdifRecord record;
  std::int64_t read = 0;
  while (reader.Next(record)) ++read;
  return read;
}

// A station with an empty log.
struct Station {
  explicit Station(const std::filesystem::path& delivered) {
    std::filesystem::copy_file(delivered, scratch.Path() / "Brenvo.mdb");
    session.Windows.Adopt(std::make_unique<MainFrame>(session));
  }
  void Import(const std::filesystem::path& file) {
    ImportContacts(session, file, {}, KeepOn, report);
  }
  std::int64_t Export(const std::filesystem::path& file) {
    return ExportContacts(session, kAllContacts, file, KeepOn)->written;
  }
  static bool KeepOn(std::int64_t) { return true; }

  ScratchDirectory scratch;
  RecordingPlatform machine;
  Session session{machine, scratch.Path()};
  std::ostringstream report;
};

int Run(const std::filesystem::path& delivered, std::int64_t inLog, std::int64_t inFile) {
  const ScratchDirectory files;
  const auto big = files.Path() / "big.adi", file = files.Path() / "file.adi",
             out = files.Path() / "out.adi", again = files.Path() / "again.adi";
  WriteFile(big, 0, inLog);
  WriteFile(file, inLog, inFile);
  Tell("read a file", inFile, Seconds([&] { Parse(file); }));
  Tell("read a large file", inLog, Seconds([&] { Parse(big); }));
  {
    Station station(delivered);
    Tell("import of the file into an empty log", inFile, Seconds([&] { station.Import(file); }));
    std::int64_t written = 0;
    const double seconds = Seconds([&] { written = station.Export(out); });
    Tell("export", written, seconds);
  }
  {
    Station station(delivered);
    station.Import(out);
    station.Export(again);
    const bool same = ReadBytes(out) == ReadBytes(again);
    std::printf("export, import and export again: %s\n", same ? "the same file" : "NOT the same");
    if (!same) return 1;
  }
  Station station(delivered);
  Tell("import of the large file into an empty log", inLog, Seconds([&] { station.Import(big); }));
  Tell("preview of the file on the large log", inFile,
       Seconds([&] { PreviewImport(station.session, file, {}, Station::KeepOn); }));
  Tell("import of the file into the large log", inFile, Seconds([&] { station.Import(file); }));
  Tell("import of the same file again", inFile, Seconds([&] { station.Import(file); }));
  return 0;
}

}  // namespace
}  // namespace brenvo

int main(int argc, char** argv) {
  if (argc < 2)
    return std::fputs("usage: adif_bench DELIVERED_MDB [IN_LOG [IN_FILE]]\n", stderr), 2;
  return brenvo::Run(argv[1], argc > 2 ? std::atoll(argv[2]) : 1'000'000,
                     argc > 3 ? std::atoll(argv[3]) : 100'000);
}
