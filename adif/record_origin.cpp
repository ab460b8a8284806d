#include "record_origin.h"

#include <fmt/format.h>

#include <cmath>

#include "adif/adif_values.h"
#include "adif/dxcc_entities.h"
#include "adif/station_tables.h"
#include "base/number.h"
#include "base/text.h"
#include "base/uuid.h"
#include "core/contact_origin.h"
#include "core/quoted.h"
#include "core/rows_beside.h"

namespace brenvo::adif {
namespace {

constexpr std::string_view kCall = "STATION_CALLSIGN", kLocator = "MY_GRIDSQUARE",
                           kCountry = "MY_DXCC", kAltitude = "MY_ALTITUDE";

struct TextField {
  std::string_view field;
  std::string core::StationRow::*member;
};
constexpr TextField kTexts[] = {
    {kCall, &core::StationRow::Call},       {"OPERATOR", &core::StationRow::Operatore},
    {kLocator, &core::StationRow::Locator}, {"MY_STATE", &core::StationRow::Provincia},
    {"MY_RIG", &core::StationRow::RTX},     {"MY_ANTENNA", &core::StationRow::Antenna}};

bool TellsOfStation(std::string_view name) {
  for (const TextField& each : kTexts) {
    if (each.field == name) return true;
  }
  return name == kCountry || name == kAltitude;
}

void Read(const AdifField& field, core::StationRow& station) {
  for (const TextField& each : kTexts) {
    if (each.field != field.name) continue;
    const bool isText =
        each.member == &core::StationRow::RTX || each.member == &core::StationRow::Antenna;
    const std::string value = isText ? field.value : base::UpperAscii(field.value);
    if (field.name == kLocator && !IsGridSquare(value)) return;
    station.*each.member = value;
  }
  if (field.name == kCountry) {
    const auto number = WholeIn(field.value, 1, 999);
    if (const DxccEntity* entity = number ? FindDxccEntity(*number) : nullptr) {
      station.Country = entity->country;
    }
  }
  if (field.name == kAltitude) {
    station.Altezza = std::round(NumberIn(field.value).value_or(station.Altezza));
  }
}

}  // namespace

std::vector<AdifField> FieldsOfStation(const core::StationRow& station) {
  // A station that nobody has named yet says nothing.
  if (station.Call.empty()) return {};
  std::vector<AdifField> fields;
  for (const TextField& each : kTexts) {
    const std::string& value = station.*each.member;
    if (value.empty() || (each.field == kLocator && !IsGridSquare(value))) continue;
    fields.push_back({std::string(each.field), value});
  }
  if (const DxccEntity* entity = FindDxccEntityOf(station.Country)) {
    fields.push_back({std::string(kCountry), std::to_string(entity->number)});
  }
  if (station.Altezza != 0) {
    fields.push_back({std::string(kAltitude), base::PlainNumber(station.Altezza)});
  }
  return fields;
}

const std::vector<AdifField>& ContactOrigins::OfStation(std::int64_t station) {
  const auto [at, isNew] = byStation_.try_emplace(station);
  if (isNew) {
    const auto found = core::FindStation(database_, station);
    if (found) at->second = FieldsOfStation(*found);
  }
  return at->second;
}

std::vector<std::vector<AdifField>> ContactOrigins::OfEach(std::span<const std::int64_t> keys) {
  std::vector<std::vector<AdifField>> origins(keys.size());
  core::SeeRowsBeside(database_, "LogOrigine", "Stazione,Uuid", keys,
                      [&](std::size_t place, engine::Recordset& row) {
                        origins[place] = OfStation(row.Field(1).Integer());
                        origins[place].push_back({std::string(kUuidField), row.Field(2).Text()});
                      });
  return origins;
}

const core::StationRow& RecordOrigins::StationOn(base::DateTime day) {
  const auto [at, isNew] = byDay_.try_emplace(day.DatePart());
  if (isNew) {
    at->second = core::FindStation(session_.Db, core::StationAt(session_.Db, day))
                     .value_or(core::StationRow());
  }
  return at->second;
}

std::int64_t RecordOrigins::StationOf(const AdifRecord& record, base::DateTime time) {
  std::string told;
  for (const AdifField& field : record.fields) {
    if (TellsOfStation(field.name) && !field.value.empty()) {
      told += fmt::format("{}={}\n", field.name, field.value);
    }
  }
  const core::StationRow& usual = StationOn(time);
  if (told.empty()) return usual.Stazione;
  const auto [at, isNew] = byFields_.try_emplace({usual.Stazione, told});
  if (!isNew) return at->second;
  const std::string* call = record.Find(kCall);
  const bool sameCall = call == nullptr || call->empty() || base::SameText(*call, usual.Call);
  core::StationRow station = sameCall ? usual : core::StationRow();
  for (const AdifField& field : record.fields) {
    if (!field.value.empty()) Read(field, station);
  }
  station.Stazione = 0;
  station.Nome = station.Call;
  station.Tipo = core::kStationOfFile;
  station.Dal.reset();
  station.Al.reset();
  return at->second = core::FindOrStoreStation(session_.Db, station);
}

bool RecordOrigins::IsTaken(const std::string& uuid) {
  if (told_) return !told_->Add(uuid);
  return !session_.Db
              .OpenSnapshot(fmt::format("Select QsoNr from LogOrigine where Uuid={} and QsoNr in "
                                        "(Select QsoNr from Log)",
                                        core::Quoted(uuid)))
              ->EOF_();
}

std::string RecordOrigins::UuidOf(const AdifRecord& record) {
  const std::string* uuid = record.Find(kUuidField);
  if (uuid == nullptr || !base::IsUuid(*uuid) || IsTaken(*uuid)) return {};
  std::string small = *uuid;
  for (char& c : small) {
    if (c >= 'A' && c <= 'F') c = static_cast<char>(c - 'A' + 'a');
  }
  return small;
}

}  // namespace brenvo::adif
