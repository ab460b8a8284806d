// A contact of a list, brought to the log.
#pragma once

#include <cstdint>

#include "core/session.h"

namespace brenvo::core {

// Opens the log window where none is open, puts it in front, and shows the contact there, alone.
void OpenInLog(Session& session, std::int64_t qsoNr);

}  // namespace brenvo::core
