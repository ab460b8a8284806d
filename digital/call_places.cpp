#include "call_places.h"

#include "base/text.h"
#include "core/prefix.h"
#include "core/session.h"

namespace brenvo::digital {

void CallPlaces::Read(core::Session& session) {
  byPrefix_.clear();
  std::unordered_map<std::string, std::string> titles;
  const auto countries = session.Db.OpenSnapshot("Select Country,Descrizione from Country");
  for (; !countries->EOF_(); countries->MoveNext()) {
    titles.emplace(base::Trim(countries->Field(std::size_t{0}).Text()),
                   base::Trim(countries->Field(1).Text()));
  }
  // Of several rows of a prefix the first one that has a zone counts, in the order of the key.
  const auto rows = session.Db.OpenSnapshot(
      "Select Prefisso,Country,Continente,[Zona CQ],[Zona ITU] from Prefissi "
      "Order By Prefisso,[Zona CQ],[Zona ITU],Continente");
  for (; !rows->EOF_(); rows->MoveNext()) {
    if (rows->Field(3).IsNull() || rows->Field(3).Number() < 0) continue;
    CallPlace place;
    place.Prefisso = rows->Field(std::size_t{0}).Text();
    place.Country = rows->Field(1).Text();
    place.Continente = rows->Field(2).Text();
    place.ZonaCQ = rows->Field(3).Number();
    place.ZonaITU = rows->Field(4).Number();
    if (const auto title = titles.find(base::Trim(place.Country)); title != titles.end()) {
      place.title = title->second;
    }
    byPrefix_.try_emplace(place.Prefisso, place);
  }
}

const CallPlace* CallPlaces::Of(std::string_view call, base::DateTime /*day*/) const {
  const auto found = byPrefix_.find(core::PrefixCandidate(call));
  return found == byPrefix_.end() ? nullptr : &found->second;
}

}  // namespace brenvo::digital
