// The tags of the selected contacts' notes, staged in table SNote for the custom award.
#pragma once

#include <string>
#include <string_view>

namespace brenvo::core {
class Session;
}

namespace brenvo::awards {

// Fills SNote with one row a contact of the selection, its note cut down to the tag that the
// selection asks for; contacts whose note does not close the tag are left out. Returns the words
// asked for. A failure throws and leaves SNote empty.
std::string StageNotes(core::Session& session, std::string_view selection);

}  // namespace brenvo::awards
