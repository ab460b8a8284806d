// Background work without a thread: done, all of it, when somebody asks whether it has ended.
#pragma once

#include <utility>

#include "platform/background.h"

namespace brenvo::recorder {

// So a script and a test get the same from run to run, and what happens between the beginning of
// the work and the first such question happens while it is under way.
class LaterWork final : public platform::BackgroundWork {
 public:
  explicit LaterWork(platform::Background work) : work_(std::move(work)) {}

  bool HasEnded() override {
    if (const platform::Background work = std::exchange(work_, nullptr)) work(std::stop_token());
    return true;
  }

 private:
  platform::Background work_;
};

}  // namespace brenvo::recorder
