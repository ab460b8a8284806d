// From the notes' bracketed shorthand to the propagation.
#pragma once

namespace brenvo::core {
class Session;
}

namespace brenvo::log {

// In every contact of the log, the first token found in the note ("[E.S.]", "[F2]", "[M.S.]",
// "[T.E.P.]", looked for in this order) becomes the propagation and leaves the note. One token a
// run: a note with two gives up the second at the next run, which then wins.
void AssignPropagations(core::Session& session);

}  // namespace brenvo::log
