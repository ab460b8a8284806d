#include "core/files.h"

#include "base/text.h"

namespace brenvo {

std::string SafeFileName(std::string_view name) {
  std::string safe;
  for (char32_t c : Characters(name)) {
    const bool forbidden = c < 32 || (c < 128 && std::string_view("/\\:*?\"<>|").find(
                                                     static_cast<char>(c)) != std::string_view::npos);
    safe += FromCharacters(std::u32string(1, forbidden ? U'-' : c));
  }
  // Names of dots alone are directories; one platform drops dots and blanks at the end.
  while (!safe.empty() && (safe.back() == '.' || safe.back() == ' ')) safe.back() = '-';
  return safe.empty() ? "-" : safe;
}

std::filesystem::path FileIn(const std::filesystem::path& directory, std::string_view name) {
  if (!name.empty() && (name.front() == '\\' || name.front() == '/')) name.remove_prefix(1);
  const std::string safe = SafeFileName(name);
  const std::filesystem::path exact = directory / std::filesystem::path(
      std::u8string(safe.begin(), safe.end()));
  std::error_code error;
  if (std::filesystem::exists(exact, error)) return exact;
  const std::string wanted = Upper(safe);
  for (const auto& entry : std::filesystem::directory_iterator(directory, error)) {
    const auto file = entry.path().filename().u8string();
    if (Upper(std::string(file.begin(), file.end())) == wanted) return entry.path();
  }
  return exact;
}

}  // namespace brenvo
