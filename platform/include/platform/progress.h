// Long work that the operator can watch and stop.
#pragma once

#include <cstdint>

namespace brenvo::platform {

// Shown while it lives.
class Progress {
 public:
  virtual ~Progress() = default;
  // `done` of the total that was told, any value where there is none; false when the operator has
  // asked to stop. May be called very often: most times it looks at the clock and no more. No
  // window of the program paints or runs meanwhile, so that a statement may be in work.
  [[nodiscard]] virtual bool Advance(std::int64_t done) = 0;
};

}  // namespace brenvo::platform
