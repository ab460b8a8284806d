// A contact's own name, and whose contact it was: table LogOrigine. What is kept there of a contact
// that is deleted stays until the compaction: its number is not given again, and it may come back.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "base/date.h"
#include "engine/database.h"

namespace brenvo::core {

struct ContactOrigin {
  std::string uuid;
  std::int64_t station = 0;  // of Stazioni
  friend bool operator==(const ContactOrigin&, const ContactOrigin&) = default;
};

// Nothing for a contact that another program wrote and nobody has found yet.
std::optional<ContactOrigin> OriginOf(engine::Database& database, std::int64_t qsoNr);

// The name of a contact that was given none at its birth: the same wherever it is worked out.
std::string DerivedName(std::string_view ownCall, std::string_view call, base::DateTime time,
                        std::string_view band, std::string_view mode);

// The contacts of the log that have no origin, as those have that another program wrote.
std::int64_t ContactsWithoutOrigin(engine::Database& database);
// Gives them their derived names and their stations, by their days, a transaction for some
// thousands each; `tell` hears how many have them. Gives how many there were. No transaction may be
// open. It is no work of the history: taken back, it would take contacts away that nobody brought.
std::int64_t AdoptContacts(engine::Database& database,
                           const std::function<void(std::int64_t done)>& tell);

}  // namespace brenvo::core
