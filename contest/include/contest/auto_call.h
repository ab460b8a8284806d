// Calls CQ by itself: plays a recording again and again, with a pause between two plays.
#pragma once

#include <filesystem>
#include <memory>

#include "core/session.h"
#include "forms/command.h"

namespace brenvo::contest {

// The button's caption is the state: it calls while that says "Stop call". A playback that ends
// in another way than normally ends the calling, and the caption stays.
class AutoCall {
 public:
  AutoCall(core::Session& session, forms::Command& button);

  // Takes recording and pause from the station profile.
  void Load();
  // The button: starts with a play at once, or stops.
  void Press();
  // Stops without a word when it calls.
  void Stop();

 private:
  bool Calling() const;
  void Play();

  core::Session& session_;
  forms::Command& button_;
  std::unique_ptr<platform::Timer> timer_;
  std::unique_ptr<platform::WavePlayer> player_;
  std::filesystem::path recording_;
};

}  // namespace brenvo::contest
