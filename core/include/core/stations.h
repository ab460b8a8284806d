// The stations that contacts are made from: table Stazioni. One of them is current.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/date.h"
#include "engine/database.h"

namespace brenvo::core {

// Empty where it is not known; the rig and the antenna then are the band's of the profile.
struct StationRow {
  std::int64_t Stazione = 0;   // the number, given when it is stored
  std::string Nome{}, Tipo{};  // Tipo is one of kStationKinds
  std::string Call{}, Operatore{}, Locator{}, Provincia{}, Country{}, RTX{}, Antenna{};
  double Altezza = 0;                         // metres above the sea
  std::optional<base::DateTime> Dal{}, Al{};  // the first and the last day
  friend bool operator==(const StationRow&, const StationRow&) = default;
};

inline constexpr std::string_view kStationOfFile = "Da file";
inline constexpr std::string_view kStationKinds[] = {"Casa", "Portatile", "Club", kStationOfFile};

// "Casa IK3ABC JN65AA".
std::string TitleOf(const StationRow& station);

// Nothing when there is none of that number.
std::optional<StationRow> FindStation(engine::Database& database, std::int64_t number);
// By their numbers.
std::vector<StationRow> AllStations(engine::Database& database);
void DeleteStation(engine::Database& database, std::int64_t number);
// Gives the number: a new one when the station has none yet.
std::int64_t StoreStation(engine::Database& database, const StationRow& station);
// The station that is the same but for its number, name, kind and dates; stored when there is none.
std::int64_t FindOrStoreStation(engine::Database& database, const StationRow& station);
// Whether any contact was made from it.
bool HasContacts(engine::Database& database, std::int64_t station);

// What the profile says of the station: no number, "Casa".
StationRow StationOfProfile(engine::Database& database);
// The number of the current one; while there is none, the profile's is stored and becomes it.
std::int64_t CurrentStation(engine::Database& database);
// The same without storing anything: while there is none, what the profile says.
StationRow CurrentStationRow(engine::Database& database);
void SetCurrentStation(engine::Database& database, std::int64_t station);
// The one whose days hold the time, the last of several; else the current one.
std::int64_t StationAt(engine::Database& database, base::DateTime time);

// The profile has been stored: what it says anew of call, locator or province is a new current
// station when contacts were made from the old one, whose last day it then is; else the old one is
// corrected. Gives what was done, in words for the operator; empty for nothing.
std::string FollowProfile(engine::Database& database, base::DateTime today);

}  // namespace brenvo::core
