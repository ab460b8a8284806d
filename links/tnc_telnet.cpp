#include "links/tnc_telnet.h"

#include <stdexcept>

#include "core/station_profile.h"
#include "core/window_place.h"
#include "link_address.h"

namespace brenvo::links {

TNCtelnet::TNCtelnet(core::Session& session)
    : ClusterTerminal(session, "TNCtelnet", "DX cluster telnet", kTelnetPolicy, nullptr, nullptr,
                      nullptr),
      winsock1_(session.Machine.MakeTcpClient("TNCtelnet")) {
  winsock1_->OnData = [this] { ReceiveWaiting(); };
  winsock1_->OnPeerClose = [this] { Close(); };
}

void TNCtelnet::Load() {
  core::RestoreWindow(session_, *this, "TNCTelnet");
  session_.Opened.TncTelnetOpen = true;
  try {
    Open();
  } catch (const std::exception&) {
    // The operator sees a terminal that stays silent.
  }
}

void TNCtelnet::Open() {
  ConnectTo(*winsock1_, core::ProfileText(session_, "TelnetCluster"));
  FillMenus();
}

void TNCtelnet::Unload() {
  core::SaveWindow(session_, *this, "TNCTelnet");
  session_.Opened.TncTelnetOpen = false;
  if (!winsock1_->IsConnected()) return;
  Send("quit");
  winsock1_->Close();
}

void TNCtelnet::Connect() {
  SendConnect();
  throw std::runtime_error("Il terminale telnet non ha il menu Monitor");
}

void TNCtelnet::CommandMode() {
  throw std::runtime_error("Il terminale telnet non ha una porta seriale");
}

}  // namespace brenvo::links
