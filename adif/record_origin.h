// Whose contact a record is, and its name: read from a log file, and written into one.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "adif/adif_reader.h"
#include "core/contact_door.h"
#include "core/session.h"
#include "core/stations.h"
#include "names_told.h"

namespace brenvo::adif {

// What a station says of itself in the standard's fields; nothing of one without a call.
std::vector<AdifField> FieldsOfStation(const core::StationRow& station);

// This program's own field for a contact's name.
inline constexpr std::string_view kUuidField = "APP_BRENVO_UUID";

// The fields of the log's contacts that tell whose they are, and their names.
class ContactOrigins {
 public:
  explicit ContactOrigins(engine::Database& database) : database_(database) {}
  // In the order of the numbers; nothing of a contact that has none.
  std::vector<std::vector<AdifField>> OfEach(std::span<const std::int64_t> keys);

 private:
  const std::vector<AdifField>& OfStation(std::int64_t station);

  engine::Database& database_;
  std::map<std::int64_t, std::vector<AdifField>> byStation_;
};

// The stations of the records of a file: those that the log knows, and new ones.
class RecordOrigins {
 public:
  explicit RecordOrigins(core::Session& session) : session_(session) {}

  // The station that the record names, stored when the log has none like it; what the record does
  // not say of it is as on that day where the call is the same. 0, the current one, for a record
  // that names none.
  std::int64_t StationOf(const AdifRecord& record, base::DateTime time);
  // The record's own name for the contact; empty where it has none, or the log another contact of
  // that name.
  std::string UuidOf(const AdifRecord& record);
  // The log has no contacts but those of these records, which need no question for their names.
  void LogIsEmpty() { told_.emplace(); }

 private:
  bool IsTaken(const std::string& uuid);
  const core::StationRow& StationOn(base::DateTime day);

  core::Session& session_;
  std::map<base::DateTime, core::StationRow> byDay_;
  std::map<std::pair<std::int64_t, std::string>, std::int64_t> byFields_;
  std::optional<NamesTold> told_;
};

}  // namespace brenvo::adif
