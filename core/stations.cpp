#include "core/stations.h"

#include <charconv>
#include <variant>

#include "base/match.h"
#include "base/text.h"
#include "core/own_values.h"
#include "core/prefix.h"
#include "core/station_profile.h"
#include "core/texts.h"

namespace brenvo::core {
namespace {

constexpr std::string_view kTable = "Stazioni", kNumber = "Stazione";
constexpr std::string_view kCurrent = "Stazione";  // of Valori

struct Column {
  std::string_view name;
  std::variant<std::string StationRow::*, double StationRow::*,
               std::optional<base::DateTime> StationRow::*>
      member;
  bool describes;  // the station itself: what makes two of them the same
};
constexpr Column kColumns[] = {
    {"Nome", &StationRow::Nome, false},      {"Tipo", &StationRow::Tipo, false},
    {"Call", &StationRow::Call, true},       {"Operatore", &StationRow::Operatore, true},
    {"Locator", &StationRow::Locator, true}, {"Provincia", &StationRow::Provincia, true},
    {"Country", &StationRow::Country, true}, {"Altezza", &StationRow::Altezza, true},
    {"RTX", &StationRow::RTX, true},         {"Antenna", &StationRow::Antenna, true},
    {"Dal", &StationRow::Dal, false},        {"Al", &StationRow::Al, false},
};

StationRow Read(engine::Recordset& row) {
  StationRow station;
  station.Stazione = row.Field(kNumber).Integer();
  for (const Column& column : kColumns) {
    const engine::Value value = row.Field(column.name);
    std::visit(base::Match{[&](std::string StationRow::*member) {
                             station.*member = base::Trim(value.Text());
                           },
                           [&](double StationRow::*member) { station.*member = value.Number(); },
                           [&](std::optional<base::DateTime> StationRow::*member) {
                             station.*member = value.IsNull() ? std::nullopt : value.ReadableDate();
                           }},
               column.member);
  }
  return station;
}

void Write(engine::EditableRecordset& row, const StationRow& station) {
  for (const Column& column : kColumns) {
    std::visit(base::Match{[&](std::optional<base::DateTime> StationRow::*member) {
                             const auto& date = station.*member;
                             row.Set(column.name, date ? engine::Value(*date) : engine::Value());
                           },
                           [&](const auto& member) { row.Set(column.name, station.*member); }},
               column.member);
  }
}

bool IsSame(const StationRow& a, const StationRow& b) {
  for (const Column& column : kColumns) {
    if (!column.describes) continue;
    const bool same = std::visit(
        base::Match{[&](std::string StationRow::*member) {
                      return base::SameText(base::Trim(a.*member), base::Trim(b.*member));
                    },
                    [&](const auto& member) { return a.*member == b.*member; }},
        column.member);
    if (!same) return false;
  }
  return true;
}

std::unique_ptr<engine::Table> RowOfStation(engine::Database& database, std::int64_t number) {
  auto row = database.OpenTable(kTable);
  try {
    row->SetBookmark({number});
  } catch (const engine::DatabaseError& failure) {
    if (failure.Number != engine::DatabaseError::kRecordDeleted) throw;
    return nullptr;
  }
  return row;
}

std::optional<std::int64_t> StoredCurrent(engine::Database& database) {
  const auto text = OwnValue(database, kCurrent);
  if (!text) return std::nullopt;
  std::int64_t number = 0;
  std::from_chars(text->data(), text->data() + text->size(), number);
  return FindStation(database, number) ? std::optional(number) : std::nullopt;
}

}  // namespace

std::string TitleOf(const StationRow& station) {
  std::string title = station.Nome;
  for (const std::string& part : {station.Call, station.Locator}) {
    if (!part.empty() && part != title) title += (title.empty() ? "" : " ") + part;
  }
  return title;
}

std::optional<StationRow> FindStation(engine::Database& database, std::int64_t number) {
  const auto row = RowOfStation(database, number);
  return row == nullptr ? std::nullopt : std::optional(Read(*row));
}

std::vector<StationRow> AllStations(engine::Database& database) {
  std::vector<StationRow> stations;
  const auto row = database.OpenTable(kTable);
  for (row->MoveFirst(); !row->EOF_(); row->MoveNext()) stations.push_back(Read(*row));
  return stations;
}

void DeleteStation(engine::Database& database, std::int64_t number) {
  if (const auto row = RowOfStation(database, number)) row->Delete();
}

std::int64_t StoreStation(engine::Database& database, const StationRow& station) {
  auto row = station.Stazione == 0 ? nullptr : RowOfStation(database, station.Stazione);
  if (row == nullptr) {
    row = database.OpenTable(kTable);
    row->AddNew();
  } else {
    row->Edit();
  }
  Write(*row, station);
  row->Update();
  return row->LastModified().key;
}

std::int64_t FindOrStoreStation(engine::Database& database, const StationRow& station) {
  for (const StationRow& present : AllStations(database)) {
    if (IsSame(present, station)) return present.Stazione;
  }
  return StoreStation(database, station);
}

bool HasContacts(engine::Database& database, std::int64_t station) {
  return !database
              .OpenSnapshot("Select QsoNr from LogOrigine where Stazione=" +
                            std::to_string(station))
              ->EOF_();
}

StationRow StationOfProfile(engine::Database& database) {
  const auto user = database.OpenTable("User");
  StationRow station;
  station.Nome = station.Tipo = kStationKinds[0];
  if (user->EOF_()) return station;
  station.Call = base::Trim(FieldText(*user, "Call"));
  if (station.Call == kDeliveredCall) station.Call.clear();
  station.Locator = base::Trim(FieldText(*user, "Locator"));
  station.Provincia = base::Trim(FieldText(*user, "Provincia"));
  const auto prefixes = database.OpenTable("Prefissi");
  prefixes->SetIndex("PrimaryKey");
  station.Country = base::Trim(ResolvePrefix(*prefixes, station.Call).Country);
  return station;
}

std::int64_t CurrentStation(engine::Database& database) {
  if (const auto current = StoredCurrent(database)) return *current;
  const std::int64_t station = FindOrStoreStation(database, StationOfProfile(database));
  SetCurrentStation(database, station);
  return station;
}

StationRow CurrentStationRow(engine::Database& database) {
  const auto current = StoredCurrent(database);
  return current ? *FindStation(database, *current) : StationOfProfile(database);
}

void SetCurrentStation(engine::Database& database, std::int64_t station) {
  StoreOwnValue(database, kCurrent, std::to_string(station));
}

std::int64_t StationAt(engine::Database& database, base::DateTime time) {
  const base::DateTime day = time.DatePart();
  std::int64_t found = 0;
  for (const StationRow& station : AllStations(database)) {
    if (!station.Dal && !station.Al) continue;
    if (station.Dal && day < station.Dal->DatePart()) continue;
    if (station.Al && day > station.Al->DatePart()) continue;
    found = station.Stazione;
  }
  return found != 0 ? found : CurrentStation(database);
}

std::string FollowProfile(engine::Database& database, base::DateTime today) {
  const StationRow profile = StationOfProfile(database);
  const auto number = StoredCurrent(database);
  if (!number) {
    CurrentStation(database);
    return {};
  }
  const StationRow current = *FindStation(database, *number);
  // A portable or a club station is not the profile's.
  if (current.Tipo != kStationKinds[0]) return {};
  StationRow followed = current;
  followed.Call = profile.Call;
  followed.Locator = profile.Locator;
  followed.Provincia = profile.Provincia;
  followed.Country = profile.Country;
  if (IsSame(followed, current)) return {};
  if (current.Call.empty() || !HasContacts(database, *number)) {
    StoreStation(database, followed);
    return {};
  }
  StationRow ended = current;
  if (!ended.Al) ended.Al = today.DatePart();
  StoreStation(database, ended);
  followed.Stazione = 0;
  followed.Dal = today.DatePart();
  followed.Al.reset();
  SetCurrentStation(database, StoreStation(database, followed));
  return "I contatti fatti finora restano alla stazione " + current.Call + " " + current.Locator +
         ": i prossimi sono della nuova (Stazioni)";
}

}  // namespace brenvo::core
