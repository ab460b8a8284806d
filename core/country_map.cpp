#include "core/country_map.h"

#include <algorithm>
#include <cstdint>

#include "base/text.h"
#include "core/places.h"
#include "core/session.h"

namespace brenvo::core {
namespace {

// Far outside any picture, and near enough for the geometry of the map.
constexpr std::int64_t kFarthestPixel = 1000000;

int PixelOf(const engine::Value& value) {
  return static_cast<int>(std::clamp(value.Integer(), -kFarthestPixel, kFarthestPixel));
}

}  // namespace

void ShowCountryMap(Session& session, std::string_view country) {
  const auto place = FindCountry(session, base::Left(country, 5));
  if (!place || place->Mappa.empty()) return;
  session.Map.MapFile = place->Mappa;
  session.Map.Pointer_X = PixelOf(place->Pointer_X);
  session.Map.Pointer_Y = PixelOf(place->Pointer_Y);
  session.DisplayMap("");
}

}  // namespace brenvo::core
