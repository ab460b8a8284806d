#include "core/announcements.h"

#include <utility>

namespace brenvo::core {

ContactSubscription Announcements::Subscribe(ContactListener listener) {
  auto held = std::make_shared<ContactListener>(std::move(listener));
  listeners_.push_back(held);
  return ContactSubscription(std::move(held));
}

void Announcements::Announce(const ContactsChanged& change) {
  std::erase_if(listeners_, [](const auto& each) { return each.expired(); });
  for (const auto& each : std::vector(listeners_)) {
    // Held while it runs: it may well close its own window.
    if (const auto listener = each.lock()) {
      windows_.RunEvent([&] { (*listener)(change); });
    }
  }
}

}  // namespace brenvo::core
