#include "tests/support/places.h"

namespace brenvo {

std::filesystem::path SourceDir() { return SOURCE_DIR; }
std::filesystem::path BuildDir() { return BUILD_DIR; }

}  // namespace brenvo
