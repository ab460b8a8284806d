#include <cstdio>
#include <exception>
#include <filesystem>
#include <QGuiApplication>
#include <string_view>

#include "mkmaps/calibration.h"
#include "mkmaps/maps.h"
#include "mkmaps/stamps.h"

namespace brenvo::mkmaps {
namespace {

void DrawAll(const std::filesystem::path& facts, const std::filesystem::path& out) {
  std::filesystem::create_directories(out);
  const MapSources sources = ReadMapSources(facts);
  DrawFieldMap(sources, out);
  DrawSquareMap(sources, out);
  DrawZoneMap(sources, out);
  DrawItaly(sources, out);
  DrawEurope(sources, out);
  for (const Region& region : Regions()) DrawRegion(sources, region, out);
  DrawPointerStamp(out);
  for (int zone = 1; zone <= 40; ++zone) DrawZoneStamps(zone, out);
}

}  // namespace
}  // namespace brenvo::mkmaps

int main(int argc, char** argv) {
  if (argc != 3) {
    std::fputs("usage: mkmaps DATA OUT | mkmaps --tables DATA\n", stderr);
    return 2;
  }
  try {
    if (std::string_view(argv[1]) == "--tables") {
      brenvo::mkmaps::WriteCalibration(argv[2]);
      return 0;
    }
    // Words need fonts, not a screen.
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    brenvo::mkmaps::DrawAll(argv[1], argv[2]);
  } catch (const std::exception& error) {
    std::fprintf(stderr, "mkmaps: %s\n", error.what());
    return 1;
  }
  return 0;
}
