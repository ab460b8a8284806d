// The columns of Log under this program's own names in a log file: the exact value of what the
// standard's fields do not give back.
#pragma once

#include <string>
#include <string_view>

#include "core/log_contact.h"

namespace brenvo::adif {

inline constexpr std::string_view kOwnFieldPrefix = "APP_BRENVO_";

// "APP_BRENVO_ZONACQ" for the column "Zona CQ".
const std::string& OwnField(const core::LogColumn& column);

}  // namespace brenvo::adif
