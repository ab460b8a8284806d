// From a callsign to prefix, country, zones and continent.
#pragma once

#include <string>
#include <string_view>

#include "engine/recordset.h"

namespace brenvo::core {

class Session;

// The part of a call that can be a prefix: everything up to and including the first run of digits
// that begins at the second character or later. Empty when there is no such run or the call ends
// with it.
std::string PrefixCandidate(std::string_view call);

struct ResolvedPrefix {
  std::string Prefisso, Country;  // both empty when nothing is resolved
  engine::Value ZonaCQ, ZonaITU, Continente;
};
// One search in the prefix table; it stays on the row found, and nobody need read it there.
ResolvedPrefix ResolvePrefix(Session& session, std::string_view call);
ResolvedPrefix ResolvePrefix(engine::Table& prefissi, std::string_view call);

}  // namespace brenvo::core
