#include "base/file_bytes.h"

#include <fmt/format.h>

#include <algorithm>
#include <fstream>
#include <stdexcept>

namespace brenvo::base {

std::optional<std::string> ReadBytesOf(const std::filesystem::path& file, std::size_t most) {
  std::error_code error;
  if (!std::filesystem::is_regular_file(file, error)) return std::nullopt;
  std::ifstream in(file, std::ios::binary);
  if (!in) return std::nullopt;
  const auto size = std::filesystem::file_size(file, error);
  if (error) return std::nullopt;
  std::string bytes(std::min<std::size_t>(size, most + 1), '\0');
  in.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  bytes.resize(static_cast<std::size_t>(in.gcount()));
  return bytes;
}

void WriteBytesTo(const std::filesystem::path& file, std::string_view bytes) {
  std::filesystem::path unfinished = file;
  unfinished += ".new";
  const auto fail = [&] {
    std::error_code ignored;
    std::filesystem::remove(unfinished, ignored);
    throw std::runtime_error(fmt::format("Il file {} non si scrive", file.filename().string()));
  };
  std::ofstream out(unfinished, std::ios::binary | std::ios::trunc);
  out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  out.close();
  if (!out) fail();
  std::error_code error;
  std::filesystem::rename(unfinished, file, error);
  if (error) fail();
}

}  // namespace brenvo::base
