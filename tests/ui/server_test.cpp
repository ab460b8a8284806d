// What other programs connect to, over real sockets.
#include <gmock/gmock.h>

#include <QElapsedTimer>
#include <QHostAddress>
#include <QTcpServer>
#include <QTcpSocket>

#include "platform/device_error.h"
#include "tests/ui/screen.h"
#include "ui/qt_tcp_server.h"

namespace brenvo::ui {
namespace {

struct ServerTest : ScreenTest {
  ServerTest() {
    QTcpServer probe;
    probe.listen(QHostAddress::LocalHost);
    port = probe.serverPort();
    probe.close();
    server.OnData = [this](int peer) { heard[peer] += server.Read(peer, 1000); };
    server.OnGone = [this](int peer) { gone.push_back(peer); };
    server.Listen(port);
  }
  static bool Meets(const std::function<bool()>& met, int milliseconds = 5000) {
    QElapsedTimer timer;
    timer.start();
    while (!met()) {
      if (timer.elapsed() > milliseconds) return false;
      QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
    }
    return true;
  }
  std::unique_ptr<QTcpSocket> Program() {
    auto socket = std::make_unique<QTcpSocket>();
    socket->connectToHost(QHostAddress::LocalHost, static_cast<quint16>(port));
    EXPECT_TRUE(Meets([&] { return socket->state() == QAbstractSocket::ConnectedState; }));
    return socket;
  }

  int port = 0;
  QtTcpServer server{gate};
  std::map<int, std::string> heard;
  std::vector<int> gone;
};

TEST_F(ServerTest, ProgramsAreHeardAndAnsweredEachByItself) {
  const auto one = Program(), two = Program();
  one->write("f\n");
  ASSERT_TRUE(Meets([&] { return heard.size() == 1; }));
  two->write("m\n");
  ASSERT_TRUE(Meets([&] { return heard.size() == 2; }));
  const int first = heard.begin()->first;
  EXPECT_EQ(heard[first], "f\n");
  server.Send(first, "14250000\n");
  ASSERT_TRUE(Meets([&] { return one->bytesAvailable() > 0; }));
  EXPECT_EQ(one->readAll().toStdString(), "14250000\n");
  EXPECT_EQ(two->bytesAvailable(), 0);
  one->disconnectFromHost();
  ASSERT_TRUE(Meets([&] { return !gone.empty(); }));
  EXPECT_EQ(gone, std::vector<int>{first});
  server.Send(first, "to nobody");
}

TEST_F(ServerTest, NoMoreProgramsAreLetInThanToldAndNoneBehindItsEnd) {
  std::vector<std::unique_ptr<QTcpSocket>> all;
  for (std::size_t i = 0; i < platform::TcpServer::kMostPeers; ++i) {
    all.push_back(Program());
    all.back()->write("f\n");
    ASSERT_TRUE(Meets([&] { return heard.size() == i + 1; }));
  }
  QTcpSocket late;
  bool turnedAway = false;
  QObject::connect(&late, &QTcpSocket::disconnected, &late, [&] { turnedAway = true; });
  late.connectToHost(QHostAddress::LocalHost, static_cast<quint16>(port));
  EXPECT_TRUE(Meets([&] { return turnedAway; }));
  server.Close();
  EXPECT_TRUE(Meets([&] { return all[0]->state() == QAbstractSocket::UnconnectedState; }));
  EXPECT_TRUE(gone.empty());
  EXPECT_FALSE(server.IsListening());
}

TEST_F(ServerTest, APortThatIsTakenIsAFailure) {
  QtTcpServer other(gate);
  EXPECT_THROW(other.Listen(port), platform::DeviceError);
}

}  // namespace
}  // namespace brenvo::ui
