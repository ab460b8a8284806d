#include "qt_wave_player.h"

#include <QAudioDevice>
#include <QEventLoop>
#include <QMediaDevices>
#include <QTimer>

#include "wave_file.h"

namespace brenvo::ui {
namespace {

constexpr int kNormalEnd = 1;
// What a sound device may be late; a device that never answers must not hold the station.
constexpr int kMarginMilliseconds = 1500;

}  // namespace

QtWavePlayer::QtWavePlayer(EventGate& gate) : gate_(gate) {}

QtWavePlayer::~QtWavePlayer() { Close(); }

bool QtWavePlayer::Begin(const std::filesystem::path& file, std::function<void()> done) {
  Close();
  const std::optional<WaveFile> wave = ReadWaveFile(file);
  if (!wave) return false;
  const QAudioDevice device = QMediaDevices::defaultAudioOutput();
  if (device.isNull()) return false;

  playback_ = new QObject;
  auto* sink = new QAudioSink(device, wave->format, playback_);
  auto* samples = new QBuffer(playback_);
  samples->setData(wave->samples);
  samples->open(QIODevice::ReadOnly);
  auto* guard = new QTimer(playback_);
  guard->setSingleShot(true);
  const auto finish = [this, mine = playback_, done = std::move(done)] {
    if (playback_ != mine) return;
    Close();
    done();
  };
  QObject::connect(guard, &QTimer::timeout, playback_, finish);
  QObject::connect(
      sink, &QAudioSink::stateChanged, playback_,
      [finish](QAudio::State state) {
        if (state == QAudio::IdleState || state == QAudio::StoppedState) finish();
      },
      Qt::QueuedConnection);
  guard->start(wave->Milliseconds() + kMarginMilliseconds);
  sink->start(samples);
  return true;
}

void QtWavePlayer::PlayAndWait(const std::filesystem::path& file) {
  QEventLoop loop;
  if (Begin(file, [&loop] { loop.quit(); })) {
    // The station stands still while it speaks: only drawing goes on.
    const EventGate::Hold hold(gate_);
    loop.exec(QEventLoop::ExcludeUserInputEvents | QEventLoop::ExcludeSocketNotifiers);
  }
}

void QtWavePlayer::Start(const std::filesystem::path& file) {
  const auto tell = [this] {
    gate_.Run([this] {
      if (OnComplete) OnComplete(kNormalEnd);
    });
  };
  if (Begin(file, tell)) return;
  playback_ = new QObject;
  QMetaObject::invokeMethod(
      playback_,
      [this, mine = playback_, tell] {
        if (playback_ != mine) return;
        Close();
        tell();
      },
      Qt::QueuedConnection);
}

void QtWavePlayer::Close() {
  if (playback_ == nullptr) return;
  playback_->disconnect();
  for (QObject* part : playback_->children()) part->disconnect();
  playback_->deleteLater();
  playback_ = nullptr;
}

}  // namespace brenvo::ui
