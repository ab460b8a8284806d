#include "core/station_profile.h"

#include "core/log_contact.h"
#include "core/session.h"
#include "core/texts.h"

namespace brenvo::core {

std::string ProfileText(Session& session, std::string_view column) {
  session.Tables.TbUser->MoveFirst();
  return FieldText(*session.Tables.TbUser, column);
}

std::optional<BandProfile> FindBandProfile(Session& session, std::string_view band) {
  engine::Table& row = *session.Tables.TbUserRTX;
  row.Seek("=", {band});
  if (row.NoMatch()) return std::nullopt;
  return BandProfile{FieldText(row, "RST"),     FieldText(row, "Modo"), FieldText(row, "RTX"),
                     FieldText(row, "Antenna"), row.Field("Frequenza"), row.Field("Potenza")};
}

}  // namespace brenvo::core
