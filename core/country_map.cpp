#include "core/country_map.h"

#include <algorithm>
#include <cstdint>

#include "base/text.h"
#include "core/modules.h"
#include "core/session.h"

namespace brenvo::core {
namespace {

// Far outside any picture, and near enough for the geometry of the map.
constexpr std::int64_t kFarthestPixel = 1000000;

int PixelOf(engine::Recordset& row, std::string_view column) {
  return static_cast<int>(std::clamp(row.Field(column).Integer(), -kFarthestPixel, kFarthestPixel));
}

}  // namespace

void ShowCountryMap(Session& session, std::string_view country) {
  engine::Table& countries = *session.TbCountry;
  countries.Seek("=", {base::Left(country, 5)});
  if (countries.NoMatch()) return;
  const std::string map = FieldText(countries, "Mappa");
  if (map.empty()) return;
  session.MapFile = map;
  session.Pointer_X = PixelOf(countries, "Pointer_X");
  session.Pointer_Y = PixelOf(countries, "Pointer_Y");
  session.DisplayMap("");
}

}  // namespace brenvo::core
