// What a line from a cluster costs, from the bytes on the wire to the text area: lines a second
// without sound, and one spot whose call is looked up in a log of a million contacts.
#include <sqlite3.h>
#include <sys/resource.h>

#include <chrono>
#include <cstdio>
#include <ctime>
#include <fstream>
#include <functional>
#include <stdexcept>
#include <string>

#include "links/tnc.h"
#include "links/tnc_telnet.h"
#include "recorder/recording_platform.h"
#include "station/station.h"
#include "tests/support/places.h"
#include "tests/support/scratch_directory.h"
#include "tools/mkdatabase/database_maker.h"
#include "tools/mklog/log_maker.h"

namespace brenvo::bench {
namespace {

constexpr int kLines = 20000;

void Sql(const std::filesystem::path& file, const std::string& sql) {
  sqlite3* handle = nullptr;
  sqlite3_open(file.c_str(), &handle);
  if (sqlite3_exec(handle, sql.c_str(), nullptr, nullptr, nullptr) != SQLITE_OK) {
    throw std::runtime_error(sqlite3_errmsg(handle));
  }
  sqlite3_close(handle);
}

// A station with terminals that nobody announces to.
class Station {
 public:
  explicit Station(int contacts)
      : machine_([](const std::string&) {}), session_(machine_, directory_.Path()) {
    const std::filesystem::path file = directory_.Path() / "Brenvo.mdb";
    mkdatabase::MakeDatabase(SourceDir() / "data/schema.sql", SourceDir() / "data", file);
    std::filesystem::copy_file(SourceDir() / "data/tnc.mnu", directory_.Path() / "tnc.mnu");
    Sql(file, "UPDATE UserRTX SET AnnunceDX=0; UPDATE User SET TelnetCluster='x:1'");
    if (contacts > 0) mklog::MakeLog(file, contacts);
    if (station::StartStation(session_) == nullptr) throw std::runtime_error("no station");
  }

  template <class Terminal>
  Terminal& Open(const char* name) {
    forms::Window* window = session_.Windows.LoadSingle(name);
    session_.Windows.Show(*window);
    return static_cast<Terminal&>(*window);
  }
  void ReceiveRadio(const std::string& bytes) {
    session_.Windows.RunEvent([&] { machine_.Serial().Receive(1, bytes); });
  }
  void ReceiveTelnet(const std::string& bytes) {
    session_.Windows.RunEvent([&] { machine_.Tcp().Receive("TNCtelnet", bytes); });
  }

 private:
  ScratchDirectory directory_;
  recorder::RecordingPlatform machine_;
  core::Session session_;
};

// All different, as a busy cluster sends them.
std::string Burst(int lines) {
  std::string burst;
  for (int i = 0; i < lines; ++i) {
    char line[128];
    std::snprintf(
        line, sizeof line,
        "DX de IK%dABC:   %8.1f  I%d%c%c%c        CW    %2d dB  %2d WPM  CQ      %04dZ\r\n", i % 10,
        14000 + i % 3500 / 10.0, i % 10, 'A' + i / 10 % 26, 'A' + i / 260 % 26, 'A' + i / 6760 % 26,
        i % 40, 12 + i % 30, i % 2400);
    burst += line;
  }
  return burst;
}

// By the clock, and by the processor's time, which does not count what else a machine does.
void Measure(const char* what, int lines, const std::function<void()>& work) {
  const auto start = std::chrono::steady_clock::now();
  const std::clock_t used = std::clock();
  work();
  const double processor = static_cast<double>(std::clock() - used) / CLOCKS_PER_SEC;
  const double seconds =
      std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
  std::printf("%-58s %9.0f lines/s, %9.0f by processor time (%.1f us/line)\n", what,
              lines / seconds, lines / processor, processor * 1e6 / lines);
  std::fflush(stdout);
}

long PeakMegabytes() {
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  return usage.ru_maxrss / 1024;
}

// A line of 100 MB that never ends, on each terminal.
void MeasureEndlessLine() {
  Station station(0);
  links::TNC& tnc = station.Open<links::TNC>("TNC");
  links::TNCtelnet& telnet = station.Open<links::TNCtelnet>("TNCtelnet");
  const std::string block(1 << 16, 'x');
  const long before = PeakMegabytes();
  const auto start = std::chrono::steady_clock::now();
  for (int i = 0; i < 1600; ++i) {
    station.ReceiveRadio(block);
    station.ReceiveTelnet(block);
  }
  const double seconds =
      std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
  std::printf(
      "100 MB without a line end, both terminals: %.1f s, %ld MB more at the peak, "
      "%zu and %zu characters shown\n",
      seconds, PeakMegabytes() - before, tnc.Received.Length(), telnet.Received.Length());
  std::fflush(stdout);
}

void Run() {
  MeasureEndlessLine();
  const std::string burst = Burst(kLines);
  {
    Station station(0);
    links::TNC& tnc = station.Open<links::TNC>("TNC");
    Measure("radio, mark Tutto", kLines, [&] { station.ReceiveRadio(burst); });
    tnc.cmMDX.Press();
    Measure("radio, mark DX: each line sought in 32,000 characters", kLines,
            [&] { station.ReceiveRadio(burst); });
    tnc.Banda.Pick(1);
    Measure("radio, mark DX, no band ticked: each line taken back", kLines,
            [&] { station.ReceiveRadio(burst); });
  }
  {
    Station station(0);
    links::TNCtelnet& telnet = station.Open<links::TNCtelnet>("TNCtelnet");
    Measure("telnet", kLines, [&] { station.ReceiveTelnet(burst); });
    telnet.Banda.Pick(1);
    Measure("telnet, no band ticked: no line is shown", kLines,
            [&] { station.ReceiveTelnet(burst); });
  }
  constexpr int kSpots = 2000;
  Station station(1'000'000);
  links::TNCtelnet& telnet = station.Open<links::TNCtelnet>("TNCtelnet");
  const std::string spots = Burst(kSpots);
  Measure("telnet, 1,000,000 contacts, check off", kSpots, [&] { station.ReceiveTelnet(spots); });
  telnet.cmAutoCheck.Press();
  station.ReceiveTelnet(Burst(1));  // opens the matrix
  Measure("telnet, 1,000,000 contacts, check on", kSpots, [&] { station.ReceiveTelnet(spots); });
}

}  // namespace
}  // namespace brenvo::bench

int main() {
  brenvo::bench::Run();
  return 0;
}
