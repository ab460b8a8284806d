// TCP connections to nowhere.
#pragma once

#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "platform/tcp_client.h"
#include "recorder/line_sink.h"

namespace brenvo::recorder {

// One connection a window, called by the window's name: `connect TNCtelnet "host" port`,
// `sent TNCtelnet "text"` (bytes shown as Latin-1), `disconnect TNCtelnet` when the window closes
// a connection that stands. An attempt succeeds at once. Outlives its clients.
class RecordingTcpClients {
 public:
  explicit RecordingTcpClients(LineSink sink) : sink_(std::move(sink)) {}

  std::unique_ptr<platform::TcpClient> Make(std::string_view window);

  // Bytes come in, all of them in one event. Refused when the window is not connected; PeerClose
  // likewise.
  void Receive(std::string_view window, std::string_view bytes);
  void PeerClose(std::string_view window);
  // The connection falls without its peer closing it; refused as Receive is.
  void Fall(std::string_view window, std::string_view reason);
  // The next attempt to connect is refused; or the next sending throws DeviceError.
  void FailNext(std::string_view window) { failing_.emplace(window); }
  bool IsConnected(std::string_view window) const;

 private:
  class Client;
  Client* FindConnected(std::string_view window) const;
  Client& Connected(std::string_view window) const;
  bool TakeFailure(const std::string& window) { return failing_.erase(window) > 0; }

  LineSink sink_;
  std::vector<Client*> clients_;
  std::set<std::string, std::less<>> failing_;
};

}  // namespace brenvo::recorder
