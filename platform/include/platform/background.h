// Work beside the program's own.
#pragma once

#include <functional>
#include <stop_token>

namespace brenvo::platform {

// Runs on a thread of its own, uses nothing that the program's thread uses meanwhile, and throws
// nothing. Once it is asked to stop it ends as soon as it can.
using Background = std::function<void(const std::stop_token& stop)>;

class BackgroundWork {
 public:
  // Asks the work to stop, and waits until it has ended.
  virtual ~BackgroundWork() = default;
  // Then all that it did is seen by whoever asks.
  virtual bool HasEnded() = 0;
};

}  // namespace brenvo::platform
