// The contacts behind an award entry or a matrix cell, shown in the log.
#pragma once

#include <string_view>

namespace brenvo {

class Session;

// Opens a log window when none is open.
void OpenLogIfNone(Session& session);

// Shows a SELECT on Log in the log window that opened last, and brings that window forward.
void ShowContacts(Session& session, std::string_view select);

}  // namespace brenvo
