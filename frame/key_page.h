// All keys on one page, to hang beside the station.
#pragma once

#include <span>

#include "frame/keys.h"
#include "platform/printer.h"

namespace brenvo::frame {

// A page that stands, a block a window in columns as small as it takes; what many windows have
// alike stands once. How many keys there are. DeviceError as the printer has it.
int PrintKeys(std::span<const KeyOwner> owners, platform::Printer& printer);

}  // namespace brenvo::frame
