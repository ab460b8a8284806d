#include "demonstration/demonstration.h"

#include <algorithm>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "base/text.h"
#include "core/contact_origin.h"
#include "core/prefix.h"
#include "core/session.h"
#include "core/station_profile.h"
#include "core/transaction.h"
#include "demonstration/countries.h"
#include "geo/locator.h"
#include "mklog/dice.h"

namespace brenvo::demonstration {
namespace {

constexpr std::string_view kOwnLocator = "JN55WJ";
constexpr int kNearKm = 1200;
constexpr std::uint64_t kSeed = 20251;

struct Station {
  std::string call, name, town, province, locator, manager;
  bool near = false;
};

struct BandUse {
  std::string_view band;
  int weight;
  bool near;  // only what is near is heard here
};
const std::vector<BandUse> kBands = {
    {"  2 m", 26, true},  {" 70cm", 8, true},   {" 23cm", 2, true},
    {"  6 m", 10, false}, {" 10 m", 9, false},  {" 15 m", 11, false},
    {" 20 m", 18, false}, {" 40 m", 12, false}, {" 80 m", 6, false}};

std::vector<Station> MakeStations(int count, mklog::Dice& dice) {
  std::vector<Station> stations;
  for (int i = 0; i < count; ++i) {
    const DemonstrationCountry& country = dice.Weighted(DemonstrationCountries());
    const DemonstrationTown& town = dice.OneOf(country.towns);
    Station station;
    station.call = town.prefix;
    for (int letters = dice.Between(2, 3); letters > 0; --letters) station.call += dice.Letter();
    station.name = dice.OneOf(*country.names);
    station.town = town.name;
    station.province = town.province;
    station.locator = town.square;
    for (int letters = 2; letters > 0; --letters) {
      station.locator += static_cast<char>(dice.Between('A', 'X'));
    }
    station.near = country.near && geo::QrbKm(kOwnLocator, station.locator) < kNearKm;
    if (dice.Chance(0.04)) station.manager = "IK3MGR";
    stations.push_back(std::move(station));
  }
  return stations;
}

void WriteProfile(core::Session& session) {
  session.Db.Execute(
      "UPDATE [User] SET Call='IK3DEM', Qra='Anna Verdi', Qth='Padova', "
      "Indirizzo='Via delle Antenne 73', Provincia='PD', Locator='JN55WJ', "
      "TelnetCluster='cluster.example.org:7300', TelnetWWConv='chat.example.org:3600'");
  session.Station.MyLocator = kOwnLocator;
}

std::string_view ModeOn(const BandUse& band, mklog::Dice& dice) {
  const int at = dice.Between(0, 99);
  if (band.near) return at < 72 ? "SSB" : at < 86 ? "CW" : at < 94 ? "FM" : "FT8";
  return at < 48 ? "SSB" : at < 74 ? "CW" : at < 92 ? "FT8" : at < 97 ? "RTTY" : "PSK31";
}

std::string_view PropagationOn(const BandUse& band, int km, mklog::Dice& dice) {
  if (band.near) return km > 500 && dice.Chance(0.6) ? "Tropo" : "";
  if (band.band == "  6 m") return dice.Chance(0.8) ? "E sporadico" : "Meteor Scatter";
  return dice.Chance(0.2) ? "F2" : "";
}

std::string NoteFor(mklog::Dice& dice) {
  switch (dice.Below(40)) {
    case 0:
      return "[IOTA/EU-025/Sicilia]";
    case 1:
      return "[IOTA/EU-024/Sardegna]";
    case 2:
      return "[IOTA/EU-028/Arcipelago Toscano]";
    case 3:
      return "[IOTA/EU-045/Isole Ponziane]";
    case 4:
      return "[IOTA/EU-131/Isole della Laguna Veneta]";
    case 5:
      return "Ottimo segnale";
    case 6:
      return "Antenna nuova";
    default:
      return "";
  }
}

void SetText(engine::Table& row, std::string_view column, std::string_view text) {
  if (!text.empty()) row.Set(column, std::string(text));
}

// What the prefix table says of a station's call.
void SetPlace(core::Session& session, engine::Table& log, const Station& station) {
  const core::ResolvedPrefix resolved = core::ResolvePrefix(session, station.call);
  if (resolved.Prefisso.empty()) return;
  log.Set("Prefisso", base::RTrim(resolved.Prefisso));
  log.Set("Country", base::RTrim(resolved.Country));
  log.Set("Zona CQ", resolved.ZonaCQ);
  log.Set("Zona ITU", resolved.ZonaITU);
  log.Set("Continente", resolved.Continente);
  SetText(log, "Provincia", station.province);
}

// The time between two contacts, so that `contacts` fill the years.
base::DateTime TimeOf(int number, int contacts, mklog::Dice& dice) {
  constexpr std::int64_t kMinutes = std::int64_t{3} * 365 * 24 * 60;
  const std::int64_t minute = kMinutes * number / contacts + dice.Between(0, 19);
  return base::DateTime::FromSeconds(base::DateTime::Of(2022, 11, 20, 6).Seconds() + minute * 60);
}

void WriteContact(core::Session& session, const Station& station, const BandUse& band,
                  base::DateTime time, mklog::Dice& dice) {
  engine::Table& log = *session.Tables.TbLog;
  const std::string_view mode = ModeOn(band, dice);
  const int km = geo::QrbKm(kOwnLocator, station.locator);
  const char* report = mode == "SSB" || mode == "FM" ? "59" : mode == "FT8" ? "-08" : "599";
  log.AddNew();
  log.Set("DataQso", time);
  log.Set("Call", station.call);
  SetText(log, "Manager", station.manager);
  log.Set("Qra", station.name);
  log.Set("Qth", station.town);
  SetPlace(session, log, station);
  log.Set("Locator", station.locator);
  log.Set("Qrb", std::int64_t{km});
  log.Set("Banda", std::string(band.band));
  const auto profile = core::FindBandProfile(session, band.band).value();
  log.Set("Frequenza", profile.Frequenza);
  log.Set("Potenza", profile.Potenza);
  log.Set("Modo", std::string(mode));
  SetText(log, "Propagazione", PropagationOn(band, km, dice));
  log.Set("QrkDato", report);
  log.Set("QrkRicevuto", report);
  const bool sent = dice.Chance(0.7);
  log.Set("QslDaInviare", !sent && dice.Chance(0.3));
  log.Set("QslInviata", sent);
  log.Set("QslRicevuta", sent && dice.Chance(0.3));
  log.Set("Note", NoteFor(dice));
  log.Update();
}

void WriteContest(core::Session& session, const std::vector<Station>& stations, mklog::Dice& dice) {
  engine::Table& contests = *session.Tables.TbContest;
  const base::DateTime day = base::DateTime::Of(2025, 9, 6);
  contests.AddNew();
  contests.Set("DataContest", day);
  for (const auto& [column, text] : {std::pair{"Banda", "  2 m"},
                                     {"Nome", "IARU Region 1 VHF"},
                                     {"Categoria", "2"},
                                     {"FissoPortatile", "P"},
                                     {"SingoloMulti", "S"},
                                     {"Call", "IK3DEM"},
                                     {"Qra", "Anna Verdi"},
                                     {"Qth", "Padova"},
                                     {"Indirizzo", "Via delle Antenne 73"},
                                     {"Provincia", "PD"},
                                     {"SQth", "Monte Grappa"},
                                     {"SProvincia", "TV"},
                                     {"Locator", "JN55VU"},
                                     {"RTX", "FT-736R"},
                                     {"Antenna", "2 x 9 elementi"}}) {
    contests.Set(column, text);
  }
  contests.Set("Frequenza", 144.3);
  contests.Set("Altezza", std::int64_t{1775});
  contests.Set("Potenza", std::int64_t{50});
  contests.Set("Note", "Bello il tramonto");
  contests.Set("MoltSquare", true);
  contests.Update();

  engine::Table& contacts = *session.Tables.TbContestQso;
  int serial = 0;
  for (const Station& station : stations) {
    if (!station.near || serial == 96) continue;
    const int km = geo::QrbKm("JN55VU", station.locator);
    const int minute = serial * 9 + dice.Between(0, 4);
    contacts.AddNew();
    contacts.Set("DataContest", day);
    contacts.Set("Banda", "  2 m");
    contacts.Set("ProgrDato", std::int64_t{++serial});
    contacts.Set("ProgrRicevuto", std::int64_t{dice.Between(1, 200)});
    contacts.Set("Giorno", std::int64_t{6 + (14 * 60 + minute) / 1440});
    contacts.Set("Qtr", base::DateTime::Of(1899, 12, 30, (14 + minute / 60) % 24, minute % 60));
    contacts.Set("Call", station.call);
    contacts.Set("QrkDato", std::int64_t{59});
    contacts.Set("QrkRicevuto", std::int64_t{59});
    contacts.Set("Locator", station.locator);
    contacts.Set("Modo", "SSB");
    contacts.Set("Qrb", std::int64_t{km});
    contacts.Set("Punti", std::int64_t{km});
    contacts.Set("Note", "");
    contacts.Set("InLog", serial > 90);
    contacts.Update();
  }
}

}  // namespace

void FillDemonstration(core::Session& session, int contacts) {
  mklog::Dice dice(kSeed);
  core::Transaction transaction(session.Db);
  WriteProfile(session);
  const std::vector<Station> stations = MakeStations(std::clamp(contacts / 4, 300, 20000), dice);
  for (int i = 0; i < contacts; ++i) {
    const Station* station = &dice.OneOf(stations);
    const BandUse* band = &dice.Weighted(kBands);
    while (band->near && !station->near) station = &dice.OneOf(stations);
    try {
      WriteContact(session, *station, *band, TimeOf(i, contacts, dice), dice);
    } catch (const engine::DatabaseError& failure) {
      // The same station twice in a minute: one contact fewer.
      if (failure.Number != engine::DatabaseError::kDuplicateKey) throw;
    }
  }
  WriteContest(session, stations, dice);
  transaction.Commit();
  core::AdoptContacts(session.Db, [](std::int64_t) {});
  session.Tables.TbUser->MoveFirst();
}

}  // namespace brenvo::demonstration
