// The words that log files use for bands, modes and propagations, and the fields of the standard.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "base/units.h"

namespace brenvo::adif {

struct AdifBand {
  std::string_view name;  // "20m"
  double lower, upper;    // MHz
};
// By name, case aside; null when there is none.
const AdifBand* FindAdifBand(std::string_view name);
// The band that holds a frequency, its edges included; null for none.
const AdifBand* AdifBandAt(base::Mhz frequency);

// A mode as log files write it; the submode is empty for a mode alone.
struct AdifMode {
  std::string mode, submode;
  friend bool operator==(const AdifMode&, const AdifMode&) = default;
};
// The mode that a word stands for, as a mode or as a submode; nothing when the standard has
// neither.
std::optional<AdifMode> FindAdifMode(std::string_view word);
// The words of this program that stand for a mode under another name: "Hellschreiber" is HELL.
std::string_view AdifWordOf(std::string_view mode);  // the word itself where there is no other
std::string_view ModeOfAdifWord(std::string_view word);

// "ES" is "E sporadico". Empty when there is none; several words may stand for one propagation.
std::string_view PropagationOf(std::string_view adif);
std::string_view AdifPropagationOf(std::string_view propagation);

bool IsAdifContinent(std::string_view text);

// Whether the standard knows a field of this name (upper case) in a contact.
bool IsAdifField(std::string_view name);
// Fields that a program made for itself: "APP_...".
bool IsApplicationField(std::string_view name);

}  // namespace brenvo::adif
