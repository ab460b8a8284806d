// Which windows are open, saved and opened again in one command.
#pragma once

namespace brenvo::core {
class Session;
}

namespace brenvo::frame {

// Writes a token of five characters for each kind of window that is open, and into a list of its
// own the names of the windows that came behind these.
void SaveDesktop(core::Session& session);
// Shows the single default window of each token and name; an unknown one is passed over.
void LoadDesktop(core::Session& session);

}  // namespace brenvo::frame
