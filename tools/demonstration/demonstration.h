// A made-up station: its profile, some years of contacts, a contest. For pictures, measurements and
// trying things; nothing in it is a real person.
#pragma once

namespace brenvo {

class Session;

// Fills an open session's database. The same number gives the same log each time; contacts end in
// November 2025.
void FillDemonstration(Session& session, int contacts);

}  // namespace brenvo
