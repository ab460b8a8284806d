// What the map behind the main frame costs on a screen of 1600 by 900 that nobody sees: painting
// 10,000 squares on the world map, with the longest pause in which the interface did not answer,
// and a frame while the operator scrolls and zooms.
#include <fmt/format.h>

#include <algorithm>
#include <functional>
#include <QApplication>
#include <QTimer>

#include "bench/support/figures.h"
#include "core/transaction.h"
#include "station/station.h"
#include "tests/support/places.h"
#include "tests/support/scratch_directory.h"
#include "ui/map_area.h"
#include "ui/qt_platform.h"

namespace brenvo::bench {
namespace {

constexpr int kSquares = 10'000;

// Ten by ten fields, all of their squares.
void Fill(engine::Database& db) {
  core::Transaction transaction(db);
  for (int i = 0; i < kSquares; ++i) {
    db.Execute(
        fmt::format("insert into Log (DataQso,Call,Locator,Banda,QslRicevuta) values "
                    "(cvdate('01/01/2001'),'C{}','{}{}{:02}AA','  2 m',{})",
                    i, static_cast<char>('H' + i / 1000), static_cast<char>('E' + i / 100 % 10),
                    i % 100, i % 3 == 0));
  }
  transaction.Commit();
}

class MapTasks {
 public:
  MapTasks(const Figures& figures, core::Session& session, ui::MapArea& map)
      : figures_(figures), session_(session), map_(map) {}

  void Run() {
    Paint("10,000 squares, image loaded first", 1);
    Paint("10,000 squares", 5);
    for (const int zoom : {25, 60, 100, 250}) {
      map_.SetZoom(zoom);
      Frames(fmt::format("a frame, scrolling at {} per cent", zoom),
             [&](int i) { map_.SetScroll(10 * i, 6 * i); });
    }
    Frames("a frame, zooming from 25 to 400 per cent",
           [&](int i) { map_.SetZoom(25 + 375 * i / kFrames); });
  }

 private:
  static constexpr int kFrames = 200;

  void Paint(std::string_view task, int times) {
    session_.Handed.QueryText = "WHERE Locator<>''";
    session_.Map.MapFile = "wm.jpg";
    session_.Map.Pointer_X = 0;
    Samples whole, pause;
    for (int i = 0; i < times; ++i) {
      double last = ProcessorTime(), longest = 0;
      QTimer ticks;
      QObject::connect(&ticks, &QTimer::timeout, [&] {
        longest = std::max(longest, ProcessorTime() - last);
        last = ProcessorTime();
      });
      ticks.start(1);
      // The time of day stands behind the word; here a number does, so that no request is missed.
      whole.Measure([&] {
        session_.Windows.RunEvent(
            [&] { session_.Map.Door->DisplayMap(fmt::format("SQUARE{}", requests_++)); });
      });
      pause.Add(longest);
    }
    Tell(task, whole);
    Tell(fmt::format("{}, pause", task), pause);
  }

  void Frames(std::string_view task, const std::function<void(int)>& move) {
    Samples frames;
    for (int i = 0; i < kFrames; ++i) {
      frames.Measure([&] {
        move(i);
        map_.viewport()->repaint();
      });
    }
    Tell(task, frames);
  }

  void Tell(std::string_view task, const Samples& times) {
    if (figures_.Wants(task)) figures_.Line(kSquares, task, times, {});
  }

  const Figures& figures_;
  core::Session& session_;
  ui::MapArea& map_;
  int requests_ = 0;
};

}  // namespace
}  // namespace brenvo::bench

int main(int argc, char** argv) {
  using namespace brenvo;
  using namespace brenvo::bench;
  const Figures figures("map", argc, argv);
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication application(argc, argv);
  const ScratchDirectory scratch;
  std::filesystem::copy(BuildDir() / "delivered", scratch.Path(),
                        std::filesystem::copy_options::recursive);
  ui::QtPlatform platform(scratch.Path());
  core::Session session(platform, scratch.Path());
  platform.Attach(&session);
  if (station::StartStation(session) == nullptr) return 1;
  platform.Screen().Main().resize(1600, 900);
  QApplication::processEvents();
  Fill(session.Db);
  MapTasks(figures, session, platform.Screen().Map()).Run();
  session.Windows.RunEvent([&] { station::StopStation(session); });
  platform.Attach(nullptr);
  return 0;
}
