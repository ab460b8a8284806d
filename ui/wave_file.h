// Reads wave files of plain samples.
#pragma once

#include <filesystem>
#include <optional>
#include <QAudioFormat>
#include <QByteArray>

namespace brenvo::ui {

struct WaveFile {
  QAudioFormat format;
  QByteArray samples;
  int Milliseconds() const;
};

// Nothing when the file is missing, is no wave file, or holds compressed sound.
std::optional<WaveFile> ReadWaveFile(const std::filesystem::path& file);

}  // namespace brenvo::ui
