// The whole station: every window known by name, every command in its place.
#pragma once

#include "core/session.h"
#include "frame/main_frame.h"

namespace brenvo::station {

// Makes all windows known to the session, opens the main frame and shows it. A start that fails
// is reported in a critical box that says what is missing, and gives nullptr.
frame::MainFrame* StartStation(core::Session& session);

// Closes the main frame as its close button does; false when a window refuses.
bool StopStation(core::Session& session);

}  // namespace brenvo::station
