// Comparison with a file that somebody has read and found right.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <string_view>

#include "tests/support/places.h"

namespace brenvo {

inline std::string ReadBytes(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  EXPECT_TRUE(file) << "no file " << path;
  return {std::istreambuf_iterator<char>(file), {}};
}

// Byte for byte with tests/<golden>. What was made instead is left in <build>/golden/<golden>, to
// be read and then copied by whoever changes the outcome on purpose.
inline void ExpectGolden(std::string_view golden, const std::string& made) {
  const auto expected = SourceDir() / "tests" / golden;
  if (std::filesystem::exists(expected) && ReadBytes(expected) == made) return;
  const auto actual = BuildDir() / "golden" / golden;
  std::filesystem::create_directories(actual.parent_path());
  std::ofstream(actual, std::ios::binary) << made;
  ADD_FAILURE() << "compare: diff -a " << expected.string() << ' ' << actual.string();
}

}  // namespace brenvo
