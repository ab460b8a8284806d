// Which time the log is kept in, and the way between it and UTC.
#pragma once

#include <string>

#include "base/date.h"
#include "core/session.h"

namespace brenvo::core {

// A moment in UTC as the station's local time, in the zone that the operator has chosen.
base::DateTime LocalOfUtc(Session& session, base::DateTime utc);

// Both times of now, as the main frame shows them.
std::string ClocksText(Session& session, bool withSeconds);

}  // namespace brenvo::core
