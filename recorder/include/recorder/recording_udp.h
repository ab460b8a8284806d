// Datagrams from nowhere.
#pragma once

#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "platform/udp_socket.h"
#include "recorder/line_sink.h"

namespace brenvo::recorder {

// A socket has a name of its own: `listen WSJTX "127.0.0.1:2237"` (with ` group "224.0.0.1"`, and
// ` on "lo"` for each interface), `deaf WSJTX` when it is closed, `datagram WSJTX 127.0.0.1:50001
// HEX` for what it sends. Outlives its sockets.
class RecordingUdpSockets {
 public:
  explicit RecordingUdpSockets(LineSink sink) : sink_(std::move(sink)) {}

  std::unique_ptr<platform::UdpSocket> Make(std::string_view name);

  // A datagram comes in, an event of its own; several at once are one event. Refused while nothing
  // of that name listens.
  void Receive(std::string_view name, const platform::UdpAddress& from, std::string_view bytes);
  void ReceiveAll(std::string_view name, const std::vector<platform::UdpDatagram>& datagrams);
  // The next attempt to listen fails.
  void FailNext(std::string_view name) { failing_.emplace(name); }
  bool IsOpen(std::string_view name) const { return FindOpen(name) != nullptr; }

 private:
  class Socket;
  Socket* FindOpen(std::string_view name) const;

  LineSink sink_;
  std::vector<Socket*> sockets_;
  std::set<std::string, std::less<>> failing_;
};

}  // namespace brenvo::recorder
