// A contact that another program has made, for a contest's log.
#pragma once

#include <cstdint>
#include <string>

#include "base/date.h"

namespace brenvo::core {

struct ToldContact {
  base::DateTime time;  // as the log keeps it
  std::string call, locator, banda, modo, reportSent, reportReceived;
  std::int64_t serialSent = 0, serialReceived = 0;  // 0 where none was exchanged
};

}  // namespace brenvo::core
