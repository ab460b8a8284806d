// Chance that falls alike on every machine.
#pragma once

#include <cstddef>
#include <cstdint>
#include <iterator>
#include <random>

namespace brenvo::mklog {

// The standard library's distributions differ from one to the next; its generator does not.
class Dice {
 public:
  explicit Dice(std::uint64_t seed) : generator_(seed) {}

  // From 0 to just below 1.
  double Share() { return static_cast<double>(generator_() >> 11) * 0x1p-53; }
  bool Chance(double share) { return Share() < share; }
  // From 0 to `count` - 1.
  std::size_t Below(std::size_t count) {
    return static_cast<std::size_t>(Share() * static_cast<double>(count));
  }
  int Between(int first, int last) {
    return first + static_cast<int>(Below(static_cast<std::size_t>(last - first + 1)));
  }
  // Between -1 and 1, mostly around 0.
  double Bell() { return (Share() + Share() + Share() - 1.5) / 1.5; }
  char Letter() { return static_cast<char>('A' + Below(26)); }

  template <class Range>
  const auto& OneOf(const Range& range) {
    return range[Below(std::size(range))];
  }
  // One whose public member `weight` is as large as its share of the whole.
  template <class Range>
  const auto& Weighted(const Range& range) {
    double total = 0;
    for (const auto& each : range) total += each.weight;
    double at = Share() * total;
    for (const auto& each : range) {
      at -= each.weight;
      if (at < 0) return each;
    }
    return *std::prev(std::end(range));
  }

 private:
  std::mt19937_64 generator_;
};

}  // namespace brenvo::mklog
