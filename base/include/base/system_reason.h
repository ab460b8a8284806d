// Why the system refuses something, in the operator's language.
#pragma once

#include <string>
#include <system_error>

namespace brenvo::base {

// "permesso negato": what stands behind a colon or in brackets. A reason that an operator never
// meets is in the system's own words.
std::string ReasonText(const std::error_code& why);

}  // namespace brenvo::base
