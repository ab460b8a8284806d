#include <algorithm>
#include <cmath>
#include <numbers>

#include "gara/count.h"

namespace brenvo::gara {
namespace {

int LetterOf(char c, char first) {
  const int upper = c >= 'a' && c <= 'z' ? c - 'a' : c - 'A';
  return upper >= 0 && upper <= first - 'A' ? upper : -1;
}

int DigitOf(char c) { return c >= '0' && c <= '9' ? c - '0' : -1; }

struct Degrees {
  double longitude = 0, latitude = 0;
};

Degrees CentreOf(std::string_view locator) {
  return {LetterOf(locator[0], 'R') * 20 + DigitOf(locator[2]) * 2 +
              (LetterOf(locator[4], 'X') + 0.5) / 12 - 180,
          LetterOf(locator[1], 'R') * 10 + DigitOf(locator[3]) +
              (LetterOf(locator[5], 'X') + 0.5) / 24 - 90};
}

bool SameSubsquare(std::string_view a, std::string_view b) {
  return std::ranges::equal(a.substr(0, 6), b.substr(0, 6),
                            [](char x, char y) { return (x | 0x20) == (y | 0x20); });
}

}  // namespace

bool IsLocator(std::string_view text, std::size_t characters) {
  if (text.size() != characters || characters < 4) return false;
  if (LetterOf(text[0], 'R') < 0 || LetterOf(text[1], 'R') < 0 || DigitOf(text[2]) < 0 ||
      DigitOf(text[3]) < 0) {
    return false;
  }
  return characters == 4 || (LetterOf(text[4], 'X') >= 0 && LetterOf(text[5], 'X') >= 0);
}

std::optional<double> DistanceKm(std::string_view from, std::string_view to, double kmPerDegree) {
  if (!IsLocator(from, 6) || !IsLocator(to, 6)) return std::nullopt;
  // The arc cosine of nearly 1 would make metres of nothing.
  if (SameSubsquare(from, to)) return 0;
  constexpr double kRadian = std::numbers::pi / 180;
  const Degrees a = CentreOf(from), b = CentreOf(to);
  const double cosine = std::sin(a.latitude * kRadian) * std::sin(b.latitude * kRadian) +
                        std::cos(a.latitude * kRadian) * std::cos(b.latitude * kRadian) *
                            std::cos((a.longitude - b.longitude) * kRadian);
  return kmPerDegree * std::acos(std::clamp(cosine, -1.0, 1.0)) / kRadian;
}

std::optional<int> SquareRing(std::string_view from, std::string_view to) {
  if (from.size() < 4 || to.size() < 4 || !IsLocator(from.substr(0, 4), 4) ||
      !IsLocator(to.substr(0, 4), 4)) {
    return std::nullopt;
  }
  const auto column = [](std::string_view at) {
    return LetterOf(at[0], 'R') * 10 + DigitOf(at[2]);
  };
  const auto row = [](std::string_view at) { return LetterOf(at[1], 'R') * 10 + DigitOf(at[3]); };
  constexpr int kAround = 180;  // squares
  const int across = std::abs(column(from) - column(to));
  return std::max(std::min(across, kAround - across), std::abs(row(from) - row(to)));
}

}  // namespace brenvo::gara
