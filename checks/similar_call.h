// Calls that differ by one slip of the hand.
#pragma once

#include <cstdint>
#include <functional>
#include <string_view>
#include <vector>

namespace brenvo::checks {

// What makes `call` out of `often`, in words: one letter replaced, left out, added, or two
// neighbours exchanged. Empty for any other pair, and for equal ones.
std::string_view SlipBetween(std::string_view often, std::string_view call);

// Finds, for one call, those of many that are one slip away.
class SimilarCalls {
 public:
  // `calls` lives longer than this; of ASCII.
  explicit SimilarCalls(const std::vector<std::string_view>& calls);
  // By their places among the calls, each once.
  std::vector<std::size_t> Of(std::string_view call) const;

 private:
  struct Variant {
    std::uint64_t hash;
    std::uint32_t call;
    friend auto operator<=>(const Variant&, const Variant&) = default;
  };
  const std::vector<std::string_view>& calls_;
  std::vector<Variant> variants_;  // each call, and what is left of it without one letter; sorted
};

}  // namespace brenvo::checks
