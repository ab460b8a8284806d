// A file that takes the place of another one once it is whole.
#pragma once

#include <fmt/format.h>

#include <filesystem>
#include <stdexcept>

namespace brenvo::list {

class ReplacingFile {
 public:
  explicit ReplacingFile(std::filesystem::path file) : file_(std::move(file)), unfinished_(file_) {
    unfinished_ += ".new";
  }
  ~ReplacingFile() {
    std::error_code ignored;
    std::filesystem::remove(unfinished_, ignored);
  }
  ReplacingFile(const ReplacingFile&) = delete;
  ReplacingFile& operator=(const ReplacingFile&) = delete;

  const std::filesystem::path& Unfinished() const { return unfinished_; }
  // std::runtime_error with an Italian text.
  [[noreturn]] void Fail() const {
    throw std::runtime_error(fmt::format("Il file {} non si scrive", file_.filename().string()));
  }
  void Replace() {
    std::error_code error;
    std::filesystem::rename(unfinished_, file_, error);
    if (error) Fail();
  }

 private:
  std::filesystem::path file_, unfinished_;
};

}  // namespace brenvo::list
