#include "recorder/recording_platform.h"

#include <utility>

#include "forms/window.h"

namespace brenvo::recorder {

RecordingPlatform::RecordingPlatform()
    : RecordingPlatform([this](std::string line) { lines_.push_back(std::move(line)); }) {}

RecordingPlatform::RecordingPlatform(LineSink sink)
    : sink_(std::move(sink)),
      messages_(sink_),
      host_(sink_),
      printer_(sink_, names_),
      map_(sink_, names_),
      serial_(sink_),
      tcp_(sink_),
      udp_(sink_),
      servers_(sink_),
      waves_(sink_, names_),
      processes_(sink_),
      web_(sink_, clock_) {
  map_.TakePrinterFailure = [this] { return printer_.TakeFailure(); };
  map_.FrameSize = [this] {
    const forms::Window* frame = host_.FindShown("Brenvo");
    if (frame == nullptr) return base::ImageSize{640, 480};
    return base::ImageSize{frame->ScaleWidth().Pixels(), frame->ScaleHeight().Pixels()};
  };
}

std::uint64_t RecordingPlatform::Random() {
  std::uint64_t mixed = random_ += 0x9E3779B97F4A7C15;
  mixed = (mixed ^ mixed >> 30) * 0xBF58476D1CE4E5B9;
  mixed = (mixed ^ mixed >> 27) * 0x94D049BB133111EB;
  return mixed ^ mixed >> 31;
}

void RecordingPlatform::Open(const std::filesystem::path& file, int topic) {
  openedTopic_ = topic;
  sink_("open " + Quoted(names_.Of(file)));
}

std::unique_ptr<platform::Progress> RecordingPlatform::ShowProgress(std::string_view,
                                                                    std::int64_t) {
  class SilentProgress : public platform::Progress {
   public:
    explicit SilentProgress(std::int64_t stopAt) : stopAt_(stopAt) {}
    bool Advance(std::int64_t done) override { return stopAt_ < 0 || done < stopAt_; }

   private:
    std::int64_t stopAt_;
  };
  return std::make_unique<SilentProgress>(stopProgressAt_);
}

std::vector<std::string> RecordingPlatform::TakeLines() { return std::exchange(lines_, {}); }

}  // namespace brenvo::recorder
