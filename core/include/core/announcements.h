// That contacts have changed in the file, told to whatever shows them.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <variant>
#include <vector>

#include "forms/window_list.h"

namespace brenvo::core {

enum class ContactTable { kLog, kContestQso };

// One contact by its key, the number of its row: nothing before for a new one, nothing after for
// one that is gone.
struct OneContact {
  std::optional<std::int64_t> before, after;
  friend bool operator==(const OneContact&, const OneContact&) = default;
};
// Any number of contacts, whichever they are.
struct ManyContacts {
  friend bool operator==(const ManyContacts&, const ManyContacts&) = default;
};

// What has been stored by now.
struct ContactsChanged {
  ContactTable table = ContactTable::kLog;
  std::variant<OneContact, ManyContacts> which;
  bool Many() const { return std::holds_alternative<ManyContacts>(which); }
  friend bool operator==(const ContactsChanged&, const ContactsChanged&) = default;
};

using ContactListener = std::function<void(const ContactsChanged&)>;

// Listens while it lives.
class ContactSubscription {
 public:
  ContactSubscription() = default;

 private:
  friend class Announcements;
  explicit ContactSubscription(std::shared_ptr<ContactListener> listener)
      : listener_(std::move(listener)) {}
  std::shared_ptr<ContactListener> listener_;
};

class Announcements {
 public:
  explicit Announcements(forms::WindowList& windows) : windows_(windows) {}

  [[nodiscard]] ContactSubscription Subscribe(ContactListener listener);
  // Tells each listener in the order of subscription, as an event of its own: one that fails is
  // told to the operator and keeps nothing from the others. Call it when the change is committed.
  // One who subscribes meanwhile is not told of this change, one who goes meanwhile no more.
  void Announce(const ContactsChanged& change);
  void AnnounceMany(ContactTable table) { Announce({table, ManyContacts()}); }

 private:
  forms::WindowList& windows_;
  std::vector<std::weak_ptr<ContactListener>> listeners_;
};

}  // namespace brenvo::core
