#include "core/place_on_day.h"

#include "base/text.h"
#include "core/session.h"

namespace brenvo::core {

CallPlace PlaceOnDay(const CallPlace& byTable, const entities::Answer& day) {
  if (day.reason == entities::Reason::kUnknown) return byTable;
  CallPlace place;
  place.Prefisso = byTable.Prefisso;
  if (day.what == nullptr) return place;
  place.Country = day.what->country;
  place.Continente = day.continent;
  place.ZonaCQ = day.cq;
  place.ZonaITU = day.itu;
  return place;
}

std::string OtherOnDay(Session& session, std::string_view call, base::DateTime utc,
                       std::string_view country) {
  const entities::Answer answer = session.ByDate.Of(call, utc);
  const std::string_view there =
      answer.what == nullptr ? std::string_view() : std::string_view(answer.what->country);
  if (answer.reason == entities::Reason::kUnknown || base::SameText(there, base::Trim(country))) {
    return {};
  }
  return entities::Explanation(call, answer);
}

}  // namespace brenvo::core
