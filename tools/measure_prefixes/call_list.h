// Lists of active calls.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace brenvo::measure_prefixes {

// The calls of a file, one a line; empty lines and lines that begin with "#" are passed over.
// Throws std::runtime_error when the file cannot be read.
[[nodiscard]] std::vector<std::string> ReadCalls(const std::filesystem::path& file);

}  // namespace brenvo::measure_prefixes
