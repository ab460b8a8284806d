// Contacts as programs of digital modes tell of them, as records of a log file.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "adif/adif_reader.h"
#include "base/date.h"
#include "core/log_time.h"
#include "digital/datagrams.h"

namespace brenvo::digital {

// What a contact of type 5 says, in UTC. A program of `isJtdx` marks UTC as local time; any other's
// local time is that of `local`.
adif::AdifRecord RecordOf(const QsoLogged& logged, bool isJtdx, const core::LocalTime& local);

// The records of a log file's text that can be trusted and name a call.
std::vector<adif::AdifRecord> RecordsIn(std::string_view adif);

// What both say of one contact: `record`, with the letters of `told` and with what it tells beside.
adif::AdifRecord Merged(const adif::AdifRecord& record, const adif::AdifRecord& told);

// Whether both tell of the same contact: call, band, mode, and the start within two seconds.
bool IsSameContact(const adif::AdifRecord& a, const adif::AdifRecord& b);

// The name by which the log knows a contact that a program told of (core/contact_origin.h), the
// same whoever tells of it; then those that the same contact has by another second. Empty for a
// record without a call or a date.
std::vector<std::string> NamesOf(const adif::AdifRecord& record);

}  // namespace brenvo::digital
