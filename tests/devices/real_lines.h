// A station whose serial ports, sockets and timers are real, on a machine that is otherwise
// recorded; and what stands at their other ends.
#pragma once

#include <fcntl.h>
#include <stdlib.h>
#include <sys/socket.h>
#include <termios.h>
#include <unistd.h>

#include <functional>
#include <memory>
#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QHostAddress>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTimer>
#include <stdexcept>
#include <string>

#include "station/station.h"
#include "tests/support/scratch_directory.h"
#include "ui/event_gate.h"
#include "ui/qt_devices.h"
#include "ui/qt_process.h"
#include "ui/qt_serial_port.h"
#include "ui/qt_tcp_client.h"
#include "ui/qt_tcp_server.h"
#include "ui/qt_udp_socket.h"

#include "recorder/recording_platform.h"

namespace brenvo::ui {

class RealLines : public recorder::RecordingPlatform {
 public:
  std::unique_ptr<platform::SerialPort> MakeSerialPort() override {
    return std::make_unique<QtSerialPort>(Gate, Settings());
  }
  std::unique_ptr<platform::TcpClient> MakeTcpClient(std::string_view) override {
    return std::make_unique<QtTcpClient>(Gate);
  }
  std::unique_ptr<platform::TcpServer> MakeTcpServer(std::string_view) override {
    return std::make_unique<QtTcpServer>(Gate);
  }
  std::unique_ptr<platform::UdpSocket> MakeUdpSocket(std::string_view) override {
    return std::make_unique<QtUdpSocket>(Gate);
  }
  std::unique_ptr<platform::Process> MakeProcess() override {
    return std::make_unique<QtProcess>(Gate);
  }
  std::unique_ptr<platform::Timer> MakeTimer() override { return std::make_unique<QtTimer>(Gate); }
  EventGate Gate;
};

// Lets events run until `met`, but no longer than told; whether it was met.
inline bool Until(const std::function<bool()>& met, int milliseconds = 5000) {
  QElapsedTimer timer;
  timer.start();
  while (!met()) {
    if (timer.elapsed() > milliseconds) return false;
    QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  }
  return true;
}
// Lets events run for some time in which nothing is expected.
inline void Pass(int milliseconds) {
  QEventLoop loop;
  QTimer::singleShot(milliseconds, &loop, &QEventLoop::quit);
  loop.exec();
}

// Plays a node or a chat server: one client at a time, and all that it has said.
class LoopbackServer {
 public:
  LoopbackServer() {
    QObject::connect(&server_, &QTcpServer::newConnection, &server_, [this] {
      client_ = server_.nextPendingConnection();
      Gone = false;
      QObject::connect(client_, &QTcpSocket::readyRead, client_,
                       [this] { Heard += client_->readAll().toStdString(); });
      QObject::connect(client_, &QTcpSocket::disconnected, client_, [this] { Gone = true; });
    });
    if (!server_.listen(QHostAddress::LocalHost)) throw std::runtime_error("no loopback");
  }
  // "127.0.0.1:port".
  std::string Address() const { return "127.0.0.1:" + std::to_string(server_.serverPort()); }
  bool Connected() const { return client_ != nullptr && !Gone; }
  // What is not in Heard any more was expected and came.
  bool Hears(const std::string& text) {
    const bool heard = Until([&] { return Heard.size() >= text.size(); });
    const bool same = heard && Heard.starts_with(text);
    if (same) Heard.erase(0, text.size());
    return same;
  }
  void Say(std::string_view bytes) {
    client_->write(bytes.data(), static_cast<qint64>(bytes.size()));
    client_->flush();
  }
  // Bytes that the station has not taken yet.
  long long Unsaid() const { return client_->bytesToWrite(); }
  void HangUp() { client_->disconnectFromHost(); }
  // Drops the connection without a farewell, as a node does whose machine has gone.
  void Reset() {
    const linger none{.l_onoff = 1, .l_linger = 0};
    setsockopt(static_cast<int>(client_->socketDescriptor()), SOL_SOCKET, SO_LINGER, &none,
               sizeof none);
    client_->disconnect();
    client_->abort();
    Gone = true;
  }
  // From now on nobody answers on this address.
  void Stop() { server_.close(); }

  std::string Heard;
  bool Gone = false;

 private:
  QTcpServer server_;
  QTcpSocket* client_ = nullptr;
};

// A serial line: the station has the device, the test its other end.
class SerialLine {
 public:
  SerialLine() : end_(posix_openpt(O_RDWR | O_NOCTTY)) {
    if (end_ < 0 || grantpt(end_) != 0 || unlockpt(end_) != 0) throw std::runtime_error("no pty");
    fcntl(end_, F_SETFL, O_NONBLOCK);
    device_ = ptsname(end_);
    // Held open and raw, so that nothing is echoed before the station has opened it.
    held_ = open(device_.c_str(), O_RDWR | O_NOCTTY);
    termios raw{};
    tcgetattr(held_, &raw);
    cfmakeraw(&raw);
    tcsetattr(held_, TCSANOW, &raw);
  }
  ~SerialLine() { PullOut(); }
  SerialLine(const SerialLine&) = delete;
  SerialLine& operator=(const SerialLine&) = delete;

  const std::string& Device() const { return device_; }
  // The adapter leaves its socket: the device is gone, though the station has it open.
  void PullOut() {
    for (int* end : {&held_, &end_}) {
      if (*end >= 0) close(*end);
      *end = -1;
    }
  }
  void Say(std::string_view bytes) {
    while (!bytes.empty()) {
      const ssize_t written = write(end_, bytes.data(), bytes.size());
      if (written > 0) bytes.remove_prefix(static_cast<std::size_t>(written));
      QCoreApplication::processEvents();
    }
  }
  bool Hears(const std::string& bytes) {
    const bool heard = Until([&] {
      Listen();
      return Heard.size() >= bytes.size();
    });
    const bool same = heard && Heard.starts_with(bytes);
    if (same) Heard.erase(0, bytes.size());
    return same;
  }
  // Takes what waits, into Heard.
  void Listen() {
    char buffer[4096];
    for (ssize_t count = 0; (count = read(end_, buffer, sizeof buffer)) > 0;) {
      Heard.append(buffer, static_cast<std::size_t>(count));
    }
  }

  std::string Heard;

 private:
  int end_ = -1, held_ = -1;
  std::string device_;
};

}  // namespace brenvo::ui
