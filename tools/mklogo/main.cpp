// Draws the picture of the contest sheets: a beam aerial on a hill, calling. Usage: mklogo FILE
//
// A grey bitmap of 8 bits that tells its own density, so that it prints 15 by 26 millimetres.
#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <fstream>
#include <iostream>
#include <string>

namespace {

constexpr int kWidthMm = 15, kHeightMm = 26;
constexpr int kDotsPerMm = 12;
constexpr int kWidth = kWidthMm * kDotsPerMm, kHeight = kHeightMm * kDotsPerMm;
constexpr int kSamples = 4;  // a side of a dot

struct Point {
  double x, y;
};

// All of it in millimetres from the top left corner.
struct Stroke {
  Point from, to;
  double width;
};

constexpr Stroke kStrokes[] = {
    // The boom and its elements, the longest at the back.
    {{1.6, 9.0}, {10.6, 9.0}, 0.5},
    {{2.0, 5.0}, {2.0, 13.0}, 0.45},
    {{4.0, 5.4}, {4.0, 12.6}, 0.45},
    {{5.8, 5.9}, {5.8, 12.1}, 0.45},
    {{7.8, 6.3}, {7.8, 11.7}, 0.45},
    {{10.0, 6.7}, {10.0, 11.3}, 0.45},
    // The mast and its guys.
    {{6.6, 9.0}, {6.6, 22.4}, 0.7},
    {{6.6, 15.0}, {2.6, 22.8}, 0.2},
    {{6.6, 15.0}, {10.6, 22.8}, 0.2},
};

constexpr Point kCall = {8.6, 9.0};  // where the waves come from
constexpr std::array<double, 3> kWaves = {3.4, 4.5, 5.6};
constexpr double kWaveWidth = 0.4, kWaveAngle = 0.6;  // radians to each side

constexpr double kHillTop = 22.2, kHillDrop = 0.05;  // a parabola

double DistanceTo(const Stroke& stroke, Point at) {
  const double dx = stroke.to.x - stroke.from.x, dy = stroke.to.y - stroke.from.y;
  const double along =
      ((at.x - stroke.from.x) * dx + (at.y - stroke.from.y) * dy) / (dx * dx + dy * dy);
  const double t = std::clamp(along, 0.0, 1.0);
  return std::hypot(at.x - stroke.from.x - t * dx, at.y - stroke.from.y - t * dy);
}

bool IsInk(Point at) {
  for (const Stroke& stroke : kStrokes) {
    if (DistanceTo(stroke, at) <= stroke.width / 2) return true;
  }
  const double radius = std::hypot(at.x - kCall.x, at.y - kCall.y);
  if (std::fabs(std::atan2(at.y - kCall.y, at.x - kCall.x)) <= kWaveAngle) {
    for (const double wave : kWaves) {
      if (std::fabs(radius - wave) <= kWaveWidth / 2) return true;
    }
  }
  const double hill = kHillTop + kHillDrop * (at.x - 6.6) * (at.x - 6.6);
  return at.y >= hill && at.y <= kHeightMm - 0.4;
}

// 0 black to 255 white.
std::uint8_t Grey(int x, int y) {
  int ink = 0;
  for (int i = 0; i < kSamples * kSamples; ++i) {
    const double subX = (i % kSamples + 0.5) / kSamples, subY = (i / kSamples + 0.5) / kSamples;
    if (IsInk({(x + subX) / kDotsPerMm, (y + subY) / kDotsPerMm})) ++ink;
  }
  return static_cast<std::uint8_t>(255 - 255 * ink / (kSamples * kSamples));
}

void Put(std::string& bytes, std::uint32_t value, int count) {
  for (int i = 0; i < count; ++i) bytes += static_cast<char>(value >> (8 * i) & 0xFF);
}

std::string Bitmap() {
  constexpr std::uint32_t kPalette = 256;
  constexpr std::uint32_t kDataAt = 14 + 40 + kPalette * 4;
  constexpr std::uint32_t kRow = (kWidth + 3) / 4 * 4;
  constexpr std::uint32_t kData = kRow * kHeight;
  constexpr std::uint32_t kDotsPerMetre = kDotsPerMm * 1000;
  std::string bytes = "BM";
  Put(bytes, kDataAt + kData, 4);
  Put(bytes, 0, 4);
  Put(bytes, kDataAt, 4);
  Put(bytes, 40, 4);
  Put(bytes, kWidth, 4);
  Put(bytes, kHeight, 4);
  Put(bytes, 1, 2);
  Put(bytes, 8, 2);
  Put(bytes, 0, 4);
  Put(bytes, kData, 4);
  Put(bytes, kDotsPerMetre, 4);
  Put(bytes, kDotsPerMetre, 4);
  Put(bytes, kPalette, 4);
  Put(bytes, 0, 4);
  for (std::uint32_t grey = 0; grey < kPalette; ++grey) Put(bytes, grey * 0x010101, 4);
  for (int y = kHeight - 1; y >= 0; --y) {
    for (int x = 0; x < kWidth; ++x) bytes += static_cast<char>(Grey(x, y));
    bytes.append(kRow - kWidth, '\0');
  }
  return bytes;
}

}  // namespace

int main(int count, char** arguments) {
  if (count != 2) {
    std::cerr << "usage: mklogo FILE\n";
    return 2;
  }
  std::ofstream file(arguments[1], std::ios::binary | std::ios::trunc);
  file << Bitmap();
  file.close();
  if (!file) {
    std::cerr << arguments[1] << ": cannot be written\n";
    return 1;
  }
}
