// Where the sources and what was built of them lie, for tests, benchmarks and fuzz targets.
#pragma once

#include <filesystem>

namespace brenvo {

std::filesystem::path SourceDir();
std::filesystem::path BuildDir();

}  // namespace brenvo
