#include "core/country_map.h"

#include "base/text.h"
#include "core/modules.h"
#include "core/session.h"

namespace brenvo {

void ShowCountryMap(Session& session, std::string_view country) {
  Table& countries = *session.TbCountry;
  countries.Seek("=", {Left(country, 5)});
  if (countries.NoMatch()) return;
  const std::string map = FieldText(countries, "Mappa");
  if (map.empty()) return;
  session.MapFile = map;
  session.Pointer_X = static_cast<int>(countries.Field("Pointer_X").Integer());
  session.Pointer_Y = static_cast<int>(countries.Field("Pointer_Y").Integer());
  session.DisplayMap("");
}

}  // namespace brenvo
