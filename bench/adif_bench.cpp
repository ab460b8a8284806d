// Links: station recorder
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
#include "tests/support/scratch_database.h"

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

int Run(const std::filesystem::path& delivered, std::int64_t inLog, std::int64_t inFile) {
  ScratchDirectory scratch;
  std::filesystem::copy_file(delivered, scratch.Path() / "Brenvo.mdb");
  RecordingPlatform machine;
  Session session(machine, scratch.Path());
  session.Windows.Adopt(std::make_unique<MainFrame>(session));
  const auto keepOn = [](std::int64_t) { return true; };
  std::ostringstream report;

  const auto big = scratch.Path() / "big.adi", file = scratch.Path() / "file.adi";
  WriteFile(big, 0, inLog);
  WriteFile(file, inLog, inFile);
  Tell("read the big file", inLog, Seconds([&] { Parse(big); }));
  Tell("read the file", inFile, Seconds([&] { Parse(file); }));
  Tell("import the big file into an empty log", inLog,
       Seconds([&] { ImportContacts(session, big, {}, keepOn, report); }));
  Tell("preview of the file", inFile,
       Seconds([&] { PreviewImport(session, file, {}, keepOn); }));
  Tell("import of the file", inFile,
       Seconds([&] { ImportContacts(session, file, {}, keepOn, report); }));
  Tell("import of the same file again", inFile,
       Seconds([&] { ImportContacts(session, file, {}, keepOn, report); }));
  std::int64_t written = 0;
  const double seconds = Seconds([&] {
    written = ExportContacts(session, kAllContacts, scratch.Path() / "out.adi", keepOn)->written;
  });
  Tell("export of all", written, seconds);

  // The round trip: into an empty log, and out again.
  const auto out = scratch.Path() / "out.adi", again = scratch.Path() / "again.adi";
  session.Db.Execute("DELETE * FROM Log");
  session.Db.Execute("DELETE * FROM LogAdif");
  ImportContacts(session, out, {}, keepOn, report);
  ExportContacts(session, kAllContacts, again, keepOn);
  const bool same = ReadBytes(out) == ReadBytes(again);
  std::printf("export, import and export again: %s\n", same ? "the same file" : "NOT the same");
  return same ? 0 : 1;
}

}  // namespace
}  // namespace brenvo

int main(int argc, char** argv) {
  if (argc < 2) return std::fputs("usage: adif_bench DELIVERED_MDB [IN_LOG [IN_FILE]]\n", stderr), 2;
  return brenvo::Run(argv[1], argc > 2 ? std::atoll(argv[2]) : 1'000'000,
                     argc > 3 ? std::atoll(argv[3]) : 100'000);
}
