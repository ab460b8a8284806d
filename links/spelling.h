// Callsigns by voice, a wave file a character.
#pragma once

#include <functional>
#include <string_view>

#include "core/session.h"

namespace brenvo::links {

// Plays a file of the application directory, named as the system writes it ("\pause.wav",
// "\:.wav"), and waits until it has ended. A file or a device that is missing is silent.
void PlayWave(const core::Session& session, platform::WavePlayer& player, std::string_view name);

// Hands out the names of the files that spell a call, one after the other: "\stroke.wav" for a
// slash, and a file named by the character for any other one. A "-" ends it: a node's number is
// not spoken.
void SpellCall(std::string_view call, const std::function<void(std::string_view name)>& play);

inline constexpr std::string_view kStrokeWave = "\\stroke.wav";
inline constexpr std::string_view kPauseWave = "\\pause.wav";

}  // namespace brenvo::links
