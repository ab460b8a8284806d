// Texts and numbers as keys of 64 bits.
#pragma once

#include <bit>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

#include "base/text.h"

namespace brenvo::worked {

inline std::string_view WithoutTrailingBlanks(std::string_view text) {
  while (!text.empty() && text.back() == ' ') text.remove_suffix(1);
  return text;
}

// A text as it compares.
inline std::string Folded(std::string_view text) {
  return base::UpperAscii(WithoutTrailingBlanks(text));
}

namespace folding {

constexpr std::uint64_t kEach = 0x0101010101010101;

// Eight characters at once: "a" to "z" become capitals, all other bytes stay.
constexpr std::uint64_t Capitals(std::uint64_t bytes) {
  const std::uint64_t low = bytes & (0x7F * kEach);
  const std::uint64_t behindZ = low + (0x7F - 'z') * kEach;
  const std::uint64_t fromA = low + (0x80 - 'a') * kEach;
  const std::uint64_t lower = ~bytes & (fromA ^ behindZ) & (0x80 * kEach);
  return bytes ^ (lower >> 2);
}

constexpr std::uint64_t Mixed(std::uint64_t hash, std::uint64_t bytes) {
  hash = (hash ^ bytes) * 0x9E3779B97F4A7C15;
  return hash ^ std::rotr(hash, 29);
}

}  // namespace folding

// Of a number; `seed` tells apart what the numbers are of.
constexpr std::uint64_t KeyOf(std::uint64_t number, std::uint64_t seed) {
  return folding::Mixed(folding::Mixed(seed, number), seed + 1);
}

// Of a text as it compares.
inline std::uint64_t KeyOf(std::string_view text, std::uint64_t seed) {
  text = WithoutTrailingBlanks(text);
  std::uint64_t hash = folding::Mixed(seed, text.size());
  while (!text.empty()) {
    const std::size_t size = std::min<std::size_t>(text.size(), 8);
    std::uint64_t bytes = 0;
    std::memcpy(&bytes, text.data(), size);
    hash = folding::Mixed(hash, folding::Capitals(bytes));
    text.remove_prefix(size);
  }
  return folding::Mixed(hash, seed + 1);
}

}  // namespace brenvo::worked
