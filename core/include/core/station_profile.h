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

// The report that a mode begins with: the profile's where it is the profile's mode of that band,
// else 59 for a voice, 599 where the tone counts, and nothing for a mode whose reports are
// measured.
std::string UsualReport(std::string_view mode, const std::optional<BandProfile>& profile);

}  // namespace brenvo::core
