// Which contacts a selection takes, as an operator says it.
#pragma once

#include <string>
#include <string_view>

#include "core/session.h"

namespace brenvo::awards {

// "20 m, SSB, tutte le propagazioni, dal 01/02/2001", of a clause as the selection of statistics
// writes it, or of an empty one. A condition of another kind stands as it is written.
std::string SelectionInWords(core::Session& session, std::string_view where);

}  // namespace brenvo::awards
