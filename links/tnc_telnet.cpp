#include "links/tnc_telnet.h"

#include <stdexcept>

#include "core/station_profile.h"
#include "core/window_place.h"
#include "prompt_text.h"

namespace brenvo::links {

TNCtelnet::TNCtelnet(core::Session& session)
    : ClusterTerminal(session, "TNCtelnet", "DX cluster telnet", kTelnetPolicy, nullptr, nullptr,
                      nullptr),
      winsock1_(session.Machine.MakeTcpClient("TNCtelnet")),
      connection_(session, *this, Collegamento, *winsock1_),
      silence_(session.Machine.MakeTimer()) {
  winsock1_->OnData = [this] { Receive(); };
  silence_->SetInterval(kSilence);
  silence_->OnTick = [this] { ShowTail(); };
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
  connection_.Connect(core::ProfileText(session_, "TelnetCluster"));
  FillMenus();
}

void TNCtelnet::Unload() {
  core::SaveWindow(session_, *this, "TNCTelnet");
  session_.Opened.TncTelnetOpen = false;
  if (!winsock1_->IsConnected()) return;
  Send("quit");
  winsock1_->Close();
}

void TNCtelnet::Receive() {
  ReceiveWaiting();
  // What it showed may have ended by now.
  if (!InArrivo.Text().empty() &&
      !PromptText(engine_.RxLine(), kLongestTail).starts_with(InArrivo.Text())) {
    InArrivo.SetText("");
  }
  // Begins to count anew.
  silence_->SetEnabled(false);
  silence_->SetEnabled(!engine_.RxLine().empty());
}

void TNCtelnet::ShowTail() {
  silence_->SetEnabled(false);
  InArrivo.SetText(PromptText(engine_.RxLine(), kLongestTail));
}

void TNCtelnet::Connect() {
  SendConnect();
  throw std::runtime_error("Il terminale telnet non ha il menu Monitor");
}

void TNCtelnet::CommandMode() {
  throw std::runtime_error("Il terminale telnet non ha una porta seriale");
}

}  // namespace brenvo::links
