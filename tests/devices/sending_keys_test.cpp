// The sending keys of a contest against a daemon on the loopback address, over real sockets.
#include <gmock/gmock.h>

#include <QNetworkDatagram>
#include <QUdpSocket>

#include "gara/keyer.h"
#include "tests/devices/real_station.h"

namespace brenvo::ui {
namespace {

class SendingKeys : public RealStation {
 protected:
  SendingKeys() {
    daemon.bind(QHostAddress::LocalHost);
    Event([&] {
      EXPECT_EQ(session.Choices.Set(core::choice::kContestSends, "Sì"), "");
      EXPECT_EQ(session.Choices.Set(core::choice::kCwPort, std::to_string(daemon.localPort())), "");
    });
  }
  // The next datagram that the daemon gets.
  std::string Next() {
    if (!Until([&] { return daemon.hasPendingDatagrams(); })) return "nothing";
    const QNetworkDatagram datagram = daemon.receiveDatagram();
    asker = static_cast<quint16>(datagram.senderPort());
    return datagram.data().toStdString();
  }
  void SendCq() {
    Event([&] { EXPECT_EQ(keyer.SendCw("CQ TEST"), ""); });
    EXPECT_EQ(Next(),
              "\x1B"
              "224");
    EXPECT_EQ(Next(), "\x1Bh");
    EXPECT_EQ(Next(), "CQ TEST");
  }
  QUdpSocket daemon;
  quint16 asker = 0;
  gara::Keyer keyer{session};
};

TEST_F(SendingKeys, TheDaemonGetsItsOrdersAndItsAnswerEndsTheTransmission) {
  int ends = 0;
  keyer.OnEnd = [&](std::string_view why) {
    EXPECT_EQ(why, "");
    ++ends;
  };
  SendCq();
  EXPECT_TRUE(keyer.IsSending());
  daemon.writeDatagram("h\r\n", QHostAddress::LocalHost, asker);
  EXPECT_TRUE(Until([&] { return !keyer.IsSending(); }));
  EXPECT_EQ(ends, 1);
}

TEST_F(SendingKeys, AStopReachesTheDaemonAtOnce) {
  SendCq();
  Event([&] { keyer.Stop(); });
  EXPECT_EQ(Next(),
            "\x1B"
            "4");
  EXPECT_EQ(Next(),
            "\x1B"
            "a0");
  EXPECT_FALSE(keyer.IsSending());
}

TEST_F(SendingKeys, TheLimitStopsADaemonThatNeverAnswers) {
  Event([&] { EXPECT_EQ(session.Choices.Set(core::choice::kSendingLimit, "2"), ""); });
  SendCq();
  EXPECT_EQ(Next(),
            "\x1B"
            "4");
}

}  // namespace
}  // namespace brenvo::ui
