// Which contacts are confirmed by what is kept of them beside the log, and by whom.
#pragma once

#include <cstddef>
#include <cstdint>
#include <unordered_map>
#include <vector>

#include "worked/rules.h"

namespace brenvo::worked {

class KeptServices {
 public:
  // What is found while the log is read, in any order; several finds of one contact add up.
  void Note(std::int64_t qsoNr, ServiceSet services);
  // All has been noted.
  void Settle();

  ServiceSet Of(std::int64_t qsoNr) const;
  void Set(std::int64_t qsoNr, ServiceSet services);
  std::size_t Bytes() const;

 private:
  // Eight bits of services behind the number, which so has 56.
  static constexpr int kServiceBits = 8;
  static bool IsShort(std::int64_t qsoNr) {
    return qsoNr >= 0 && qsoNr < std::int64_t{1} << (63 - kServiceBits);
  }

  std::vector<std::int64_t> noted_;                      // sorted once it is settled
  std::unordered_map<std::int64_t, ServiceSet> others_;  // these go before the noted ones
};

}  // namespace brenvo::worked
