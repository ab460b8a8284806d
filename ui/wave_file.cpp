#include "wave_file.h"

#include <QFile>
#include <QtEndian>

#include "ui/text.h"

namespace brenvo::ui {
namespace {

constexpr quint16 kPcm = 1, kFloat = 3, kExtensible = 0xFFFE;

quint16 Word(const QByteArray& bytes, qsizetype at) {
  return qFromLittleEndian<quint16>(bytes.constData() + at);
}
quint32 Long(const QByteArray& bytes, qsizetype at) {
  return qFromLittleEndian<quint32>(bytes.constData() + at);
}

QAudioFormat::SampleFormat SampleFormatOf(quint16 coding, quint16 bits) {
  if (coding == kPcm && bits == 8) return QAudioFormat::UInt8;
  if (coding == kPcm && bits == 16) return QAudioFormat::Int16;
  if (coding == kPcm && bits == 32) return QAudioFormat::Int32;
  if (coding == kFloat && bits == 32) return QAudioFormat::Float;
  return QAudioFormat::Unknown;
}

QAudioFormat FormatOf(const QByteArray& chunk) {
  QAudioFormat format;
  if (chunk.size() < 16) return format;
  quint16 coding = Word(chunk, 0);
  if (coding == kExtensible && chunk.size() >= 26) coding = Word(chunk, 24);
  format.setChannelCount(Word(chunk, 2));
  format.setSampleRate(static_cast<int>(Long(chunk, 4)));
  format.setSampleFormat(SampleFormatOf(coding, Word(chunk, 14)));
  return format;
}

}  // namespace

int WaveFile::Milliseconds() const {
  return static_cast<int>(format.durationForBytes(static_cast<qint32>(samples.size())) / 1000);
}

std::optional<WaveFile> ReadWaveFile(const std::filesystem::path& path) {
  QFile file(PathToQt(path));
  if (!file.open(QIODevice::ReadOnly)) return std::nullopt;
  const QByteArray bytes = file.readAll();
  if (bytes.size() < 12 || !bytes.startsWith("RIFF") || bytes.mid(8, 4) != "WAVE") {
    return std::nullopt;
  }
  WaveFile wave;
  for (qsizetype at = 12; at + 8 <= bytes.size();) {
    const QByteArray name = bytes.mid(at, 4);
    // A length beyond the file's end, as recorders leave when they are cut off, means the rest.
    const qsizetype length = qMin<qsizetype>(Long(bytes, at + 4), bytes.size() - at - 8);
    if (name == "fmt ") wave.format = FormatOf(bytes.mid(at + 8, length));
    if (name == "data") wave.samples = bytes.mid(at + 8, length);
    at += 8 + length + length % 2;
  }
  if (!wave.format.isValid() || wave.samples.isEmpty()) return std::nullopt;
  return wave;
}

}  // namespace brenvo::ui
