#include "places_of_call.h"

#include <algorithm>
#include <cmath>

#include "geo/locator.h"

namespace brenvo::checks {
namespace {

struct Kind {
  char first, last;
  std::uint32_t Count() const { return static_cast<std::uint32_t>(last - first + 1); }
  bool Holds(char c) const { return c >= first && c <= last; }
};
// Of the characters of a locator, two and two; behind the sixth digits and letters take turns.
constexpr Kind kField{'A', 'R'}, kDigit{'0', '9'}, kSubsquare{'A', 'X'};
constexpr Kind kKinds[] = {kField, kField, kDigit, kDigit, kSubsquare, kSubsquare};
constexpr std::size_t kSix = std::size(kKinds);

const Kind& KindAt(std::size_t i) {
  if (i < kSix) return kKinds[i];
  return i / 2 % 2 == 1 ? kDigit : kSubsquare;
}

}  // namespace

bool IsLocator(std::string_view locator) {
  if (locator.size() < 4 || locator.size() % 2 != 0) return false;
  for (std::size_t i = 0; i < locator.size(); ++i) {
    if (!KindAt(i).Holds(locator[i])) return false;
  }
  return true;
}

std::uint32_t PackedLocator(std::string_view locator) {
  if (locator.size() < kSix || !IsLocator(locator)) return 0;
  std::uint32_t packed = 0;
  for (std::size_t i = 0; i < kSix; ++i) {
    packed = packed * kKinds[i].Count() + static_cast<std::uint32_t>(locator[i] - kKinds[i].first);
  }
  return packed + 1;
}

std::string LocatorOf(std::uint32_t packed) {
  std::string locator(kSix, ' ');
  std::uint32_t rest = packed - 1;
  for (std::size_t i = kSix; i-- > 0; rest /= kKinds[i].Count()) {
    locator[i] = static_cast<char>(kKinds[i].first + static_cast<char>(rest % kKinds[i].Count()));
  }
  return locator;
}

int KmBetween(std::uint32_t a, std::uint32_t b) {
  const geo::Position from = geo::LocatorToRadians(LocatorOf(a));
  const geo::Position to = geo::LocatorToRadians(LocatorOf(b));
  const double cosine =
      std::sin(from.latitude) * std::sin(to.latitude) +
      std::cos(from.latitude) * std::cos(to.latitude) * std::cos(to.longitude - from.longitude);
  // The distance that the log shows fails for places that lie opposite each other.
  return static_cast<int>(std::lround(std::acos(std::clamp(cosine, -1.0, 1.0)) *
                                      geo::kEarthCircumferenceKm / geo::kTwoPiValue));
}

}  // namespace brenvo::checks
