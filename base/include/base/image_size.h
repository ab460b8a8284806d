// How large a picture file is, read from its first bytes.
#pragma once

#include <filesystem>
#include <optional>

namespace brenvo::base {

struct ImageSize {
  int width = 0, height = 0;  // pixels
  friend bool operator==(ImageSize, ImageSize) = default;
};

// JPEG, BMP and PNG; nothing when the file is missing or is none of them.
std::optional<ImageSize> ReadImageSize(const std::filesystem::path& file);

}  // namespace brenvo::base
