// Numbers, dates and times as log files write them, and as some programs write them all the same.
#pragma once

#include <optional>
#include <string_view>

#include "base/date.h"

namespace brenvo::adif {

// From 0 on, with a point or a comma; a unit may follow ("100 W").
std::optional<double> NumberIn(std::string_view text);
std::optional<int> WholeIn(std::string_view text, int least, int most);
// From the year 100 on: "20010203", also with "-", "/" or "." between its parts.
std::optional<base::DateTime> DateIn(std::string_view text);
// "1015" or "101530", also with ":" or "." between and without a leading 0: the time since
// midnight.
std::optional<base::DateTime> TimeIn(std::string_view text);

}  // namespace brenvo::adif
