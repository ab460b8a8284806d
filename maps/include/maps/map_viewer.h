// The map behind the main frame: which one is shown, where its pointer stands, and its commands.
#pragma once

#include "core/session.h"
#include "frame/main_frame.h"

namespace brenvo::maps {

// Hangs the menu "Mappa", the map's door and the operator's rectangle into the frame.
void AttachMapViewer(core::Session& session, frame::MainFrame& frame);

// Shows MapFile with the pointer, then the overlay whose word begins `request`.
void DisplayMappa(core::Session& session, frame::MainFrame& frame, std::string_view request);

// Shows an image of that file name at zoom 100, unless it is shown already, and the session's
// pointer on it; a pointer out of view comes to the middle. Whatever fails ends this without a
// word, and what was shown stays.
void ShowMapImage(core::Session& session, std::string_view fileName);

}  // namespace brenvo::maps
