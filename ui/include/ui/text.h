// Texts on their way to the screen and back.
#pragma once

#include <algorithm>
#include <filesystem>
#include <QString>
#include <string>
#include <string_view>

namespace brenvo::ui {

inline QString ToQt(std::string_view text) {
  return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}
inline std::string FromQt(const QString& text) { return text.toStdString(); }

// A text from elsewhere as a single line holds it: ends of lines and tabs are one blank, and
// nothing at either end of the text; other characters that no key types go.
inline QString InOneLine(const QString& text) {
  QString line;
  bool apart = false;
  for (const QChar c : text) {
    const bool typed = c.isPrint() || c.isSurrogate();
    if (!typed) {
      apart = apart || c.isSpace();
      continue;
    }
    if (apart && !line.isEmpty()) line += QLatin1Char(' ');
    apart = false;
    line += c;
  }
  return line;
}

// Paths are UTF-8 on every platform.
inline QString PathToQt(const std::filesystem::path& path) {
  const std::u8string text = path.u8string();
  return QString::fromUtf8(reinterpret_cast<const char*>(text.data()),
                           static_cast<qsizetype>(text.size()));
}
inline std::filesystem::path PathFromQt(const QString& text) {
  const QByteArray bytes = text.toUtf8();
  return std::filesystem::path(std::u8string(bytes.begin(), bytes.end()));
}

// A position counted in characters, as the logic counts, and in the units of QString.
inline std::size_t CharactersBefore(const QString& text, qsizetype units) {
  return static_cast<std::size_t>(text.left(units).toUcs4().size());
}
inline int UnitsBefore(const QString& text, std::size_t characters) {
  const auto all = text.toUcs4();
  const auto count = std::min(static_cast<qsizetype>(characters), all.size());
  return static_cast<int>(
      QString::fromUcs4(reinterpret_cast<const char32_t*>(all.data()), count).size());
}

}  // namespace brenvo::ui
