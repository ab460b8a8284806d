// A record of a log file as a contact of Log.
#pragma once

#include <string>
#include <vector>

#include "adif/adif_reader.h"
#include "adif/station_tables.h"
#include "core/log_contact.h"

namespace brenvo::adif {

// What counts as QslRicevuta.
struct QslChoice {
  bool card = true, lotw = false, eqsl = false;
};

struct MappedRecord {
  core::LogContact contact;
  // What the columns do not hold, each name once: fields without a column, and those whose own
  // words the column's value does not give back.
  std::vector<AdifField> kept;
  // The number of the country that the record tells, 0 for none; nothing where it tells none.
  std::optional<int> country;
  // The rule that has given the country, where it is not the table of prefixes, nor the record.
  std::optional<core::AppliedRule> applied;
  std::string refusal;  // Italian; empty when the contact can be stored
};

// Fills `mapped` but for what is kept beside. Where the record is silent the prefix comes from the
// prefix table, and country, zones and continent from who the call was on that day, from the prefix
// table where nobody knows; the band from the frequency and the frequency from the
// band, the distance from the locators.
void MapColumns(const AdifRecord& record, const QslChoice& choice, StationTables& tables,
                MappedRecord& mapped);
// The same of the fields of a record that was read without a fault or a repair.
void MapColumns(const std::vector<AdifField>& fields, const QslChoice& choice,
                StationTables& tables, MappedRecord& mapped);
// Fills `kept` by what the record says and `told`, the fields that mapped.contact goes out as, does
// not.
void MapRest(const AdifRecord& record, const std::vector<AdifField>& told, MappedRecord& mapped);

// Whether call, date and time are there and right, without which there is no contact.
bool TellsWhoAndWhen(const std::vector<AdifField>& fields);

// Whether the columns of Log hold what a field of this name says.
bool IsColumnField(std::string_view name);
// Whether a field of the columns has a value that the standard allows.
bool IsValidColumnField(const AdifField& field);

inline constexpr std::string_view kSatellite = "Satellite";  // as a mode and as a propagation

// A kept field whose own name would not be valid, or would not bring its text over.
inline constexpr std::string_view kKeptPrefix = "APP_BRENVO_KEPT_";

}  // namespace brenvo::adif
