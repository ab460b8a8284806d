// A TCP connection to a host.
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

namespace brenvo::platform {

class TcpClient {
 public:
  static constexpr int kTelnetPort = 23;

  virtual ~TcpClient() = default;
  // Starts connecting and returns at once; port 0 means the telnet port.
  virtual void Connect(std::string_view host, int port) = 0;
  virtual bool IsConnected() const = 0;
  virtual std::size_t BytesWaiting() const = 0;
  // Takes up to `most` of the waiting bytes.
  virtual std::string Read(std::size_t most) = 0;
  // Nothing is sent while not connected.
  virtual void Send(std::string_view bytes) = 0;
  virtual void Close() = 0;  // harmless when not connected

  std::function<void()> OnData;       // bytes have come
  std::function<void()> OnPeerClose;  // the other side has closed
  std::function<void()> OnConnected;
  // An attempt that failed, or a connection that fell and that nobody has closed: why, in Italian
  // ("connessione rifiutata").
  std::function<void(std::string_view reason)> OnFail;
};

}  // namespace brenvo::platform
