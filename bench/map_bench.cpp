// Links: ui station
// What the map behind the main frame costs: painting 10,000 squares on the world map, and a frame
// while the operator scrolls and zooms.
// Usage: map_bench DELIVERED
#include <fmt/format.h>
#include <stdlib.h>
#include <time.h>

#include <QApplication>
#include <QTimer>
#include <algorithm>
#include <cstdio>
#include <functional>
#include <vector>

#include "core/transaction.h"
#include "station/station.h"
#include "ui/map_area.h"
#include "ui/qt_platform.h"

namespace brenvo {
namespace {

constexpr int kSquares = 10'000;

class ScratchStation {
 public:
  explicit ScratchStation(const std::filesystem::path& delivered) {
    std::string pattern = (std::filesystem::temp_directory_path() / "brenvo-XXXXXX").string();
    if (mkdtemp(pattern.data()) == nullptr) throw std::runtime_error("no scratch directory");
    path = pattern;
    std::filesystem::copy(delivered, path, std::filesystem::copy_options::recursive);
  }
  ~ScratchStation() {
    std::error_code ignored;
    std::filesystem::remove_all(path, ignored);
  }
  ScratchStation(const ScratchStation&) = delete;
  ScratchStation& operator=(const ScratchStation&) = delete;
  std::filesystem::path path;
};

// Milliseconds of processor time: what else the machine does is not counted.
double Now() {
  timespec now{};
  clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
  return static_cast<double>(now.tv_sec) * 1e3 + static_cast<double>(now.tv_nsec) / 1e6;
}

// Ten by ten fields, all of their squares.
void Fill(Database& db) {
  Transaction transaction(db);
  for (int i = 0; i < kSquares; ++i) {
    db.Execute(fmt::format("insert into Log (DataQso,Call,Locator,Banda,QslRicevuta) values "
                           "(cvdate('01/01/2001'),'C{}','{}{}{:02}AA','  2 m',{})",
                           i, static_cast<char>('H' + i / 1000), static_cast<char>('E' + i / 100 % 10),
                           i % 100, i % 3 == 0));
  }
  transaction.Commit();
}

void Paint(Session& session, int times) {
  session.QueryText = "WHERE Locator<>''";
  session.MapFile = "wm.jpg";
  session.Pointer_X = 0;
  std::printf("%-34s %10s %14s\n", "painting 10,000 squares", "ms", "longest pause");
  for (int i = 0; i < times; ++i) {
    // What the interface would have answered to meanwhile.
    double lastTick = Now(), longest = 0;
    QTimer ticks;
    QObject::connect(&ticks, &QTimer::timeout, [&] {
      longest = std::max(longest, Now() - lastTick);
      lastTick = Now();
    });
    ticks.start(5);
    const double begin = Now();
    session.Windows.RunEvent([&] {
      if (session.HDisplayMappa != nullptr) session.HDisplayMappa->SetText(fmt::format("SQUARE{}", i));
    });
    std::printf("%-34s %10.0f %14.0f\n", i == 0 ? "with the image to load" : "over the same image",
                Now() - begin, longest);
  }
}

// Frames of a movement, one after the other.
void Frames(MapArea& map, const char* name, int count, const std::function<void(int)>& move) {
  std::vector<double> times;
  for (int i = 0; i < count; ++i) {
    const double begin = Now();
    move(i);
    map.viewport()->repaint();
    times.push_back(Now() - begin);
  }
  std::sort(times.begin(), times.end());
  std::printf("%-34s %10.1f %14.1f\n", name, times[times.size() / 2], times.back());
}

void Move(MapArea& map) {
  std::printf("\n%-34s %10s %14s\n", "a frame, ms", "median", "longest");
  for (const int zoom : {25, 60, 100, 250}) {
    map.SetZoom(zoom);
    Frames(map, fmt::format("scrolling at {} per cent", zoom).c_str(), 100,
           [&](int i) { map.SetScroll(10 * i, 6 * i); });
  }
  Frames(map, "zooming from 25 to 400 per cent", 76, [&](int i) { map.SetZoom(25 + 5 * i); });
}

}  // namespace
}  // namespace brenvo

int main(int argc, char** argv) {
  using namespace brenvo;
  if (argc != 2) {
    std::fputs("usage: map_bench DELIVERED\n", stderr);
    return 2;
  }
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication application(argc, argv);
  const ScratchStation scratch(std::filesystem::absolute(argv[1]));
  QtPlatform platform(scratch.path);
  Session session(platform, scratch.path);
  platform.Attach(&session);
  if (StartStation(session) == nullptr) return 1;
  platform.Screen().Main().resize(1600, 900);
  QApplication::processEvents();
  Fill(session.Db);
  Paint(session, 3);
  MapArea& map = platform.Screen().Map();
  std::printf("view %d x %d, image %d x %d\n", map.ViewWidth(), map.ViewHeight(), map.ImageWidth(),
              map.ImageHeight());
  Move(map);
  session.Windows.RunEvent([&] { StopStation(session); });
  platform.Attach(nullptr);
  return 0;
}
