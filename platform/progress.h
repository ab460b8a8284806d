// Long work that the operator can watch and stop.
#pragma once

#include <cstdint>

namespace brenvo {

// Shown while it lives.
class Progress {
 public:
  virtual ~Progress() = default;
  // `done` of the total that was told; false when the operator has asked to stop.
  [[nodiscard]] virtual bool Advance(std::int64_t done) = 0;
};

}  // namespace brenvo
