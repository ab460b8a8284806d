#include "kept_services.h"

#include <algorithm>

namespace brenvo::worked {

void KeptServices::Note(std::int64_t qsoNr, ServiceSet services) {
  if (services == 0) return;
  if (IsShort(qsoNr)) {
    noted_.push_back(qsoNr << kServiceBits | services);
  } else {
    others_[qsoNr] |= services;
  }
}

void KeptServices::Settle() {
  if (!std::ranges::is_sorted(noted_)) std::ranges::sort(noted_);
  std::size_t kept = 0;
  for (const std::int64_t each : noted_) {
    if (kept > 0 && noted_[kept - 1] >> kServiceBits == each >> kServiceBits) {
      noted_[kept - 1] |= each;
    } else {
      noted_[kept++] = each;
    }
  }
  noted_.resize(kept);
  noted_.shrink_to_fit();
}

ServiceSet KeptServices::Of(std::int64_t qsoNr) const {
  if (!others_.empty()) {
    const auto found = others_.find(qsoNr);
    if (found != others_.end()) return found->second;
  }
  if (!IsShort(qsoNr)) return 0;
  const auto at = std::ranges::lower_bound(noted_, qsoNr << kServiceBits);
  if (at == noted_.end() || *at >> kServiceBits != qsoNr) return 0;
  return static_cast<ServiceSet>(*at & kAllServices);
}

void KeptServices::Set(std::int64_t qsoNr, ServiceSet services) {
  if (Of(qsoNr) != services) others_[qsoNr] = services;
}

std::size_t KeptServices::Bytes() const {
  constexpr std::size_t kNode = 4 * sizeof(void*);  // about, of the map
  return noted_.capacity() * sizeof(noted_[0]) + others_.size() * kNode;
}

}  // namespace brenvo::worked
