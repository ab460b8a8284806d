// The cards of a contact (core/qsl_cards.h) as fields of a log file: those of the standard, which
// tell of one card sent and one received, and this program's own ones for all that they cannot say.
#pragma once

#include <vector>

#include "adif/adif_reader.h"
#include "core/log_contact.h"
#include "core/qsl_cards.h"

namespace brenvo::adif {

// The cards that a record tells of, as far as its contact was sent one or has got one. The fields
// that say nothing else leave `kept`, those that the contact would keep; what is no day or no way
// stays there, with the other one.
core::ContactCards TakeCards(const AdifRecord& record, const core::LogContact& contact,
                             std::vector<AdifField>& kept);

// The fields in which they go out. `kept`, which the contact keeps, loses what these say better.
std::vector<AdifField> CardFields(const core::ContactCards& cards, const core::LogContact& contact,
                                  std::vector<AdifField>& kept);

}  // namespace brenvo::adif
