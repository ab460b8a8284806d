#include "call_places.h"

#include "base/text.h"
#include "core/prefix.h"
#include "core/session.h"

namespace brenvo::digital {

void CallPlaces::Read() {
  byPrefix_.clear();
  titles_.clear();
  const auto countries = session_.Db.OpenSnapshot("Select Country,Descrizione from Country");
  for (; !countries->EOF_(); countries->MoveNext()) {
    titles_.emplace(base::Trim(countries->Field(std::size_t{0}).Text()),
                    base::Trim(countries->Field(1).Text()));
  }
  // Of several rows of a prefix the first one that has a zone counts, in the order of the key.
  const auto rows = session_.Db.OpenSnapshot(
      "Select Prefisso,Country,Continente,[Zona CQ],[Zona ITU] from Prefissi "
      "Order By Prefisso,[Zona CQ],[Zona ITU],Continente");
  for (; !rows->EOF_(); rows->MoveNext()) {
    if (rows->Field(3).IsNull() || rows->Field(3).Number() < 0) continue;
    core::CallPlace place;
    place.Prefisso = rows->Field(std::size_t{0}).Text();
    place.Country = rows->Field(1).Text();
    place.Continente = rows->Field(2).Text();
    place.ZonaCQ = rows->Field(3).Number();
    place.ZonaITU = rows->Field(4).Number();
    byPrefix_.try_emplace(place.Prefisso, place);
  }
}

core::CallPlace CallPlaces::Of(std::string_view call, base::DateTime utc) const {
  const auto found = byPrefix_.find(core::PrefixCandidate(call));
  return core::PlaceOnDay(found == byPrefix_.end() ? core::CallPlace() : found->second,
                          session_.ByDate.Of(call, utc));
}

std::string CallPlaces::TitleOf(const std::string& country) const {
  const auto title = titles_.find(base::Trim(country));
  return title == titles_.end() || title->second.empty() ? base::Trim(country) : title->second;
}

}  // namespace brenvo::digital
