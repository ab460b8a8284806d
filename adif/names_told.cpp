#include "names_told.h"

#include <utility>

namespace brenvo::adif {
namespace {

constexpr std::size_t kFirstPlaces = 1024;

// The last sixteen digits: there nothing tells how the name was made. Never 0.
std::uint64_t HalfOf(std::string_view uuid) {
  constexpr std::size_t kDigits = 16;
  std::uint64_t half = 0;
  std::size_t digits = 0;
  for (std::size_t i = uuid.size(); i > 0 && digits < kDigits; --i) {
    const char c = uuid[i - 1];
    if (c == '-') continue;
    const int digit = c <= '9' ? c - '0' : (c | 0x20) - 'a' + 10;
    half |= static_cast<std::uint64_t>(digit) << 4 * digits++;
  }
  return half == 0 ? 1 : half;
}

}  // namespace

bool NamesTold::Add(std::string_view uuid) {
  if (2 * (count_ + 1) > places_.size()) Grow();
  std::uint64_t& place = places_[PlaceOf(HalfOf(uuid))];
  if (place != 0) return false;
  place = HalfOf(uuid);
  ++count_;
  return true;
}

void NamesTold::Grow() {
  const std::vector<std::uint64_t> before = std::move(places_);
  places_.assign(before.empty() ? kFirstPlaces : 2 * before.size(), 0);
  for (const std::uint64_t name : before) {
    if (name != 0) places_[PlaceOf(name)] = name;
  }
}

std::size_t NamesTold::PlaceOf(std::uint64_t name) const {
  constexpr std::uint64_t kSpread = 0x9E3779B97F4A7C15u;
  constexpr int kHigh = 32;  // the product's best bits
  std::size_t at = (name * kSpread >> kHigh) & (places_.size() - 1);
  while (places_[at] != 0 && places_[at] != name) at = (at + 1) & (places_.size() - 1);
  return at;
}

}  // namespace brenvo::adif
