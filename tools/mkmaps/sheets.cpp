#include "mkmaps/sheets.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>
#include <stdexcept>

namespace brenvo::mkmaps {
namespace {

constexpr double kRadians = std::numbers::pi / 180;
constexpr double kEarthRadiusKm = 6371;

// Half the world's height over half its width is 0.6, between the plain chart's 0.5 and Miller's
// 0.73: high latitudes stay legible and keep their shape.
double CompactMiller(double latitude) {
  const double phi = latitude * kRadians;
  return 0.9902 * phi + 0.1604 * std::pow(phi, 3) - 0.03054 * std::pow(phi, 5);
}

// The columns of wm.jpg from the left: I to R, the right edge of R, A to H. The map viewer holds
// where I begins, and how far H reaches to the right.
constexpr std::string_view kColumns = "IJKLMNOPQRSABCDEFGH";
constexpr int kLeftmostColumn = 149, kDateLineStrip = 24;
constexpr double kLeftHm = -55, kRightHmWidth = 224;

std::array<int, kColumns.size()> MakeColumns() {
  const int last = SquareSheet::kRight - static_cast<int>(kRightHmWidth / 2);
  const double width = (last - kLeftmostColumn - kDateLineStrip) / 17.0;
  std::array<int, kColumns.size()> edges{};
  for (std::size_t i = 0; i < edges.size(); ++i) {
    const bool beyond = i > 10;
    edges[i] = kLeftmostColumn + (beyond ? kDateLineStrip : 0) +
               static_cast<int>(std::lround(width * static_cast<double>(beyond ? i - 1 : i)));
  }
  return edges;
}

double Between(double from, double to, double share) { return from + (to - from) * share; }

double Column(int letter) { return SquareSheet::ColumnX(static_cast<char>(letter)); }

}  // namespace

SheetPoint FieldSheet::At(const GeoPoint& position) {
  // The equator is the lower edge of the cell at 283.
  constexpr double kLeft = 62, kEquator = 283 + 32;
  return {kLeft + (position.longitude + 180) * kPixelsPerDegree,
          kEquator - position.latitude * kPixelsPerDegree};
}

int SquareSheet::ColumnX(char letter) {
  static const auto kEdges = MakeColumns();
  return kEdges.at(kColumns.find(letter));
}

int SquareSheet::RowY(char letter) {
  // "R" begins at the north pole.
  const double latitude = (letter - 'A') * 10 - 80;
  const double share = (CompactMiller(90) - CompactMiller(latitude)) / (2 * CompactMiller(90));
  return static_cast<int>(std::lround(Between(kTop, kBottom, share)));
}

double SquareSheet::WestX(double longitude) {
  const double column = std::floor((longitude + 180) / 20);
  const double share = (longitude + 180) / 20 - column;
  if (column < 8) return kLeftHm + (kLeftmostColumn - kLeftHm) * (longitude + 40) / 20;
  const int letter = std::min('A' + static_cast<int>(column), static_cast<int>('R'));
  return Between(Column(letter), Column(letter + 1), share + (column - (letter - 'A')));
}

double SquareSheet::EastX(double longitude) {
  const double column = std::clamp(std::floor((longitude + 180) / 20), 0.0, 7.0);
  const int letter = 'A' + static_cast<int>(column);
  const double share = (longitude + 180) / 20 - column;
  const double width = letter == 'H' ? kRightHmWidth : Column(letter + 1) - Column(letter);
  return Column(letter) + width * share;
}

double SquareSheet::Y(double latitude) {
  const int row = std::clamp(static_cast<int>(std::floor((latitude + 90) / 10)), 0, 17);
  const char letter = static_cast<char>('A' + row);
  return Between(RowY(static_cast<char>(letter - 1)), RowY(letter), (latitude + 90) / 10 - row);
}

SheetPoint SquareSheet::At(const GeoPoint& position) {
  return {position.longitude >= kCut ? WestX(position.longitude) : EastX(position.longitude),
          Y(position.latitude)};
}

double ZoneSheet::X(double longitude) { return kLeft + (longitude - kCut) * kPixelsPerDegree; }

SheetPoint ZoneSheet::At(const GeoPoint& position) {
  const double longitude =
      position.longitude < kCut ? position.longitude + 360 : position.longitude;
  return {X(longitude), kTop + (CompactMiller(kNorth) - CompactMiller(position.latitude)) /
                                   kRadians * kPixelsPerDegree};
}

SheetPoint ItalySheet::At(const GeoPoint& position) {
  return {kMargin + (position.longitude - kWest) * kPixelsPerDegreeX,
          kMargin + (kNorth - position.latitude) * kPixelsPerDegreeY};
}

SheetPoint EuropeSheet::At(const GeoPoint& position) {
  return {kMargin + (position.longitude - kWest) * kSquareWidth / 2,
          kMargin + (kNorth - position.latitude) * kSquareHeight};
}

SheetPoint Region::At(const GeoPoint& position) const {
  // Lambert's azimuthal equal-area projection.
  const double phi = position.latitude * kRadians;
  const double phi0 = centre.latitude * kRadians;
  const double lambda = (position.longitude - centre.longitude) * kRadians;
  const double cosine =
      std::sin(phi0) * std::sin(phi) + std::cos(phi0) * std::cos(phi) * std::cos(lambda);
  constexpr double kBesideTheAntipode = 1e-6;
  const double k =
      std::sqrt(2 / std::max(1 + cosine, kBesideTheAntipode)) * kEarthRadiusKm / kmPerPixel;
  return {size.width / 2.0 + k * std::cos(phi) * std::sin(lambda),
          size.height / 2.0 - k * (std::cos(phi0) * std::sin(phi) -
                                   std::sin(phi0) * std::cos(phi) * std::cos(lambda))};
}

double Region::Distance(const GeoPoint& position) const {
  const double phi = position.latitude * kRadians;
  const double phi0 = centre.latitude * kRadians;
  const double lambda = (position.longitude - centre.longitude) * kRadians;
  const double cosine =
      std::sin(phi0) * std::sin(phi) + std::cos(phi0) * std::cos(phi) * std::cos(lambda);
  return std::acos(std::clamp(cosine, -1.0, 1.0)) / kRadians;
}

bool Region::Shows(const GeoPoint& position) const {
  constexpr double kMargin = 40;
  if (Distance(position) > 90) return false;
  const SheetPoint at = At(position);
  return at.x >= kMargin && at.x <= size.width - kMargin && at.y >= kMargin &&
         at.y <= size.height - kMargin;
}

const std::vector<Region>& Regions() {
  static const std::vector<Region> kRegions = {
      {"MappaEuropa.jpg", "Europa", {13, 53}, 4.4, {1200, 940}},
      {"MappaCaraibi.jpg", "America centrale e Caraibi", {-76, 17}, 3.6, {1200, 820}},
      {"MappaMedioOriente.jpg", "Medio Oriente", {48, 30}, 4.6, {1100, 860}},
      {"MappaAsiaSudEst.jpg", "Asia sud-orientale", {112, 8}, 5.2, {1200, 900}},
      {"MappaAsiaOrientale.jpg", "Asia orientale", {118, 38}, 5.4, {1200, 900}},
      {"MappaAsiaMeridionale.jpg", "Asia centrale e meridionale", {76, 28}, 6.4, {1100, 940}},
      {"MappaAfrica.jpg", "Africa", {18, 2}, 8.6, {1100, 960}},
      {"MappaAmericaNord.jpg", "America settentrionale", {-98, 50}, 8, {1200, 900}},
      {"MappaAmericaSud.jpg", "America meridionale", {-62, -22}, 8.2, {1000, 960}},
      {"MappaRussia.jpg", "Russia", {98, 62}, 6.6, {1200, 780}},
      {"MappaOceania.jpg", "Oceania", {153, -22}, 7.4, {1200, 900}},
      {"MappaArtico.jpg", "Artico", {0, 84}, 7.6, {1100, 960}},
      {"MappaAtlantico.jpg", "Oceano Atlantico", {-20, 2}, 10, {1000, 960}},
      {"MappaIndiano.jpg", "Oceano Indiano", {72, -20}, 10, {1100, 960}},
      {"MappaPacifico.jpg", "Oceano Pacifico", {-158, 0}, 11.5, {1240, 900}},
      {"MappaAntartide.jpg", "Antartide", {0, -90}, 10, {1100, 1000}},
  };
  return kRegions;
}

const Region& RegionOf(const GeoPoint& position) {
  const auto& regions = Regions();
  const auto at = std::find_if(regions.begin(), regions.end(),
                               [&](const Region& region) { return region.Shows(position); });
  if (at == regions.end()) throw std::runtime_error("a position that no region shows");
  return *at;
}

GeoPoint PositionOf(const std::string& locator) {
  if (locator.size() < 2) throw std::runtime_error("\"" + locator + "\" is no locator");
  const auto step = [&](std::size_t place, char first) {
    return static_cast<double>(locator[place] - first);
  };
  GeoPoint corner{step(0, 'A') * 20 - 180, step(1, 'A') * 10 - 90};
  double width = 20;
  if (locator.size() >= 4) {
    corner = {corner.longitude + step(2, '0') * 2, corner.latitude + step(3, '0')};
    width = 2;
  }
  if (locator.size() >= 6) {
    corner = {corner.longitude + step(4, 'A') / 12, corner.latitude + step(5, 'A') / 24};
    width = 1.0 / 12;
  }
  return {corner.longitude + width / 2, corner.latitude + width / 4};
}

}  // namespace brenvo::mkmaps
