// Programs that do not connect.
#pragma once

#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "platform/tcp_server.h"
#include "recorder/line_sink.h"

namespace brenvo::recorder {

// A server has a name of its own: `serve RIGSERVER 4534`, `unserve RIGSERVER` when it is closed,
// `sent RIGSERVER 1 "text"` for what it sends to the program 1, `drop RIGSERVER 1` when it turns
// that away. A program connects with its first bytes. Outlives its servers.
class RecordingServers {
 public:
  explicit RecordingServers(LineSink sink) : sink_(std::move(sink)) {}

  std::unique_ptr<platform::TcpServer> Make(std::string_view name);

  // Refused while nothing of that name listens.
  void Receive(std::string_view name, int peer, std::string_view bytes);
  void PeerClose(std::string_view name, int peer);
  // The next attempt to listen fails.
  void FailNext(std::string_view name) { failing_.emplace(name); }
  bool IsListening(std::string_view name) const { return Find(name) != nullptr; }

 private:
  class Server;
  Server* Find(std::string_view name) const;
  Server& Listening(std::string_view name) const;

  LineSink sink_;
  std::vector<Server*> servers_;
  std::set<std::string, std::less<>> failing_;
};

}  // namespace brenvo::recorder
