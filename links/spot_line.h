// Cutting the line in which a cluster tells of a station on the air.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "base/units.h"

namespace brenvo::links {

// What a spot line says. No column is assumed: the first colon and the blanks part the fields.
struct SpotLine {
  // From the seventh character up to the frequency: the spotter's call, the colon, the blanks.
  std::string Spotter;
  // 0 when the field holds no number. Only its first character counts when no blank follows it.
  base::Khz SpotFrequenza;
  // Nothing when the call is the last word of the line.
  std::optional<std::string> SpotCall;
};

// True for a line, in upper case, that begins "DX DE".
bool BeginsAsSpot(std::string_view line);

// Cuts such a line; nothing when it holds no colon. Any text will do.
std::optional<SpotLine> CutSpotLine(std::string_view line);

// The spot of a terminal's text that the character at `place` stands in; the last one of the text
// where that is none. Nothing where there is none at all.
struct SpotInText {
  SpotLine spot;
  std::string modo;  // that its comment names; empty for none
};
std::optional<SpotInText> FindSpot(std::string_view text, std::size_t place);

}  // namespace brenvo::links
