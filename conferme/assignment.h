// The cheapest way to give each of some things one of some others.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace brenvo::conferme {

// That left may be given right, at that cost, from 0 to kDearest.
struct Edge {
  std::size_t left = 0, right = 0;
  std::int64_t cost = 0;
};
inline constexpr std::int64_t kDearest = 1'000'000'000'000;

struct Given {
  static constexpr std::size_t kNothing = static_cast<std::size_t>(-1);
  std::size_t right = kNothing;
  bool only = false;  // every cheapest way gives it this one
};

// As many as possible get one, and of these ways the one whose costs are least in sum. No right
// thing is given twice. The answer is the same in whatever order the edges come, but for a left
// thing that is not the only choice. Its work grows with the third power of lefts and rights.
std::vector<Given> Assign(std::size_t lefts, std::size_t rights, const std::vector<Edge>& edges);

}  // namespace brenvo::conferme
