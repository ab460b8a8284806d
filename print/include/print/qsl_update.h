// Marks the cards that were printed as sent.
#pragma once

namespace brenvo {

class Session;

// Asks, then marks cards owed as sent and cards received as answered, in one transaction.
void UpdateLogForQsl(Session& session);

}  // namespace brenvo
