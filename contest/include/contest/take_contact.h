// A contact of another program in the log of a contest that is open.
#pragma once

#include "core/session.h"
#include "core/told_contact.h"

namespace brenvo::contest {

// Stores it in the open log of a contest of its band and days. False when there is none, when it
// lacks what a contact of a contest has (serials, locator), or when its serial is another one's.
// One that is there already is not stored again.
[[nodiscard]] bool TakeContact(core::Session& session, const core::ToldContact& told);

}  // namespace brenvo::contest
