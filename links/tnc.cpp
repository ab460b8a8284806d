#include "links/tnc.h"

#include <fmt/format.h>

#include "base/number.h"
#include "base/text.h"
#include "core/station_profile.h"
#include "core/window_place.h"

namespace brenvo::links {
namespace {

constexpr std::string_view kInterrupt = "\x03";

}  // namespace

TNC::TNC(core::Session& session)
    : ClusterTerminal(session, "TNC", "DX cluster radio", kRadioPolicy, &cmMDX, &cmMAnnounce,
                      &cmMTutto),
      comm1_(session.Machine.MakeSerialPort()) {
  MenuBar.insert(MenuBar.begin() + 2, &CMMF);
  cmMDX.Toggle = cmMAnnounce.Toggle = cmMTutto.Toggle = true;
  cmMTutto.SetDown(true);
  comm1_->OnReceive = [this] { ReceiveWaiting(); };
}

void TNC::Load() {
  core::RestoreWindow(session_, *this, "TNC");
  session_.Opened.TncOpen = true;
  try {
    Open();
  } catch (const std::exception&) {
    // The operator sees a terminal that stays silent.
  }
}

void TNC::OpenPort() {
  try {
    comm1_->Open();
  } catch (const platform::DeviceError& error) {
    Collegamento.SetText(error.what());
    throw;
  }
  Collegamento.SetText(fmt::format(
      "Porta COM{} aperta",
      base::PlainNumber(base::Val(base::Right(core::ProfileText(session_, "TNCPort"), 1)))));
}

void TNC::Open() {
  comm1_->SetSettings(base::PlainNumber(base::Val(core::ProfileText(session_, "TNCBaud"))) +
                      ",N,8,1");
  comm1_->SetPortNumber(
      static_cast<int>(base::Val(base::Right(core::ProfileText(session_, "TNCPort"), 1))));
  OpenPort();
  FillMenus();
}

void TNC::Unload() {
  core::SaveWindow(session_, *this, "TNC");
  session_.Opened.TncOpen = false;
  comm1_->Close();
}

void TNC::Connect() {
  SendConnect();
  cmMTutto.SetDown(true);
  cmMDX.SetDown(false);
  cmMAnnounce.SetDown(false);
}

void TNC::CommandMode() { Send(kInterrupt); }

}  // namespace brenvo::links
