// A sound device that is never heard.
#pragma once

#include <memory>
#include <vector>

#include "platform/wave_player.h"
#include "recorder/line_sink.h"
#include "recorder/quote.h"

namespace brenvo::recorder {

// `wave "file"` for a playback that is waited for, which takes no time; `wave-start "file"` for
// one that is not, `wave-close` for each close. Outlives its players.
class RecordingWaves {
 public:
  RecordingWaves(LineSink sink, const FileNames& names) : sink_(std::move(sink)), names_(names) {}

  std::unique_ptr<platform::WavePlayer> MakePlayer();

  // The playback started last completes with this code. Refused when nothing plays.
  void Complete(int code);
  bool Playing() const { return !playing_.empty(); }

 private:
  class Player;
  LineSink sink_;
  const FileNames& names_;
  std::vector<Player*> playing_;  // in order of starting
};

}  // namespace brenvo::recorder
