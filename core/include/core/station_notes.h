// What the operator has noted about other stations: table NoteStazioni. A note belongs to all forms
// of a call (call_forms.h).
#pragma once

#include <string>
#include <string_view>

#include "engine/database.h"

namespace brenvo::core {

// Empty where nothing was noted.
std::string StationNote(engine::Database& database, std::string_view call);
// An empty note is none. Nothing happens without a call.
void StoreStationNote(engine::Database& database, std::string_view call, std::string_view note);

}  // namespace brenvo::core
