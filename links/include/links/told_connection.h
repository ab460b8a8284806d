// A window's connection to a server, whose state the window shows in one line.
#pragma once

#include <string>
#include <string_view>

#include "core/session.h"
#include "forms/window.h"
#include "platform/tcp_client.h"

namespace brenvo::links {

// The line says that it is connecting, to whom it is connected, and why it is not. A server that
// closes closes the window; then the main frame's status bar says so. The socket's events but the
// coming of data are taken.
class ToldConnection {
 public:
  ToldConnection(core::Session& session, forms::Window& window, forms::Label& line,
                 platform::TcpClient& socket);

  // Connects to "host:port" or "host"; throws std::out_of_range for a port that is none.
  void Connect(std::string_view address);

 private:
  void PeerClosed();
  void Failed(std::string_view reason);

  core::Session& session_;
  forms::Window& window_;
  forms::Label& line_;
  platform::TcpClient& socket_;
  std::string address_;  // as the operator knows it
  bool stood_ = false;
};

}  // namespace brenvo::links
