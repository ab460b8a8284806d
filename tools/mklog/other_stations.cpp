#include "mklog/other_stations.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <stdexcept>
#include <string_view>

#include "geo/locator.h"

namespace brenvo::mklog {
namespace {

// How often a country is worked from the middle of Italy, and how far its stations lie from its
// middle, in degrees.
struct Home {
  const char* code;
  double weight;
  double east, north;
};
constexpr Home kHomes[] = {
    {"I", 24, 0, 0},      {"DL", 11, 3, 2.5},   {"F", 6.5, 4, 3},     {"EA", 5, 4, 3},
    {"G", 4.5, 2, 2},     {"OK", 4, 2.5, 0.8},  {"S5", 3.2, 1, .4},   {"9A", 3, 1.5, 1},
    {"OE", 2.6, 2.5, .7}, {"HB", 1.6, 1.2, .5}, {"HA", 2.6, 2, .8},   {"SP", 4, 4, 2},
    {"OM", 1.4, 2, .5},   {"UA", 4.5, 9, 6},    {"UR", 3.5, 5, 2},    {"YU", 1.6, 1.2, 1},
    {"YO", 1.9, 3, 1.3},  {"LZ", 1.5, 2, .7},   {"SV", 1.4, 2, 1.5},  {"PA", 2, 1, .8},
    {"ON", 1.6, 1, .4},   {"OZ", 1.1, 1.2, .8}, {"SM", 1.7, 3, 4},    {"OH", 1.4, 3, 3},
    {"LA", .9, 3, 1},     {"EI", .5, 1, 1},     {"GM", .8, 1.5, 1.5}, {"GW", .4, .6, .8},
    {"CT", .9, .7, 1.5},  {"E7", .5, 1, .6},    {"Z3", .4, .7, .4},   {"9H", .5, .1, .1},
    {"LX", .3, .2, .2},   {"LY", .8, 1.5, .6},  {"YL", .5, 1.5, .5},  {"ES", .5, 1.5, .5},
    {"EU", .9, 3, 1.5},   {"ER", .3, 1, .7},    {"EA8", .6, 1, .4},   {"K", 6, 16, 5},
    {"VE", 1.3, 20, 3},   {"JA", 2.5, 3, 3},    {"UA9", 1.5, 25, 4},  {"PY", 1, 5, 6},
    {"LU", .7, 4, 6},     {"VK", .6, 10, 6},    {"ZL", .3, 2, 3},     {"ZS", .3, 4, 3},
    {"4X", .4, .3, .8},   {"5B", .4, .4, .2}};
// What falls to the rest of the world, all countries alike.
constexpr double kElsewhere = 4;

// The call areas of Italy: their middle, and their provinces.
struct Area {
  char digit;
  double weight;
  double longitude, latitude;
  const char* provinces;
};
constexpr Area kAreas[] = {{'0', 14, 12.6, 42.0, "RM RM RM LT FR VT RI PG TR"},
                           {'1', 13, 8.0, 44.9, "TO TO GE CN AT AL NO VC SV IM SP BI VB"},
                           {'2', 15, 9.5, 45.5, "MI MI BG BS CO VA PV CR MN LC LO SO MB"},
                           {'3', 14, 12.1, 45.7, "PD VE VR TV VI BL RO UD TS PN GO TN BZ"},
                           {'4', 10, 11.2, 44.5, "BO MO PR RE FE RA FC RN PC"},
                           {'5', 9, 11.1, 43.5, "FI PI LI LU AR SI GR PT PO MS"},
                           {'6', 6, 13.5, 42.9, "AN PU MC AP PE CH AQ TE FM"},
                           {'7', 7, 16.9, 40.9, "BA LE TA FG BR BT MT"},
                           {'8', 9, 15.1, 40.3, "NA SA CE AV BN CS CZ RC PZ CB VV KR"},
                           {'9', 6, 14.3, 37.6, "PA CT ME SR RG AG TP EN CL"}};
constexpr const char* kItalianHeads[] = {"IK", "IK", "IZ", "IZ", "IW", "IU", "I"};

constexpr const char* kItalianNames[] = {
    "MARIO",   "GIUSEPPE", "FRANCO",   "GIANNI", "PAOLO",   "CARLO",   "LUIGI",   "ANTONIO",
    "ROBERTO", "SERGIO",   "ALDO",     "BRUNO",  "CLAUDIO", "DARIO",   "ENZO",    "FABIO",
    "GIORGIO", "IVANO",    "LUCIANO",  "MAURO",  "NICOLÒ",  "PIERO",   "RENATO",  "SANDRO",
    "TULLIO",  "UGO",      "VITTORIO", "ANNA",   "LAURA",   "DANIELA", "MASSIMO", "STEFANO"};
constexpr const char* kNames[] = {
    "HANS",  "PETER", "KLAUS",  "JÜRGEN", "WOLF",   "UWE",    "JEAN", "MICHEL", "PIERRE", "ALAIN",
    "JOSE",  "JUAN",  "MANUEL", "ANTON",  "IVAN",   "SERGEI", "VLAD", "OLEG",   "JAN",    "PAVEL",
    "TOMAS", "MILAN", "DRAGO",  "LASZLO", "ZOLTAN", "JOHN",   "BOB",  "DAVE",   "MIKE",   "STEVE",
    "BILL",  "LARS",  "SVEN",   "OLE",    "YORGOS", "TARO",   "KEN",  "HIRO",   "CARLOS", "LUIZ"};
constexpr const char* kItalianTowns[] = {
    "PADOVA",  "MESTRE", "TREVISO", "BOLOGNA", "MODENA",   "FORLÌ",   "FIRENZE", "PISA",
    "ROMA",    "LATINA", "NAPOLI",  "SALERNO", "BARI",     "LECCE",   "PALERMO", "CATANIA",
    "TORINO",  "CUNEO",  "GENOVA",  "MILANO",  "SAN DONÀ", "BERGAMO", "BRESCIA", "UDINE",
    "TRIESTE", "ANCONA", "PESCARA", "PERUGIA", "L'AQUILA", "RIMINI",  "CANTÙ",   "CAGLIARI"};
constexpr const char* kTowns[] = {"NR MUNICH", "BERLIN", "LYON",   "NR PARIS",  "MADRID", "LONDON",
                                  "PRAGUE",    "WIEN",   "ZAGREB", "LJUBLJANA", "WARSAW", "KIEV",
                                  "MOSCOW",    "OSLO",   "GRAZ",   "BUDAPEST",  "TOKYO",  "DALLAS"};

void ForEachRow(sqlite3* file, const char* sql, const std::function<void(sqlite3_stmt*)>& take) {
  sqlite3_stmt* statement = nullptr;
  if (sqlite3_prepare_v2(file, sql, -1, &statement, nullptr) != SQLITE_OK) {
    throw std::runtime_error(sqlite3_errmsg(file));
  }
  while (sqlite3_step(statement) == SQLITE_ROW) take(statement);
  sqlite3_finalize(statement);
}

std::string Text(sqlite3_stmt* row, int column) {
  const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(row, column));
  return text == nullptr ? std::string() : text;
}

// The subsquare of a place in degrees, east and north positive.
std::string LocatorAt(double longitude, double latitude) {
  double east = std::fmod(longitude + 540, 360);
  double north = std::clamp(latitude, -89.9, 89.9) + 90;
  std::string locator(6, ' ');
  locator[0] = static_cast<char>('A' + static_cast<int>(east / 20));
  locator[1] = static_cast<char>('A' + static_cast<int>(north / 10));
  east = std::fmod(east, 20);
  north = std::fmod(north, 10);
  locator[2] = static_cast<char>('0' + static_cast<int>(east / 2));
  locator[3] = static_cast<char>('0' + static_cast<int>(north));
  locator[4] = static_cast<char>('A' + static_cast<int>(std::fmod(east, 2) * 12));
  locator[5] = static_cast<char>('A' + static_cast<int>(std::fmod(north, 1) * 24));
  return locator;
}

// About `east` and `north` degrees around a locator.
std::string LocatorAround(std::string_view locator, double east, double north, Dice& dice) {
  const geo::Position middle = geo::LocatorToRadians(locator);
  return LocatorAt(middle.longitude * 180 / geo::kPiValue + dice.Bell() * east * 1.5,
                   middle.latitude * 180 / geo::kPiValue + dice.Bell() * north * 1.5);
}

std::string SuffixOf(Dice& dice) {
  std::string suffix;
  const double share = dice.Share();
  const int letters = share < 0.02 ? 1 : share < 0.22 ? 2 : 3;
  for (int i = 0; i < letters; ++i) suffix += dice.Letter();
  return suffix;
}

}  // namespace

