// Files as bytes, and lists of calls.
#pragma once

#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace brenvo::gara {

// No more than `most` and one byte of it, so that a reader with that bound tells a longer one;
// nothing where it cannot be read.
std::optional<std::string> ReadBytesOf(const std::filesystem::path& file, std::size_t most);
// In the place of an old one once it is whole; std::runtime_error with an Italian text.
void WriteBytesTo(const std::filesystem::path& file, std::string_view bytes);
// The calls of a super-check list, a line each, in ascending order.
std::vector<std::string> CallsOf(std::string_view bytes);

}  // namespace brenvo::gara
