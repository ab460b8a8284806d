// How recorded lines write texts, bytes, numbers and files.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace brenvo::recorder {

// A text without its control characters: \n, \r, \t, \xHH, and a backslash before a backslash.
std::string Escaped(std::string_view text);
// The same in double quotes; a quote inside has a backslash before it.
std::string Quoted(std::string_view text);
// "0A 1B", a byte each.
std::string HexBytes(std::string_view bytes);
// At most two decimals, no trailing zeros: "12.5".
std::string ShortNumber(double value);

// Names files as seen from a directory.
class FileNames {
 public:
  void SetDirectory(const std::filesystem::path& directory);
  // With forward slashes; a file elsewhere keeps its whole name, the directory itself has none.
  std::string Of(const std::filesystem::path& file) const;

 private:
  std::filesystem::path directory_;
};

}  // namespace brenvo::recorder
