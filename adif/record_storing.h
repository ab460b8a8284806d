// What an import and a single record that is stored have in common.
#pragma once

#include <vector>

#include "adif/record_to_contact.h"
#include "base/date.h"
#include "core/log_contact.h"

namespace brenvo::adif {

// A time that the record has not told as it is stored is kept as it was, in UTC.
void KeepTime(MappedRecord& mapped, base::DateTime told);

// By whom a new contact has its country, into rows of EntitaQso.
void KeepEntity(engine::RowAppender& rows, std::int64_t qsoNr, const MappedRecord& mapped);

// The columns that are empty in `present` and that `contact` can fill.
std::vector<const core::LogColumn*> ColumnsToFill(const core::LogContact& present,
                                                  const core::LogContact& contact);

}  // namespace brenvo::adif