OtherStations::OtherStations(sqlite3* file, std::uint64_t seed) : seed_(seed) {
  ForEachRow(file, "SELECT Locator FROM User",
             [&](sqlite3_stmt* row) { myLocator_ = Text(row, 0); });
  ForEachRow(file,
             "SELECT Country,Locator FROM Country WHERE ifnull(Deleted,'')='' AND "
             "length(Locator)=6 ORDER BY Country",
             [&](sqlite3_stmt* row) {
               places_[Text(row, 0)] = countries_.size();
               countries_.push_back({Text(row, 0), Text(row, 1), {}, {}});
             });
  const auto countryOf = [&](sqlite3_stmt* row, int column) -> Country* {
    const auto at = places_.find(Text(row, column));
    return at == places_.end() ? nullptr : &countries_[at->second];
  };
  ForEachRow(file,
             "SELECT Country,Prefisso,\"Zona CQ\",\"Zona ITU\",Continente FROM Prefissi ORDER BY "
             "Prefisso,\"Zona CQ\",\"Zona ITU\",Continente",
             [&](sqlite3_stmt* row) {
               Country* country = countryOf(row, 0);
               if (country == nullptr) return;
               country->prefixes.push_back({Text(row, 1), Text(row, 4), sqlite3_column_int(row, 2),
                                            sqlite3_column_int(row, 3)});
             });
  ForEachRow(file, "SELECT Country,Provincia FROM Provincie ORDER BY Country,Provincia",
             [&](sqlite3_stmt* row) {
               if (Country* country = countryOf(row, 0)) country->provinces.push_back(Text(row, 1));
             });
  std::erase_if(countries_, [](const Country& country) { return country.prefixes.empty(); });
  places_.clear();
  for (std::size_t i = 0; i < countries_.size(); ++i) places_[countries_[i].code] = i;
  if (!geo::IsValidLocator(myLocator_)) throw std::runtime_error("the profile has no locator");
  for (const Home& home : kHomes) {
    if (!places_.contains(home.code)) {
      throw std::runtime_error(fmt::format("no prefix leads to the country '{}'", home.code));
    }
  }
}

