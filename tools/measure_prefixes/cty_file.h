// The country file that contest programs share, the measure for our prefix table.
#pragma once

#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "measure_prefixes/answer.h"

namespace brenvo::measure_prefixes {

// A country file: for each country a line of colon-separated facts, then its prefixes and whole
// calls (behind "="), each with its own zones "(CQ)" "[ITU]" and continent "{..}" where they
// differ, up to ";".
class CtyFile {
 public:
  // Throws std::runtime_error on text that is no country file.
  static CtyFile Parse(std::string_view text);
  static CtyFile Read(const std::filesystem::path& file);

  // The entry of the whole call, else that of the longest prefix that the call begins with;
  // nothing when there is none. Countries of the European awards alone are their DXCC country.
  [[nodiscard]] std::optional<Answer> Find(std::string_view call) const;
  [[nodiscard]] bool HasPrefix(std::string_view prefix) const { return prefixes_.contains(prefix); }
  // Whether the file has an entry for this very call.
  [[nodiscard]] bool Lists(std::string_view call) const { return calls_.contains(call); }
  // All whole calls with their entries.
  [[nodiscard]] const std::map<std::string, Answer, std::less<>>& Calls() const { return calls_; }

 private:
  void AddCountry(std::string_view record);

  std::map<std::string, Answer, std::less<>> prefixes_;
  std::map<std::string, Answer, std::less<>> calls_;
};

}  // namespace brenvo::measure_prefixes
