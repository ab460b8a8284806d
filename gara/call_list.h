// Many calls, and those of them that hold what is typed or are one letter away from it.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace brenvo::gara {

// What a key asks costs the same however many calls there are: the list is looked into by two
// letters that stand side by side, and by the first and the last letters of a call.
class CallList {
 public:
  CallList() = default;
  // In any order; each once is enough.
  explicit CallList(std::vector<std::string> calls);

  std::size_t Size() const { return calls_.size(); }
  bool Contains(std::string_view call) const;
  // Those that hold the text, which has two letters at least, but not the text itself; ascending,
  // no more than `most`.
  std::vector<std::string> Holding(std::string_view text, std::size_t most) const;
  // Those that differ from it by one letter, put in, left out or another; ascending, no more than
  // `most`.
  std::vector<std::string> Near(std::string_view call, std::size_t most) const;

 private:
  static constexpr std::size_t kLetters = 37;  // those of calls, and "/"
  static std::size_t Letter(char c);

  std::vector<std::string> calls_;        // ascending
  std::vector<std::uint32_t> backwards_;  // their places, ascending by the calls read backwards
  std::vector<std::vector<std::uint32_t>> pairs_;  // places, by two letters side by side
};

}  // namespace brenvo::gara
