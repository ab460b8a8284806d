// Plays wave files. A missing file or sound device is silence, at no cost of time.
#pragma once

#include <filesystem>
#include <functional>

namespace brenvo::platform {

class WavePlayer {
 public:
  virtual ~WavePlayer() = default;
  // Opens, plays and closes a file, and returns when it has ended.
  virtual void PlayAndWait(const std::filesystem::path& file) = 0;
  // Starts a file and returns; OnComplete follows unless Close comes first.
  virtual void Start(const std::filesystem::path& file) = 0;
  virtual void Close() = 0;

  // The playback that Start began is over; 1 means that it ended normally.
  std::function<void(int code)> OnComplete;
};

}  // namespace brenvo::platform
