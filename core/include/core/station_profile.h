// What the station says of itself: the one row of User, and the bands of UserRTX.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "engine/value.h"

namespace brenvo::core {

class Session;

// The call of a profile that nobody has filled in.
inline constexpr std::string_view kDeliveredCall = "I0XXX";

// A column of User as text, empty for Null.
std::string ProfileText(Session& session, std::string_view column);

struct BandProfile {
  std::string RST, Modo, RTX, Antenna;
  engine::Value Frequenza, Potenza;  // MHz, W
};
// Nullopt for a band that the station does not use.
std::optional<BandProfile> FindBandProfile(Session& session, std::string_view band);

}  // namespace brenvo::core
