// A recorded machine whose work in the background has threads.
#pragma once

#include <memory>
#include <utility>

#include "recorder/recording_platform.h"
#include "ui/thread_work.h"

namespace brenvo {

class ThreadedPlatform : public recorder::RecordingPlatform {
 public:
  std::unique_ptr<platform::BackgroundWork> RunInBackground(platform::Background work) override {
    return std::make_unique<ui::ThreadWork>(std::move(work));
  }
};

}  // namespace brenvo
