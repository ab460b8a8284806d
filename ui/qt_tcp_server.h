// What other programs connect to.
#pragma once

#include <map>
#include <QTcpServer>
#include <QTcpSocket>

#include "platform/tcp_server.h"
#include "ui/event_gate.h"

namespace brenvo::ui {

class QtTcpServer : public platform::TcpServer {
 public:
  explicit QtTcpServer(EventGate& gate);
  ~QtTcpServer() override;
  void Listen(int port) override;
  bool IsListening() const override;
  void Close() override;
  std::string Read(int peer, std::size_t most) override;
  void Send(int peer, std::string_view bytes) override;
  void Drop(int peer) override;

 private:
  void Welcome();
  void Tell(int peer);
  QTcpSocket* Find(int peer) const;

  EventGate& gate_;
  QObject guard_;
  QTcpServer* server_;
  std::map<int, QTcpSocket*> peers_;
  int last_ = 0;
};

}  // namespace brenvo::ui
