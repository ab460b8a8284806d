// A contact of Log as the fields of a log file.
#pragma once

#include <vector>

#include "adif/adif_reader.h"
#include "adif/adif_writer.h"
#include "adif/station_tables.h"
#include "core/log_contact.h"

namespace brenvo::adif {

// What the columns say in the standard's own words, in the order of the file. Columns that it has
// no words for are left out.
std::vector<AdifField> ColumnFields(const core::LogContact& contact, const StationTables& tables);

// The same with the fields kept beside the contact, with those of its station and its name where it
// has none kept that say so, and with this program's own fields where a
// reader of the rest would not find the very same columns again. Empty when the contact has no
// call or date that a log file can hold.
std::vector<AdifField> FileFields(const core::LogContact& contact, std::vector<AdifField> kept,
                                  std::vector<AdifField> origin, StationTables& tables,
                                  AdifLetters letters);

}  // namespace brenvo::adif
