// A burst from a node into a terminal that stands on the desktop.
#include <algorithm>
#include <ctime>
#include <QMdiSubWindow>
#include <QPlainTextEdit>
#include <QTextBlock>
#include <QTimer>

#include "tests/devices/real_station.h"
#include "tests/support/places.h"
#include "ui/qt_platform.h"

namespace brenvo::ui {
namespace {

class Desktop : public testing::Test {
 protected:
  Desktop() {
    std::filesystem::copy_file(BuildDir() / "delivered/Brenvo.mdb",
                               directory.Path() / "Brenvo.mdb");
    for (const char* file : {"tnc.mnu", "wwconv.mnu"}) {
      std::filesystem::copy_file(SourceDir() / "data" / file, directory.Path() / file);
    }
    machine.Attach(&session);
    station::StartStation(session);
    session.Db.Execute("UPDATE [User] SET TelnetCluster='" + node.Address() + "'");
    session.Tables.TbUser->MoveFirst();
    Event([&] { session.Windows.Show(*session.Windows.LoadSingle("TNCtelnet")); });
    Until([&] { return node.Connected(); });
  }
  ~Desktop() override {
    Event([&] { station::StopStation(session); });
    Pass(1);
    machine.Attach(nullptr);
  }
  void Event(const std::function<void()>& event) { session.Windows.RunEvent(event); }
  // What an operator would have waited longest for a key to be taken until `arrived`, by the
  // processor's time: what else the machine does is not the terminal's. Milliseconds.
  static qint64 LongestWait(const char* of, const std::function<bool()>& arrived) {
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
    EXPECT_TRUE(Until(arrived, 240000));
    beat.stop();
    std::printf("%s on screen in %lld ms, longest wait %lld ms\n", of,
                static_cast<long long>(now() - start), static_cast<long long>(longest));
    return longest;
  }

  LoopbackServer node;
  ScratchDirectory directory;
  QtPlatform machine{directory.Path()};
  core::Session session{machine, directory.Path()};
};

TEST_F(Desktop, ABurstOfTenThousandLinesLeavesTheInterfaceAnswering) {
  auto& telnet = static_cast<links::TNCtelnet&>(*session.Windows.Find("TNCtelnet"));
  std::string burst;
  for (int i = 0; i < 10000; ++i) {
    burst += "DX de I4LCK:     14195.0  Z" + std::to_string(i) + "A   tnx 1423Z\r\n";
  }
  node.Say(burst);
  const qint64 longest = LongestWait(
      "10,000 lines", [&] { return telnet.Received.Find("Z9999A", 0) != forms::RichText::npos; });
  EXPECT_LT(longest, 2000);
}

TEST_F(Desktop, AMegabyteWithoutALineEndLeavesTheInterfaceAnswering) {
  LoopbackServer chat;
  session.Db.Execute("UPDATE [User] SET TelnetWWConv='" + chat.Address() + "'");
  session.Tables.TbUser->MoveFirst();
  Event([&] { session.Windows.Show(*session.Windows.LoadSingle("WWConv")); });
  ASSERT_TRUE(Until([&] { return chat.Connected(); }));
  auto* area = machine.Screen()
                   .Main()
                   .findChild<QMdiSubWindow*>(QStringLiteral("WWConv"))
                   ->findChild<QPlainTextEdit*>(QStringLiteral("Received"));
  ASSERT_NE(area, nullptr);
  chat.Say(std::string(1 << 20, 'x') + "fine");
  const qint64 longest = LongestWait("A megabyte without a line end", [&] {
    return area->document()->lastBlock().text().endsWith(QLatin1String("fine"));
  });
  EXPECT_LT(longest, 500);
}

}  // namespace
}  // namespace brenvo::ui
