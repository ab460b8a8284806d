// Marks the cards that were printed as sent.
#pragma once

namespace brenvo::core {
class Session;
}

namespace brenvo::print {

// Asks, then marks cards owed as sent and cards received as answered, in one transaction.
void UpdateLogForQsl(core::Session& session);

}  // namespace brenvo::print
