// What the operator looks for among the stations that are heard, in his own order.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "worked/worked_index.h"

namespace brenvo::digital {

// "Country banda conferma!": what may be new, on the band, in the group of modes, both or ever;
// worked or, with "conferma", confirmed; with a sound.
struct Need {
  worked::Kind kind = worked::Kind::kCountry;
  bool onBand = false, inMode = false, confirmed = false, sounds = false;
  std::string words;  // without the sign of the sound
  friend bool operator==(const Need&, const Need&) = default;
};

// Needs with commas between, the first one counting most. At least one; no more than kMostNeeds.
struct ParsedNeeds {
  std::vector<Need> needs;
  std::string fault;  // Italian; empty when all was understood
};
inline constexpr std::size_t kMostNeeds = 20;
ParsedNeeds ParseNeeds(std::string_view text);

// A station as it is heard. A text that is empty and a zone 0 are not known, and no need.
struct Heard {
  std::string_view call, prefisso, country, continente, provincia, locator;
  double zonaCQ = 0, zonaITU = 0;
  std::string_view banda, modo;  // as contacts have them
};

// The place of the first need that the station meets; nothing when it meets none.
std::optional<std::size_t> FirstNeed(const std::vector<Need>& needs,
                                     const worked::WorkedIndex& index, const Heard& heard);

}  // namespace brenvo::digital
