// A TCP connection.
#pragma once

#include <QTcpSocket>

#include "platform/tcp_client.h"
#include "ui/event_gate.h"

namespace brenvo::ui {

class QtTcpClient : public platform::TcpClient {
 public:
  explicit QtTcpClient(EventGate& gate);
  ~QtTcpClient() override;
  void Connect(std::string_view host, int port) override;
  bool IsConnected() const override;
  std::size_t BytesWaiting() const override;
  std::string Read(std::size_t most) override;
  void Send(std::string_view bytes) override;
  void Close() override;

 private:
  QTcpSocket* socket_;
  QObject guard_;
  bool failed_ = false;  // what fell was told already; that it is disconnected says no more
};

}  // namespace brenvo::ui
