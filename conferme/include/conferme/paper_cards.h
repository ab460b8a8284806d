// Cards that a log file tells of: paper, where the operator says that they are.
#pragma once

#include <cstdint>
#include <string_view>

#include "conferme/report.h"
#include "core/session.h"

namespace brenvo::conferme {

// The contacts that Report::cards mean for sure, and that no card has confirmed yet, have got one
// by that way on that day; one work that can be taken back. Gives how many.
std::int64_t TakeCards(core::Session& session, std::string_view title, const Report& report);

}  // namespace brenvo::conferme
