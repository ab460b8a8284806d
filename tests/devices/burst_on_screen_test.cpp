// A burst from a node into a terminal that stands on the desktop.
#include <algorithm>
#include <ctime>
#include <QTimer>

#include "tests/devices/real_station.h"
#include "ui/qt_platform.h"
#include "tests/support/places.h"

namespace brenvo {
namespace {

class Desktop : public testing::Test {
 protected:
  Desktop() {
    std::filesystem::copy_file(BuildDir() / "delivered/Brenvo.mdb", directory.Path() / "Brenvo.mdb");
    std::filesystem::copy_file(SourceDir() / "data/tnc.mnu", directory.Path() / "tnc.mnu");
    machine.Attach(&session);
    StartStation(session);
    session.Db.Execute("UPDATE [User] SET TelnetCluster='" + node.Address() + "'");
    session.TbUser->MoveFirst();
    Event([&] { session.Windows.Show(*session.Windows.LoadSingle("TNCtelnet")); });
    Until([&] { return node.Connected(); });
  }
  ~Desktop() override {
    Event([&] { StopStation(session); });
    Pass(1);
    machine.Attach(nullptr);
  }
  void Event(const std::function<void()>& event) { session.Windows.RunEvent(event); }

  LoopbackServer node;
  ScratchDirectory directory;
  QtPlatform machine{directory.Path()};
  Session session{machine, directory.Path()};
};

TEST_F(Desktop, ABurstOfTenThousandLinesLeavesTheInterfaceAnswering) {
  auto& telnet = static_cast<TNCtelnet&>(*session.Windows.Find("TNCtelnet"));
  std::string burst;
  for (int i = 0; i < 10000; ++i) {
    burst += "DX de I4LCK:     14195.0  Z" + std::to_string(i) + "A   tnx 1423Z\r\n";
  }
  // What an operator would wait for a key to be taken, by the processor's time: what else the
  // machine does is not the terminal's.
  const auto now = [] { return static_cast<qint64>(std::clock()) * 1000 / CLOCKS_PER_SEC; };
  const qint64 start = now();
  qint64 last = start;
  qint64 longest = 0;
  QTimer beat;
  QObject::connect(&beat, &QTimer::timeout, &beat, [&] {
    longest = std::max(longest, now() - last);
    last = now();
  });
  beat.start(5);
  node.Say(burst);
  EXPECT_TRUE(Until([&] { return telnet.Received.Find("Z9999A", 0) != RichText::npos; }, 240000));
  beat.stop();
  RecordProperty("milliseconds", static_cast<int>(now() - start));
  RecordProperty("longest_wait", static_cast<int>(longest));
  std::printf("10,000 lines on screen in %lld ms, longest wait %lld ms\n",
              static_cast<long long>(now() - start), static_cast<long long>(longest));
  EXPECT_LT(longest, 2000);
}

}  // namespace
}  // namespace brenvo
