// Files read and written whole.
#pragma once

#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace brenvo::base {

// No more than `most` and one byte of it, so that a reader with that bound tells a longer one;
// nothing where it cannot be read.
std::optional<std::string> ReadBytesOf(const std::filesystem::path& file, std::size_t most);
// In the place of an old one once it is whole; std::runtime_error with an Italian text.
void WriteBytesTo(const std::filesystem::path& file, std::string_view bytes);

}  // namespace brenvo::base
