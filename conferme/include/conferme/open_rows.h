// What the window shows beside the records that have no contact.
#pragma once

#include <cstdint>
#include <vector>

#include "conferme/taking.h"
#include "core/session.h"

namespace brenvo::conferme {

inline constexpr std::size_t kMostContradictions = 5000;

// Contacts that a service has confirmed with another locator or zone than the log has, by number:
// as records of state X, the contact the only candidate, `why` what both say. No more than
// kMostContradictions.
std::vector<OpenRecord> Contradictions(core::Session& session);
// Contacts that a service does not take, as records of state R.
std::vector<OpenRecord> RefusedContacts(core::Session& session);

// The contacts to which a credit without one may belong, the likeliest first: of the same country,
// band and group of modes, those of its call before the others.
std::vector<std::int64_t> SimilarTo(core::Session& session, const ReportRecord& credit);

}  // namespace brenvo::conferme
