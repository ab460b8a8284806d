#include "screens/far_ends.h"

#include <fcntl.h>
#include <stdlib.h>
#include <termios.h>
#include <unistd.h>

#include <QHostAddress>
#include <QTcpSocket>
#include <QTimer>
#include <QUdpSocket>
#include <stdexcept>

namespace brenvo::screens {
namespace {

constexpr int kPauseMilliseconds = 15;

}  // namespace

GreetingServer::GreetingServer(std::vector<std::string> lines) {
  QObject::connect(&server_, &QTcpServer::newConnection, &server_, [this, lines] {
    QTcpSocket* const client = server_.nextPendingConnection();
    int wait = 0;
    for (const std::string& line : lines) {
      QTimer::singleShot(wait += kPauseMilliseconds, client, [client, line] {
        client->write((line + "\r\n").c_str());
        client->flush();
      });
    }
  });
  if (!server_.listen(QHostAddress::LocalHost)) throw std::runtime_error("no loopback");
}

std::string GreetingServer::Address() const {
  return "127.0.0.1:" + std::to_string(server_.serverPort());
}

AnsweringServer::AnsweringServer(Answer answer) {
  QObject::connect(&server_, &QTcpServer::newConnection, &server_,
                   [this, answer = std::move(answer)] {
                     QTcpSocket* const client = server_.nextPendingConnection();
                     QObject::connect(client, &QTcpSocket::readyRead, client, [client, answer] {
                       while (client->canReadLine()) {
                         const std::string line = client->readLine().trimmed().toStdString();
                         client->write(answer(line).c_str());
                         client->flush();
                       }
                     });
                   });
  if (!server_.listen(QHostAddress::LocalHost)) throw std::runtime_error("no loopback");
}

std::string AnsweringServer::Address() const {
  return "127.0.0.1:" + std::to_string(server_.serverPort());
}

void SendDatagrams(int port, const std::vector<std::string>& datagrams) {
  QUdpSocket socket;
  for (const std::string& each : datagrams) {
    socket.writeDatagram(each.data(), static_cast<qint64>(each.size()), QHostAddress::LocalHost,
                         static_cast<quint16>(port));
  }
}

// Another system must supply a device that two ends can open, of which the station opens one by its
// path, as a serial line: here a pseudo-terminal.
SilentDevice::SilentDevice() : end_(posix_openpt(O_RDWR | O_NOCTTY)) {
  if (end_ < 0 || grantpt(end_) != 0 || unlockpt(end_) != 0) {
    throw std::runtime_error("no pseudo-terminal");
  }
  fcntl(end_, F_SETFL, O_NONBLOCK);
  path_ = ptsname(end_);
  // Held open and raw, so that nothing is echoed before the station has opened it.
  held_ = open(path_.c_str(), O_RDWR | O_NOCTTY);
  termios raw{};
  tcgetattr(held_, &raw);
  cfmakeraw(&raw);
  tcsetattr(held_, TCSANOW, &raw);
}

SilentDevice::~SilentDevice() {
  close(held_);
  close(end_);
}

void SilentDevice::Say(std::string_view bytes) {
  if (write(end_, bytes.data(), bytes.size()) < 0) throw std::runtime_error("the line is full");
}

}  // namespace brenvo::screens
