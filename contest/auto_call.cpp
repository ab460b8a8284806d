#include "contest/auto_call.h"

#include <algorithm>

#include "base/number.h"
#include "core/files.h"
#include "core/station_profile.h"

namespace brenvo::contest {
namespace {

constexpr std::string_view kStopCaption = "Stop call";
constexpr int kEndedNormally = 1;
constexpr double kLongestSeconds = 24 * 60 * 60;

}  // namespace

AutoCall::AutoCall(core::Session& session, forms::Command& button)
    : session_(session),
      button_(button),
      timer_(session.Machine.MakeTimer()),
      player_(session.Machine.MakeWavePlayer()) {
  timer_->OnTick = [this] { Play(); };
  player_->OnComplete = [this](int code) {
    if (code != kEndedNormally) return;
    player_->Close();
    timer_->SetEnabled(true);
  };
}

void AutoCall::Load() {
  recording_ = core::PlayedFileIn(session_.AppPath, "\\" + core::ProfileText(session_, "CallFile"));
  const double seconds = base::Val(core::ProfileText(session_, "CallInterval"));
  timer_->SetInterval(static_cast<int>(std::clamp(seconds, 0.0, kLongestSeconds) * 1000));
  timer_->SetEnabled(false);
}

bool AutoCall::Calling() const { return button_.Caption() == kStopCaption; }

void AutoCall::Press() {
  if (Calling()) {
    Stop();
  } else {
    button_.SetCaption(kStopCaption);
    Play();
  }
}

void AutoCall::Stop() {
  if (!Calling()) return;
  button_.SetCaption("Start call");
  player_->Close();
  timer_->SetEnabled(false);
}

void AutoCall::Play() {
  timer_->SetEnabled(false);
  player_->Start(recording_);
}

}  // namespace brenvo::contest
