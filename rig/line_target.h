// From what the operator has chosen to where the line leads.
#pragma once

#include "hamlib_line.h"
#include "rig/set_up.h"

namespace brenvo::rig {

LineTarget TargetOf(core::Session& session, const DeviceKind& kind, const SetUp& setUp);

}  // namespace brenvo::rig
