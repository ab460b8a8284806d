// What whoever shows contacts is told of: that some have changed in the file.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <variant>

#include "core/log_contact.h"

namespace brenvo::core {

enum class ContactTable { kLog, kContestQso };

// A contact by its key, the number of its row, with what stands there; of a contest's contact the
// key alone.
struct StoredContact {
  std::int64_t key = 0;
  LogContact contact;
  friend bool operator==(const StoredContact&, const StoredContact&) = default;
};
// One contact: nothing before for a new one, nothing after for one that is gone.
struct OneContact {
  std::optional<StoredContact> before, after;
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

}  // namespace brenvo::core
