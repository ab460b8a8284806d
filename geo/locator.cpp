#include "geo/locator.h"

#include <array>
#include <cmath>
#include <stdexcept>

#include "base/number.h"
#include "base/text.h"

namespace brenvo::geo {
namespace {

double Sqr(double x) {
  if (x < 0) throw std::domain_error("Radice di un numero negativo nel calcolo della distanza");
  return std::sqrt(x);
}

double Divide(double a, double b) {
  if (b == 0) throw std::domain_error("Divisione per zero nel calcolo della distanza");
  return a / b;
}

// Cosine of the angle between two positions seen from the earth's centre.
double CosineOfAngle(const Position& from, const Position& to) {
  // One place under two texts is an angle of exactly 0, whatever rounding makes of the sum.
  if (from.longitude == to.longitude && from.latitude == to.latitude) return 1;
  return std::sin(from.latitude) * std::sin(to.latitude) +
         std::cos(to.latitude) * std::cos(from.latitude) * std::cos(to.longitude - from.longitude);
}

double ArcCosine(double x) { return std::atan(Divide(-x, Sqr(-x * x + 1))) + 2 * std::atan(1.0); }

int WholeDegrees(double radians) {
  return static_cast<int>(std::floor(radians * 180.0 / kPiValue));
}

// Nothing is allocated for plain letters and digits: a distance is computed at each keystroke and
// for each contact of a contest.
std::array<int, 6> FirstSixCodes(std::string_view locator) {
  std::array<int, 6> codes{};
  std::string_view rest = locator;
  for (int& code : codes) {
    if (rest.empty()) {
      throw std::out_of_range("Il locator \"" + std::string(locator) + "\" non ha sei caratteri");
    }
    const std::string character = base::Left(rest, 1);
    code = character.size() == 1 ? static_cast<unsigned char>(character.front())
                                 : static_cast<int>(base::Characters(character).front());
    rest.remove_prefix(character.size());
  }
  return codes;
}

}  // namespace

bool IsValidLocator(std::string_view text) {
  if (base::Len(text) < 6) return false;
  const auto within = [](std::string_view pair, std::string_view low, std::string_view high) {
    return pair >= low && pair <= high;
  };
  return within(base::Mid(text, 1, 2), "AA", "ZZ") && within(base::Mid(text, 3, 2), "00", "99") &&
         within(base::Mid(text, 5, 2), "AA", "ZZ");
}

Position LocatorToRadians(std::string_view locator) {
  const auto [c1, c2, c3, c4, c5, c6] = FirstSixCodes(locator);
  const int wholeLongitude = (c1 - 65) * 20 - 180 + (c3 - 48) * 2;
  const double longitude = wholeLongitude + (c5 - 65) / 12.0 + 1.0 / 24.0;
  const int wholeLatitude = (c2 - 65) * 10 - 90 + (c4 - 48);
  const double latitude = wholeLatitude + (c6 - 65) / 24.0 + 1.0 / 48.0;
  return {longitude * kPiValue / 180.0, latitude * kPiValue / 180.0};
}

int QrbKm(std::string_view fromLocator, std::string_view toLocator) {
  if (toLocator.find_first_not_of(' ') == std::string_view::npos) return 0;
  if (fromLocator == toLocator) return 1;
  const double c = CosineOfAngle(LocatorToRadians(fromLocator), LocatorToRadians(toLocator));
  const double theta = kPiValue / 2.0 - std::atan(Divide(c, Sqr(1.0 - c * c)));
  return static_cast<int>(std::floor(theta * (kEarthCircumferenceKm / kTwoPiValue) + 0.5));
}

Bearing BearingSpLp(std::string_view fromLocator, std::string_view toLocator) {
  const Position from = LocatorToRadians(fromLocator);
  const Position to = LocatorToRadians(toLocator);
  const double centralAngle = ArcCosine(CosineOfAngle(from, to));
  const double x = Divide(std::sin(to.latitude) - std::sin(from.latitude) * std::cos(centralAngle),
                          std::sin(centralAngle) * std::cos(from.latitude));
  const double y = ArcCosine(x);
  Bearing bearing;
  bearing.shortPath = static_cast<int>(std::floor(y * (180.0 / kPiValue)));
  if (to.longitude < from.longitude) bearing.shortPath = 360 - bearing.shortPath;
  bearing.longPath = bearing.shortPath + 180;
  if (bearing.longPath > 360) bearing.longPath -= 360;
  return bearing;
}

std::string PositionLine(std::string_view fromLocator, std::string_view toLocator) {
  const int distance = QrbKm(fromLocator, toLocator);
  const Bearing bearing = BearingSpLp(fromLocator, toLocator);
  const Position to = LocatorToRadians(toLocator);
  return "SP" + base::Str(bearing.shortPath) + "°/" + "LP" + base::Str(bearing.longPath) +
         "°  -  " + "LAT" + base::Str(WholeDegrees(to.latitude)) + "°/" + "LONG" +
         base::Str(WholeDegrees(to.longitude)) + "°  -  Km." + base::Str(distance);
}

}  // namespace brenvo::geo
