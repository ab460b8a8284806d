#include "recorder/recording_server.h"

#include <fmt/format.h>

#include <algorithm>
#include <map>

#include "base/encoding.h"
#include "platform/device_error.h"
#include "recorder/quote.h"
#include "recorder/refused.h"

namespace brenvo::recorder {

class RecordingServers::Server : public platform::TcpServer {
 public:
  Server(RecordingServers& servers, std::string_view name) : servers_(servers), name_(name) {
    servers_.servers_.push_back(this);
  }
  ~Server() override { std::erase(servers_.servers_, this); }

  void Listen(int port) override {
    Close();
    if (servers_.failing_.erase(name_) > 0) {
      throw platform::DeviceError(fmt::format("La porta {} è occupata", port));
    }
    servers_.sink_(fmt::format("serve {} {}", name_, port));
    listening_ = true;
  }
  bool IsListening() const override { return listening_; }
  void Close() override {
    if (!listening_) return;
    listening_ = false;
    waiting_.clear();
    servers_.sink_("unserve " + name_);
  }

  std::string Read(int peer, std::size_t most) override {
    std::string& waiting = waiting_[peer];
    std::string bytes = waiting.substr(0, most);
    waiting.erase(0, bytes.size());
    return bytes;
  }
  void Send(int peer, std::string_view bytes) override {
    if (!waiting_.contains(peer)) return;
    servers_.sink_(fmt::format("sent {} {} {}", name_, peer, Quoted(base::FromLatin1(bytes))));
  }
  void Drop(int peer) override {
    if (waiting_.erase(peer) > 0) servers_.sink_(fmt::format("drop {} {}", name_, peer));
  }

  const std::string& Name() const { return name_; }
  void Arrive(int peer, std::string_view bytes) {
    waiting_[peer] += bytes;
    if (OnData) OnData(peer);
  }
  void Leave(int peer) {
    waiting_.erase(peer);
    if (OnGone) OnGone(peer);
  }

 private:
  RecordingServers& servers_;
  std::string name_;
  bool listening_ = false;
  std::map<int, std::string> waiting_;  // a program each
};

std::unique_ptr<platform::TcpServer> RecordingServers::Make(std::string_view name) {
  return std::make_unique<Server>(*this, name);
}

void RecordingServers::Receive(std::string_view name, int peer, std::string_view bytes) {
  Listening(name).Arrive(peer, bytes);
}

void RecordingServers::PeerClose(std::string_view name, int peer) { Listening(name).Leave(peer); }

RecordingServers::Server* RecordingServers::Find(std::string_view name) const {
  const auto at = std::ranges::find_if(
      servers_, [&](const Server* each) { return each->Name() == name && each->IsListening(); });
  return at == servers_.end() ? nullptr : *at;
}

RecordingServers::Server& RecordingServers::Listening(std::string_view name) const {
  Server* const server = Find(name);
  if (server == nullptr) throw Refused{std::string(name) + " does not listen"};
  return *server;
}

}  // namespace brenvo::recorder
