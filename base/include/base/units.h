// Measures that must not meet as bare numbers.
#pragma once

#include <compare>

namespace brenvo::base {

// A measure in one unit: adds to its like, scales by a number, and converts by name only.
template <class Unit>
class Measure {
 public:
  constexpr Measure() = default;
  constexpr explicit Measure(double value) : value_(value) {}
  constexpr double Value() const { return value_; }

  friend constexpr Measure operator+(Measure a, Measure b) { return Measure(a.value_ + b.value_); }
  friend constexpr Measure operator-(Measure a, Measure b) { return Measure(a.value_ - b.value_); }
  friend constexpr Measure operator*(Measure a, double by) { return Measure(a.value_ * by); }
  friend constexpr Measure operator/(Measure a, double by) { return Measure(a.value_ / by); }
  constexpr Measure& operator+=(Measure other) { return *this = *this + other; }
  friend constexpr auto operator<=>(Measure, Measure) = default;

 private:
  double value_ = 0;
};

using Mm = Measure<struct MmUnit>;
using Khz = Measure<struct KhzUnit>;
using Mhz = Measure<struct MhzUnit>;
using HundredHz = Measure<struct HundredHzUnit>;
using Hz = Measure<struct HzUnit>;

constexpr Khz ToKhz(HundredHz f) { return Khz(f.Value() / 10); }
constexpr HundredHz ToHundredHz(Khz f) { return HundredHz(f.Value() * 10); }
constexpr Khz ToKhz(Hz f) { return Khz(f.Value() / 1e3); }
constexpr Mhz ToMhz(Hz f) { return Mhz(f.Value() / 1e6); }
constexpr Hz ToHz(Khz f) { return Hz(f.Value() * 1e3); }
constexpr Hz ToHz(Mhz f) { return Hz(f.Value() * 1e6); }

// Screen geometry: whole twentieths of a point, 15 to a pixel of the design.
class Twips {
 public:
  constexpr Twips() = default;
  constexpr explicit Twips(int value) : value_(value) {}
  constexpr int Value() const { return value_; }
  static constexpr Twips FromPixels(int pixels) { return Twips(pixels * 15); }
  constexpr int Pixels() const { return value_ / 15; }

  friend constexpr Twips operator+(Twips a, Twips b) { return Twips(a.value_ + b.value_); }
  friend constexpr Twips operator-(Twips a, Twips b) { return Twips(a.value_ - b.value_); }
  friend constexpr auto operator<=>(Twips, Twips) = default;

 private:
  int value_ = 0;
};

// Red, green and blue, 0 to 255.
struct Colour {
  int red = 0, green = 0, blue = 0;
  friend constexpr bool operator==(Colour, Colour) = default;
};
constexpr Colour kBlack{0, 0, 0};
constexpr Colour kWhite{255, 255, 255};
constexpr Colour kGreen{0, 255, 0};
constexpr Colour kRed{255, 0, 0};
// Entries 2 and 4 of the sixteen classic colours.
constexpr Colour kDarkGreen{0, 128, 0};
constexpr Colour kDarkRed{128, 0, 0};

}  // namespace brenvo::base
