// The contacts behind an award entry or a matrix cell, shown in the log.
#pragma once

#include <string_view>

namespace brenvo::core {
class Session;
}

namespace brenvo::awards {

// Opens a log window when none is open.
void OpenLogIfNone(core::Session& session);

// Shows a SELECT on Log in the log window that opened last, and brings that window forward.
void ShowContacts(core::Session& session, std::string_view select);

}  // namespace brenvo::awards
