// What a recording device refuses.
#pragma once

#include <string>

namespace brenvo::recorder {

// Something happened that the test or script did not foresee. No std::exception, so that no
// handler of the program takes it for a failure of its own.
struct Refused {
  std::string reason;
};

}  // namespace brenvo::recorder
