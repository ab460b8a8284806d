// Plays wave files on the sound device.
#pragma once

#include <memory>
#include <QAudioSink>
#include <QBuffer>
#include <QObject>

#include "platform/wave_player.h"
#include "ui/event_gate.h"

namespace brenvo::ui {

class QtWavePlayer : public platform::WavePlayer {
 public:
  explicit QtWavePlayer(EventGate& gate);
  ~QtWavePlayer() override;
  void PlayAndWait(const std::filesystem::path& file) override;
  void Start(const std::filesystem::path& file) override;
  void Close() override;

 private:
  // Begins to play, and calls `done` once when the sound is over, however it ended; false when
  // there is nothing to hear.
  bool Begin(const std::filesystem::path& file, std::function<void()> done);

  EventGate& gate_;
  QObject* playback_ = nullptr;  // the sound in work, with all that belongs to it
};

}  // namespace brenvo::ui
