#include <QNetworkDatagram>
#include <QNetworkInterface>
#include <QUdpSocket>

#include "platform/device_error.h"
#include "tests/ui/screen.h"
#include "ui/qt_udp_socket.h"

namespace brenvo::ui {
namespace {

class Udp : public ScreenTest {
 protected:
  Udp() {
    socket.OnData = [this] {
      ++events;
      for (int i = 0; i < atOnce; ++i) {
        const auto datagram = socket.Receive();
        if (!datagram) break;
        read.push_back(datagram->bytes);
        from = datagram->from;
      }
    };
  }
  // A port that nothing listens on.
  static int FreePort() {
    QUdpSocket any;
    any.bind(QHostAddress::LocalHost);
    return any.localPort();
  }
  template <class Condition>
  static bool WaitFor(Condition condition) {
    return QTest::qWaitFor(condition, 3000);
  }
  QtUdpSocket socket{gate};
  QUdpSocket other;
  int port = FreePort();
  std::vector<std::string> read;
  platform::UdpAddress from;
  int events = 0, atOnce = 1000;
};

TEST_F(Udp, ADatagramComesWithItsSenderWhoGetsTheAnswer) {
  socket.Open({{"127.0.0.1", port}, {}, {}});
  other.bind(QHostAddress::LocalHost);
  other.writeDatagram("hello", QHostAddress::LocalHost, static_cast<quint16>(port));
  ASSERT_TRUE(WaitFor([&] { return !read.empty(); }));
  EXPECT_EQ(read.front(), "hello");
  EXPECT_EQ(from, (platform::UdpAddress{"127.0.0.1", other.localPort()}));
  socket.Send(from, "and back");
  ASSERT_TRUE(WaitFor([&] { return other.hasPendingDatagrams(); }));
  const QNetworkDatagram answer = other.receiveDatagram();
  EXPECT_EQ(answer.data(), "and back");
  EXPECT_EQ(answer.senderPort(), port);
}

TEST_F(Udp, WhatAnEventLeavesIsToldAgain) {
  atOnce = 2;
  socket.Open({{"127.0.0.1", port}, {}, {}});
  for (int i = 0; i < 7; ++i) {
    other.writeDatagram(QByteArray::number(i), QHostAddress::LocalHost, static_cast<quint16>(port));
  }
  ASSERT_TRUE(WaitFor([&] { return read.size() == 7; }));
  EXPECT_GE(events, 4);
}

TEST_F(Udp, APortThatAnotherHasIsToldByItsNumber) {
  other.bind(QHostAddress::LocalHost, 0, QAbstractSocket::DontShareAddress);
  try {
    socket.Open({{"127.0.0.1", other.localPort()}, {}, {}});
    FAIL() << "it opens";
  } catch (const platform::DeviceError& failure) {
    EXPECT_EQ(failure.what(), "La porta " + std::to_string(other.localPort()) +
                                  " è occupata da un altro programma");
  }
  EXPECT_FALSE(socket.IsOpen());
}

TEST_F(Udp, AGroupIsHeardOnTheLoopbackInterface) {
  socket.Open({{"127.0.0.1", port}, "239.255.0.1", {"lo"}});
  other.setSocketOption(QAbstractSocket::MulticastLoopbackOption, 1);
  other.bind(QHostAddress(QHostAddress::AnyIPv4));
  other.setMulticastInterface(QNetworkInterface::interfaceFromName("lo"));
  other.writeDatagram("to all", QHostAddress("239.255.0.1"), static_cast<quint16>(port));
  EXPECT_TRUE(WaitFor([&] { return !read.empty(); }));
}

TEST_F(Udp, AClosedOneHearsAndSendsNothing) {
  socket.Open({{"127.0.0.1", port}, {}, {}});
  socket.Close();
  other.bind(QHostAddress::LocalHost);
  socket.Send({"127.0.0.1", other.localPort()}, "x");
  other.writeDatagram("x", QHostAddress::LocalHost, static_cast<quint16>(port));
  QTest::qWait(50);
  EXPECT_TRUE(read.empty());
  EXPECT_FALSE(other.hasPendingDatagrams());
}

}  // namespace
}  // namespace brenvo::ui
