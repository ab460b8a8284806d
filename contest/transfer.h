// Contacts of a contest on their way into the station's log.
#pragma once

#include <string_view>

namespace brenvo::core {
class Session;
}

namespace brenvo::contest {

// True when contacts of the contest bear the mark InLog.
bool HasContactsForLog(core::Session& session, std::string_view date, std::string_view band);

// Puts the marked contacts into Log and clears their marks, all in one transaction: a failure (a
// contact that the log holds already, a contest without its header, a day that its month does not
// have) leaves log and marks as they were.
void TransferToLog(core::Session& session, std::string_view date, std::string_view band);

}  // namespace brenvo::contest
