#include "recorder/recording_udp.h"

#include <fmt/format.h>

#include <algorithm>
#include <deque>

#include "platform/device_error.h"
#include "recorder/quote.h"
#include "recorder/refused.h"

namespace brenvo::recorder {
namespace {

std::string TextOf(const platform::UdpAddress& address) {
  return fmt::format("{}:{}", address.host, address.port);
}

}  // namespace

class RecordingUdpSockets::Socket : public platform::UdpSocket {
 public:
  Socket(RecordingUdpSockets& sockets, std::string_view name) : sockets_(sockets), name_(name) {
    sockets_.sockets_.push_back(this);
  }
  ~Socket() override { std::erase(sockets_.sockets_, this); }

  void Open(const platform::UdpListening& where) override {
    Close();
    if (sockets_.failing_.erase(name_) > 0) {
      throw platform::DeviceError(fmt::format("La porta {} è occupata", where.at.port));
    }
    std::string line = fmt::format("listen {} {}", name_, Quoted(TextOf(where.at)));
    if (!where.group.empty()) line += " group " + Quoted(where.group);
    for (const std::string& each : where.interfaces) line += " on " + Quoted(each);
    sockets_.sink_(line);
    open_ = true;
  }
  bool IsOpen() const override { return open_; }

  std::optional<platform::UdpDatagram> Receive() override {
    if (waiting_.empty()) return std::nullopt;
    platform::UdpDatagram next = std::move(waiting_.front());
    waiting_.pop_front();
    return next;
  }

  void Send(const platform::UdpAddress& to, std::string_view bytes) override {
    if (!open_) return;
    std::string line = fmt::format("datagram {} {} ", name_, TextOf(to));
    for (const char c : bytes) line += fmt::format("{:02X}", static_cast<unsigned char>(c));
    sockets_.sink_(line);
  }

  void Close() override {
    if (!open_) return;
    open_ = false;
    waiting_.clear();
    sockets_.sink_("deaf " + name_);
  }

  const std::string& Name() const { return name_; }
  void Wait(const platform::UdpDatagram& datagram) { waiting_.push_back(datagram); }
  // As a real one, it tells of what waits until nothing does.
  void Tell() {
    while (!waiting_.empty()) {
      const std::size_t before = waiting_.size();
      if (OnData) OnData();
      if (waiting_.size() == before) waiting_.clear();
    }
  }

 private:
  RecordingUdpSockets& sockets_;
  std::string name_;
  bool open_ = false;
  std::deque<platform::UdpDatagram> waiting_;
};

std::unique_ptr<platform::UdpSocket> RecordingUdpSockets::Make(std::string_view name) {
  return std::make_unique<Socket>(*this, name);
}

void RecordingUdpSockets::Receive(std::string_view name, const platform::UdpAddress& from,
                                  std::string_view bytes) {
  ReceiveAll(name, {{from, std::string(bytes)}});
}

void RecordingUdpSockets::ReceiveAll(std::string_view name,
                                     const std::vector<platform::UdpDatagram>& datagrams) {
  Socket* const socket = FindOpen(name);
  if (socket == nullptr) throw Refused{std::string(name) + " does not listen"};
  for (const platform::UdpDatagram& each : datagrams) socket->Wait(each);
  socket->Tell();
}

RecordingUdpSockets::Socket* RecordingUdpSockets::FindOpen(std::string_view name) const {
  const auto at = std::find_if(sockets_.begin(), sockets_.end(), [&](const Socket* socket) {
    return socket->Name() == name && socket->IsOpen();
  });
  return at == sockets_.end() ? nullptr : *at;
}

}  // namespace brenvo::recorder
