// Tags in the notes of contacts: the operator's own, "[DCI/MI001/Castello Sforzesco]", and the
// satellite's.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace brenvo::core {

// The words that a selection looks for in the notes: what stands between "Note LIKE '*" and the
// next "*". Empty when the selection does not ask for a note.
std::string NoteWords(std::string_view selection);

// The piece of a note from the first `words` up to, not including, the next "]"; the words are
// found without regard to case, as the selection finds them. Nothing when the words or the bracket
// are missing.
std::optional<std::string> NoteTag(std::string_view note, std::string_view words);

// The satellite's shorthand in a note, "[AO-7/B/SSB]", as pieces of the note; all empty when the
// note is none.
struct SatelliteNote {
  std::string_view satellite, satelliteMode, mode;
};
SatelliteNote ParseSatelliteNote(std::string_view note);

}  // namespace brenvo::core
