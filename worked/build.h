// The index made from the log.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <stop_token>
#include <string_view>
#include <vector>

#include "core/log_contact.h"
#include "engine/database.h"
#include "kept_services.h"
#include "worked/worked_index.h"

namespace brenvo::worked {

// What has been read of a log.
struct Built {
  WorkedIndex index;
  KeptServices kept;
  // Contacts without a row in LogOrigine, as those have that another program wrote, and rows there
  // whose contacts are gone; both rising. None where there is no such table.
  std::vector<std::int64_t> withoutOrigin, withoutContact;
};

// Reads the whole log; nothing when it was stopped before the end. Throws DatabaseError.
std::optional<Built> BuildIndex(engine::Reader& reader, std::shared_ptr<const Rules> rules,
                                const std::stop_token& stop = {});

// The services that confirm a contact by what is kept of it beside the log.
ServiceSet ReadKeptServices(engine::Database& database, const Rules& rules, std::int64_t qsoNr);

// The views last as long as `contact`.
Contact ContactOf(const core::LogContact& contact, ServiceSet kept, const Rules& rules);

}  // namespace brenvo::worked
