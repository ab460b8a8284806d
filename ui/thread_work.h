// Work on a thread.
#pragma once

#include <atomic>
#include <thread>
#include <utility>

#include "platform/background.h"

namespace brenvo::ui {

class ThreadWork final : public platform::BackgroundWork {
 public:
  explicit ThreadWork(platform::Background work)
      : thread_([this, work = std::move(work)](const std::stop_token& stop) {
          work(stop);
          ended_.store(true, std::memory_order_release);
        }) {}

  bool HasEnded() override { return ended_.load(std::memory_order_acquire); }

 private:
  std::atomic<bool> ended_ = false;
  std::jthread thread_;  // stops and waits when it goes
};

}  // namespace brenvo::ui
