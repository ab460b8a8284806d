// A made-up station: its profile, some years of contacts, a contest. For pictures, measurements and
// trying things; nothing in it is a real person.
#pragma once

namespace brenvo::core {
class Session;
}

namespace brenvo::demonstration {

// Fills an open session's database. The same number gives the same log each time; contacts end in
// November 2025.
void FillDemonstration(core::Session& session, int contacts);

}  // namespace brenvo::demonstration
