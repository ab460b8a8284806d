// Carrying a call or a locator to the worked-by-band screen.
#pragma once

#include <string_view>

#include "core/session.h"

namespace brenvo::links {

// Looks the call up in the log: opens Hrd if it is closed, and makes it search. Nothing when the
// station has no such window.
void ShowCheck(core::Session& session, std::string_view call);

// The same with a locator; one of fewer than six characters stands for all that begin with it.
void ShowLocatorCheck(core::Session& session, std::string_view locator);

}  // namespace brenvo::links
