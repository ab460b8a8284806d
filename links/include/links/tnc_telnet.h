// The terminal to a DX cluster over a TCP connection.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "links/cluster_terminal.h"
#include "links/told_connection.h"

namespace brenvo::links {

// Connects once, on opening, and closes when the other side does. Telnet options are ordinary
// characters.
class TNCtelnet : public ClusterTerminal {
 public:
  explicit TNCtelnet(core::Session& session);

  void Load() override;
  void Unload() override;

  // What has come of a line that has not ended, once nothing has followed it for kSilence: a
  // prompt. Its last kLongestTail characters, without telnet options and controls.
  forms::Label InArrivo{*this, "InArrivo"};
  static constexpr int kSilence = 300;  // milliseconds
  static constexpr std::size_t kLongestTail = 200;

 private:
  void Open();
  void Receive();
  void ShowTail();
  void Send(std::string_view bytes) override { winsock1_->Send(bytes); }
  std::string TakeBytes(std::size_t most) override { return winsock1_->Read(most); }
  // Both refer to things that only the radio terminal has and end in a std::runtime_error: the
  // first one after its text has gone out, the second one before anything is sent.
  void Connect() override;
  void CommandMode() override;
  std::string_view TypedLineEnd() const override { return "\r\n"; }

  std::unique_ptr<platform::TcpClient> winsock1_;
  ToldConnection connection_;
  std::unique_ptr<platform::Timer> silence_;
};

}  // namespace brenvo::links
