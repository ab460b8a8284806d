// What a device reports.
#pragma once

#include <stdexcept>

namespace brenvo::platform {

// A device that fails: a port that cannot be opened, a printer that is not there. What it says is
// for the operator, in Italian.
class DeviceError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

}  // namespace brenvo::platform
