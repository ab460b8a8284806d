// Club Log's matches: contacts that stand in the other station's log too, as JSON.
#pragma once

#include <string_view>

#include "conferme/report.h"

namespace brenvo::conferme {

// Rows by name ({"call":..., "date":..., "band":..., "mode":...}) or without names, told apart by
// what they look like. Throws ReportError for what is no JSON, or no rows.
void ReadMatches(std::string_view text, Report& report);

}  // namespace brenvo::conferme