const OtherStations::Country& OtherStations::CountryOf(Dice& dice) const {
  if (dice.Chance(kElsewhere / 100)) return dice.OneOf(countries_);
  return countries_[places_.at(dice.Weighted(kHomes).code)];
}

// An Italian call tells its area, and the area the place.
void OtherStations::PlaceInItaly(Dice& dice, OtherStation& station) const {
  const Area& area = dice.Weighted(kAreas);
  const std::string_view provinces = area.provinces;
  station.provincia = provinces.substr(dice.Below((provinces.size() + 1) / 3) * 3, 2);
  station.prefisso = std::string(dice.OneOf(kItalianHeads)) + area.digit;
  station.locator =
      LocatorAt(area.longitude + dice.Bell() * 1.2, area.latitude + dice.Bell() * 0.9);
}

OtherStation OtherStations::Make(std::uint64_t number) const {
  // Neighbouring numbers must not give neighbouring stations.
  Dice dice((seed_ + 1) * 0x9E3779B97F4A7C15u ^ (number + 1) * 0xD1B54A32D192ED03u);
  const Country& country = CountryOf(dice);
  const bool italian = country.code == "I";
  const Prefix* prefix = &dice.OneOf(country.prefixes);
  OtherStation station;
  station.country = country.code;
  if (italian) {
    PlaceInItaly(dice, station);
    const auto known =
        std::find_if(country.prefixes.begin(), country.prefixes.end(),
                     [&](const Prefix& each) { return each.prefisso == station.prefisso; });
    if (known != country.prefixes.end()) prefix = &*known;
  } else {
    const auto home = std::find_if(std::begin(kHomes), std::end(kHomes),
                                   [&](const Home& each) { return country.code == each.code; });
    const bool known = home != std::end(kHomes);
    station.locator =
        LocatorAround(country.locator, known ? home->east : 0.3, known ? home->north : 0.3, dice);
    if (!country.provinces.empty()) station.provincia = dice.OneOf(country.provinces);
  }
  station.prefisso = prefix->prefisso;
  station.zonaCq = prefix->zonaCq;
  station.zonaItu = prefix->zonaItu;
  station.continente = prefix->continente;
  station.call = station.prefisso + SuffixOf(dice);
  if (dice.Chance(0.03)) station.call += dice.Chance(0.8) ? "/P" : "/M";
  if (dice.Chance(0.75)) station.qra = italian ? dice.OneOf(kItalianNames) : dice.OneOf(kNames);
  if (dice.Chance(0.6)) station.qth = italian ? dice.OneOf(kItalianTowns) : dice.OneOf(kTowns);
  if (station.continente != "EU" && dice.Chance(0.15)) {
    station.manager = fmt::format("{}{}", dice.OneOf(country.prefixes).prefisso, SuffixOf(dice));
  }
  station.qrb = station.locator == myLocator_ ? 1 : geo::QrbKm(myLocator_, station.locator);
  station.answers = dice.Chance(0.6);
  return station;
}

}  // namespace brenvo::mklog
