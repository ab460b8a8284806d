#include "core/places.h"

#include "base/text.h"
#include "core/prefix.h"
#include "core/session.h"
#include "core/texts.h"
#include "geo/locator.h"

namespace brenvo::core {

std::optional<CountryPlace> FindCountry(Session& session, std::string_view code) {
  engine::Table& row = *session.Tables.TbCountry;
  row.Seek("=", {code});
  if (row.NoMatch()) return std::nullopt;
  return CountryPlace{FieldText(row, "Country"), FieldText(row, "Descrizione"),
                      FieldText(row, "Mappa"),   FieldText(row, "Flag"),
                      FieldText(row, "Locator"), row.Field("Pointer_X"),
                      row.Field("Pointer_Y")};
}

std::optional<ProvincePlace> FindProvince(Session& session, std::string_view country,
                                          std::string_view code) {
  engine::Table& row = *session.Tables.TbProvincie;
  row.Seek("=", {country, code});
  if (row.NoMatch()) return std::nullopt;
  return ProvincePlace{FieldText(row, "Provincia"), FieldText(row, "Descrizione")};
}

std::string LocatorOfCall(Session& session, std::string_view call) {
  const ResolvedPrefix prefix = ResolvePrefix(session, call);
  const auto country = prefix.Country.empty() ? std::nullopt : FindCountry(session, prefix.Country);
  return country && geo::IsValidLocator(country->Locator) ? country->Locator : std::string();
}

std::string TextOf(const CountryPlace& country) {
  return base::PadRight(country.Country, 5) + country.Descrizione;
}

std::string FindCountryText(Session& session, std::string_view code) {
  const auto country = FindCountry(session, code);
  return country ? TextOf(*country) : std::string();
}

std::string FindProvinceText(Session& session, std::string_view country, std::string_view code) {
  const auto province = FindProvince(session, country, code);
  return province ? base::PadRight(province->Provincia, 4) + province->Descrizione : std::string();
}

}  // namespace brenvo::core
