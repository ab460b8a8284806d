// What other programs of this computer connect to.
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

namespace brenvo::platform {

// Programs are known by numbers, each given once.
class TcpServer {
 public:
  static constexpr std::size_t kMostPeers = 8;  // more are turned away

  virtual ~TcpServer() = default;
  // On this computer's own address, which no other one reaches. DeviceError when the port is taken
  // or not allowed.
  virtual void Listen(int port) = 0;
  virtual bool IsListening() const = 0;
  // Ends all connections, without OnGone; harmless when it does not listen.
  virtual void Close() = 0;

  // Takes up to `most` of the bytes that wait.
  virtual std::string Read(int peer, std::size_t most) = 0;
  // Nothing where the program has gone.
  virtual void Send(int peer, std::string_view bytes) = 0;
  // Ends its connection, without OnGone.
  virtual void Drop(int peer) = 0;

  std::function<void(int peer)> OnData, OnGone;
};

}  // namespace brenvo::platform
