// One record into Log, as an import would store it, while the station works.
#pragma once

#include <cstdint>
#include <set>
#include <string>
#include <string_view>

#include "adif/adif_reader.h"
#include "core/log_contact.h"
#include "core/session.h"

namespace brenvo::adif {

struct StoredRecord {
  enum class Kind { kNew, kRepeated, kRefused } kind = Kind::kRefused;
  std::int64_t qsoNr = 0;    // of the new contact, or the one that it repeats
  core::LogContact contact;  // as it was stored, or would have been
  bool completed = false;    // the repeated one had columns to fill
  std::string refusal;       // Italian
};

// Stores the contact under that name (contact_origin.h), empty for one of its own, with what its
// columns cannot hold beside it, and with its station; announces it as one. One that the log has is
// completed where its columns are empty. A band that the profile lacks gets its row. DatabaseError
// when it cannot be stored by now.
StoredRecord StoreRecord(core::Session& session, const AdifRecord& record, std::string_view name);

// The same for one that is known to be the contact of this number: completes it, and nothing more.
StoredRecord CompleteFromRecord(core::Session& session, const AdifRecord& record,
                                std::int64_t qsoNr);

// Gives the profile rows of these bands, with the frequencies that the standard knows, as far as it
// lacks them.
void AddMissingBands(core::Session& session, const std::set<std::string>& bands);

}  // namespace brenvo::adif
