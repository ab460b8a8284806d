// How much of what has no end a test tries.
#pragma once

#include <cstdlib>

namespace brenvo {

// So much always, so much with BRENVO_THOROUGH set in the environment.
template <class Number>
Number Thoroughly(Number always, Number thorough) {
  return std::getenv("BRENVO_THOROUGH") != nullptr ? thorough : always;
}

}  // namespace brenvo
