// The most memory that the program has had at a time.
#pragma once

#include <fmt/format.h>

#include <cstdint>
#include <fstream>
#include <string>

namespace brenvo::bench {

// From now on.
inline void ForgetPeakMemory() { std::ofstream("/proc/self/clear_refs") << "5"; }
// "59 MB".
inline std::string PeakMemory() {
  std::ifstream status("/proc/self/status");
  std::string word;
  while (status >> word && word != "VmHWM:") {
  }
  std::int64_t kibibytes = 0;
  status >> kibibytes;
  return fmt::format("{} MB", kibibytes / 1024);
}

}  // namespace brenvo::bench
