// A directory of its own for a test.
#pragma once

#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <stdexcept>
#include <string>

namespace brenvo {

// Makes an empty directory, and removes it with all that is in it.
class ScratchDirectory {
 public:
  ScratchDirectory() {
    std::string pattern = (std::filesystem::temp_directory_path() / "brenvo-XXXXXX").string();
    if (mkdtemp(pattern.data()) == nullptr) throw std::runtime_error("no scratch directory");
    path_ = pattern;
  }
  ~ScratchDirectory() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }
  ScratchDirectory(const ScratchDirectory&) = delete;
  ScratchDirectory& operator=(const ScratchDirectory&) = delete;

  const std::filesystem::path& Path() const { return path_; }

 private:
  std::filesystem::path path_;
};

}  // namespace brenvo
