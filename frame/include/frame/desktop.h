// Which windows are open, saved and opened again in one command.
#pragma once

namespace brenvo::core {
class Session;
}

namespace brenvo::frame {

// Writes a token of five characters for each kind of window that is open.
void SaveDesktop(core::Session& session);
// Shows the single default window of each token; an unknown token is passed over.
void LoadDesktop(core::Session& session);

}  // namespace brenvo::frame
