// The terminal to a packet radio node on a serial port.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "links/cluster_terminal.h"

namespace brenvo::links {

// The port is open as long as the window. A step of the opening that fails ends it without a
// word: the window stands with what was loaded until then.
class TNC : public ClusterTerminal {
 public:
  explicit TNC(core::Session& session);

  void Load() override;
  void Unload() override;

  forms::Command cmMDX{*this, "cmMDX", "DX", [this] { engine_.MonitorChanged(cmMDX); }};
  forms::Command cmMAnnounce{*this, "cmMAnnounce", "Announce",
                             [this] { engine_.MonitorChanged(cmMAnnounce); }};
  forms::Command cmMTutto{*this, "cmMTutto", "Tutto", [this] { engine_.MonitorChanged(cmMTutto); }};
  forms::Menu CMMF{*this, "CMMF", "Monitor", {&cmMDX, &cmMAnnounce, &cmMTutto}};

 private:
  void Open();
  void OpenPort();
  void Send(std::string_view bytes) override { comm1_->Write(bytes); }
  std::string TakeBytes(std::size_t most) override { return comm1_->Read(most); }
  // Calls the cluster, and shows everything that it answers.
  void Connect() override;
  void CommandMode() override;
  std::string_view TypedLineEnd() const override { return "\r"; }

  std::unique_ptr<platform::SerialPort> comm1_;
};

}  // namespace brenvo::links
