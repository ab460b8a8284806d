#include "recorder/recording_waves.h"

#include "recorder/refused.h"

namespace brenvo::recorder {

class RecordingWaves::Player : public platform::WavePlayer {
 public:
  explicit Player(RecordingWaves& waves) : waves_(waves) {}
  ~Player() override { std::erase(waves_.playing_, this); }

  void PlayAndWait(const std::filesystem::path& file) override {
    waves_.sink_("wave " + Quoted(waves_.names_.Of(file)));
  }

  void Start(const std::filesystem::path& file) override {
    waves_.sink_("wave-start " + Quoted(waves_.names_.Of(file)));
    std::erase(waves_.playing_, this);
    waves_.playing_.push_back(this);
  }

  void Close() override {
    std::erase(waves_.playing_, this);
    waves_.sink_("wave-close");
  }

 private:
  RecordingWaves& waves_;
};

std::unique_ptr<platform::WavePlayer> RecordingWaves::MakePlayer() {
  return std::make_unique<Player>(*this);
}

void RecordingWaves::Complete(int code) {
  if (playing_.empty()) throw Refused{"no wave file plays"};
  Player* player = playing_.back();
  playing_.pop_back();
  // A copy: the event may be the end of its player.
  const auto handler = player->OnComplete;
  if (handler) handler(code);
}

}  // namespace brenvo::recorder
