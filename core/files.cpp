#include "core/files.h"

#include <algorithm>

#include "base/system_reason.h"
#include "base/text.h"

namespace brenvo::core {
namespace {

std::string NameOf(const std::filesystem::path& file) {
  const std::u8string name = file.filename().u8string();
  return {name.begin(), name.end()};
}

std::string_view WithoutSeparator(std::string_view name) {
  const bool led = name.starts_with('\\') || name.starts_with('/');
  return led ? name.substr(1) : name;
}

std::filesystem::path PathOf(std::string_view name) {
  return std::filesystem::path(std::u8string(name.begin(), name.end()));
}

std::string WholeName(const std::filesystem::path& path) {
  const std::u8string name = path.u8string();
  return {name.begin(), name.end()};
}

}  // namespace

std::string WhyNotEntered(const std::filesystem::path& directory) {
  if (directory.empty()) return "Manca il nome della cartella di lavoro.";
  const std::string name = "La cartella " + WholeName(directory);
  std::error_code error;
  const std::filesystem::file_status status = std::filesystem::status(directory, error);
  if (status.type() == std::filesystem::file_type::not_found) return name + " non esiste.";
  if (error) return name + " non si apre: " + base::ReasonText(error) + ".";
  if (status.type() != std::filesystem::file_type::directory) return name + " non è una cartella.";
  // A file of this length is asked for sooner or later.
  const bool there = std::filesystem::exists(directory / "Brenvo-ripristino.mdb-journal", error);
  if (there || !error || error == std::errc::no_such_file_or_directory) return "";
  return name + " non si apre: " + base::ReasonText(error) + ".";
}

std::string FailureText(const std::exception& failure) {
  const auto* file = dynamic_cast<const std::filesystem::filesystem_error*>(&failure);
  if (file == nullptr) return failure.what();
  return WholeName(file->path1()) + ": " + base::ReasonText(file->code()) + ".";
}

std::string SafeFileName(std::string_view name) {
  std::string safe;
  for (char32_t c : base::Characters(name)) {
    const bool forbidden =
        c < 32 || (c < 128 && std::string_view("/\\:*?\"<>|").find(static_cast<char>(c)) !=
                                  std::string_view::npos);
    safe += base::FromCharacters(std::u32string(1, forbidden ? U'-' : c));
  }
  // Names of dots alone are directories; one platform drops dots and blanks at the end.
  while (!safe.empty() && (safe.back() == '.' || safe.back() == ' ')) safe.back() = '-';
  return safe.empty() ? "-" : safe;
}

std::filesystem::path FileIn(const std::filesystem::path& directory, std::string_view name) {
  const std::string safe = SafeFileName(WithoutSeparator(name));
  const std::filesystem::path exact = directory / PathOf(safe);
  std::error_code error;
  if (std::filesystem::exists(exact, error)) return exact;
  const std::string wanted = base::Upper(safe);
  for (const auto& entry : std::filesystem::directory_iterator(directory, error)) {
    if (base::Upper(NameOf(entry.path())) == wanted) return entry.path();
  }
  return exact;
}

std::filesystem::path PlayedFileIn(const std::filesystem::path& directory, std::string_view name) {
  const std::string_view bare = WithoutSeparator(name);
  const std::filesystem::path spelled = PathOf(bare);
  const bool asItStands = SafeFileName(bare) != bare && spelled == spelled.filename();
  return asItStands ? directory / spelled : FileIn(directory, name);
}

std::vector<std::string> FilesOf(const std::filesystem::path& directory, std::string_view suffix) {
  std::vector<std::string> names;
  const std::string wanted = base::Upper(suffix);
  std::error_code error;
  for (const auto& entry : std::filesystem::directory_iterator(directory, error)) {
    const std::string name = NameOf(entry.path());
    if (name.starts_with('.') || !entry.is_regular_file(error)) continue;
    if (base::Upper(name).ends_with(wanted)) names.push_back(name);
  }
  std::sort(names.begin(), names.end(), [](const std::string& a, const std::string& b) {
    return std::pair(base::Upper(a), a) < std::pair(base::Upper(b), b);
  });
  return names;
}

}  // namespace brenvo::core
