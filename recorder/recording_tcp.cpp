#include "recorder/recording_tcp.h"

#include <algorithm>

#include "base/encoding.h"
#include "platform/device_error.h"
#include "recorder/quote.h"
#include "recorder/refused.h"

namespace brenvo::recorder {

class RecordingTcpClients::Client : public platform::TcpClient {
 public:
  Client(RecordingTcpClients& clients, std::string_view window)
      : clients_(clients), window_(window) {
    clients_.clients_.push_back(this);
  }
  ~Client() override { std::erase(clients_.clients_, this); }

  void Connect(std::string_view host, int port) override {
    clients_.sink_("connect " + window_ + ' ' + Quoted(host) + ' ' +
                   std::to_string(port == 0 ? kTelnetPort : port));
    connected_ = !clients_.TakeFailure(window_);
    if (connected_ && OnConnected) OnConnected();
    if (!connected_ && OnFail) OnFail("connessione rifiutata");
  }

  bool IsConnected() const override { return connected_; }
  std::size_t BytesWaiting() const override { return waiting_.size(); }

  std::string Read(std::size_t most) override {
    most = std::min(most, waiting_.size());
    std::string bytes = waiting_.substr(0, most);
    waiting_.erase(0, most);
    return bytes;
  }

  void Send(std::string_view bytes) override {
    if (!connected_) return;
    if (clients_.TakeFailure(window_)) throw platform::DeviceError("La connessione non risponde");
    clients_.sink_("sent " + window_ + ' ' + Quoted(base::FromLatin1(bytes)));
  }

  void Close() override {
    if (!connected_) return;
    connected_ = false;
    clients_.sink_("disconnect " + window_);
  }

  const std::string& Window() const { return window_; }
  void Arrive(std::string_view bytes) {
    waiting_ += bytes;
    if (OnData) OnData();
  }
  void Lose() {
    connected_ = false;
    // A copy: the window may close, and take this connection with it.
    const auto handler = OnPeerClose;
    if (handler) handler();
  }
  void Fall(std::string_view reason) {
    connected_ = false;
    const auto handler = OnFail;
    if (handler) handler(reason);
  }

 private:
  RecordingTcpClients& clients_;
  std::string window_;
  bool connected_ = false;
  std::string waiting_;
};

std::unique_ptr<platform::TcpClient> RecordingTcpClients::Make(std::string_view window) {
  return std::make_unique<Client>(*this, window);
}

void RecordingTcpClients::Receive(std::string_view window, std::string_view bytes) {
  Connected(window).Arrive(bytes);
}

void RecordingTcpClients::PeerClose(std::string_view window) { Connected(window).Lose(); }

void RecordingTcpClients::Fall(std::string_view window, std::string_view reason) {
  Connected(window).Fall(reason);
}

bool RecordingTcpClients::IsConnected(std::string_view window) const {
  return FindConnected(window) != nullptr;
}

RecordingTcpClients::Client* RecordingTcpClients::FindConnected(std::string_view window) const {
  const auto at = std::find_if(clients_.begin(), clients_.end(), [&](const Client* client) {
    return client->Window() == window && client->IsConnected();
  });
  return at == clients_.end() ? nullptr : *at;
}

RecordingTcpClients::Client& RecordingTcpClients::Connected(std::string_view window) const {
  Client* client = FindConnected(window);
  if (client == nullptr) throw Refused{std::string(window) + " is not connected"};
  return *client;
}

}  // namespace brenvo::recorder
