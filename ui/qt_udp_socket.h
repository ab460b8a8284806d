// Datagrams.
#pragma once

#include <QUdpSocket>

#include "platform/udp_socket.h"
#include "ui/event_gate.h"

namespace brenvo::ui {

class QtUdpSocket : public platform::UdpSocket {
 public:
  explicit QtUdpSocket(EventGate& gate);
  ~QtUdpSocket() override;
  void Open(const platform::UdpListening& where) override;
  bool IsOpen() const override;
  std::optional<platform::UdpDatagram> Receive() override;
  void Send(const platform::UdpAddress& to, std::string_view bytes) override;
  void Close() override;

 private:
  void Tell();

  EventGate& gate_;
  QUdpSocket* socket_;
  QObject guard_;
  bool told_ = false;  // an event is due that reads
};

}  // namespace brenvo::ui
