// What the tables of countries and of provinces say of a code.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "engine/value.h"

namespace brenvo::core {

class Session;

struct CountryPlace {
  std::string Country, Descrizione, Mappa, Flag, Locator;
  engine::Value Pointer_X, Pointer_Y;  // pixels of the map's picture
};
struct ProvincePlace {
  std::string Provincia, Descrizione;
};

// One search in TbCountry, and in TbProvincie; nullopt when there is none of this code.
std::optional<CountryPlace> FindCountry(Session& session, std::string_view code);
std::optional<ProvincePlace> FindProvince(Session& session, std::string_view country,
                                          std::string_view code);

// Where the country of a call lies, by its prefix; empty when nobody knows.
std::string LocatorOfCall(Session& session, std::string_view call);

// A country as screens show it: code in five characters, then the description.
std::string TextOf(const CountryPlace& country);
// The same of a code; empty when there is none.
std::string FindCountryText(Session& session, std::string_view code);
// A province of a country likewise, its code in four characters.
std::string FindProvinceText(Session& session, std::string_view country, std::string_view code);

}  // namespace brenvo::core
