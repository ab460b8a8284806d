#include "diplomi/read_log.h"

#include <fmt/format.h>

#include <algorithm>
#include <stdexcept>

#include "adif/dxcc_entities.h"
#include "adif/station_tables.h"
#include "base/file_bytes.h"
#include "base/text.h"
#include "core/files.h"
#include "core/log_time.h"
#include "core/note_tag.h"
#include "core/stations.h"
#include "judge.h"

namespace brenvo::diplomi {
namespace {

constexpr std::int64_t kRowsPerLook = 10'000;
constexpr std::size_t kMostListBytes = 32 << 20;

enum Column : std::size_t {
  kQsoNr,
  kDataQso,
  kCall,
  kCountry,
  kContinente,
  kProvincia,
  kLocator,
  kBanda,
  kModo,
  kPropagazione,
  kZonaCQ,
  kQslRicevuta,
  kNote
};
constexpr std::string_view kColumns =
    "select QsoNr,DataQso,Call,Country,Continente,Provincia,Locator,Banda,Modo,Propagazione,"
    "[Zona CQ],QslRicevuta,Note from Log{} order by QsoNr";

// Things by the numbers of contacts, taken in the order of these.
template <class Value>
class ByKey {
 public:
  void Put(std::int64_t key, Value value) {
    sorted_ = sorted_ && (all_.empty() || all_.back().key <= key);
    all_.push_back({key, std::move(value)});
  }
  void Settle() {
    if (!sorted_) std::ranges::stable_sort(all_, {}, &Item::key);
    at_ = all_.begin();
  }
  // Keys are asked for in their order.
  template <class See>
  void Each(std::int64_t key, const See& see) {
    for (; at_ != all_.end() && at_->key < key; ++at_) {
    }
    for (; at_ != all_.end() && at_->key == key; ++at_) see(at_->value);
  }

 private:
  struct Item {
    std::int64_t key;
    Value value;
  };
  std::vector<Item> all_;
  typename std::vector<Item>::iterator at_;
  bool sorted_ = true;
};

// The answers of a function of a text, each found once.
template <class Answer>
class Remembered {
 public:
  template <class Find>
  const Answer& Of(std::string_view text, const Find& find) {
    auto at = known_.find(text);
    if (at == known_.end()) at = known_.emplace(text, find(text)).first;
    return at->second;
  }

 private:
  std::unordered_map<std::string, Answer, TextHash, std::equal_to<>> known_;
};

std::optional<std::size_t> ServiceOf(const worked::Rules& rules, std::string_view name) {
  const auto& names = rules.Services();
  const auto at = std::ranges::find_if(
      names, [&](const std::string& each) { return base::SameText(each, base::Trim(name)); });
  if (at == names.end()) return std::nullopt;
  return static_cast<std::size_t>(at - names.begin());
}

}  // namespace

World ReadWorld(core::Session& session) {
  World world;
  world.today = session.Now();
  const entities::Resolver& byDate = session.ByDate.Rules();
  const auto countries =
      session.Db.OpenSnapshot("select Country,Descrizione from Country order by Country");
  for (; !countries->EOF_(); countries->MoveNext()) {
    WorldCountry country;
    country.code = base::Trim(countries->Field(std::size_t{0}).Text());
    country.name = base::Trim(countries->Field(1).Text());
    if (const entities::Entity* const entity = byDate.FindCountry(country.code)) {
      country.continent = entity->continent;
      country.valid = entity->valid;
    }
    world.countries.push_back(std::move(country));
  }
  const auto provinces = session.Db.OpenSnapshot(
      "select Country,Provincia,Descrizione from Provincie order by Country,Provincia");
  for (; !provinces->EOF_(); provinces->MoveNext()) {
    world.provinces.push_back({base::Trim(provinces->Field(std::size_t{0}).Text()),
                               base::Trim(provinces->Field(1).Text()),
                               base::Trim(provinces->Field(2).Text())});
  }
  const auto bands = session.Db.OpenSnapshot("select Banda from UserRTX order by Frequenza");
  for (; !bands->EOF_(); bands->MoveNext()) {
    world.bands.push_back(base::Trim(bands->Field(std::size_t{0}).Text()));
  }
  return world;
}

std::vector<OwnPlace> ReadPlaces(core::Session& session) {
  std::vector<OwnPlace> places;
  const core::StationRow current = core::CurrentStationRow(session.Db);
  for (const core::StationRow& each : core::AllStations(session.Db)) {
    OwnPlace place{each.Stazione, each.Country, each.Locator};
    const bool first = each.Stazione == current.Stazione;
    places.insert(first ? places.begin() : places.end(), std::move(place));
  }
  // As long as no station is stored, what the profile says is where contacts were made.
  if (places.empty()) places.push_back({current.Stazione, current.Country, current.Locator});
  return places;
}

std::vector<Award> LoadAwards(core::Session& session, const worked::Rules& rules, World& world,
                              const std::function<void(const std::string& text)>& tell) {
  std::vector<Award> awards;
  const std::filesystem::path folder = session.File(kAwardFolder);
  for (const std::string& name : core::FilesOf(folder, ".json")) {
    ReadAward read =
        ReadAwardText(base::ReadBytesOf(folder / name, kMostAwardBytes).value_or(std::string()));
    read.award.file = name.substr(0, name.size() - 5);
    if (read.faults.empty()) read.faults = FailedExamples(read.award, rules, world);
    if (read.faults.empty() && !read.award.list.empty()) {
      if (const auto list = base::ReadBytesOf(folder / read.award.list, kMostListBytes)) {
        try {
          world.lists[read.award.file] = ReadReferences(*list);
        } catch (const std::runtime_error& failure) {
          read.faults.push_back({0, read.award.list, failure.what()});
        }
      }
    }
    if (read.faults.empty()) {
      awards.push_back(std::move(read.award));
    } else {
      tell(fmt::format("{}: {}", name, read.faults.front().Text()));
    }
  }
  std::ranges::sort(awards, {}, &Award::name);
  return awards;
}

LogReading::LogReading(core::Session& session, const std::vector<Award>& awards,
                       const worked::Rules& rules)
    : session_(session), rules_(rules), fields_(WantedFields(awards)) {
  for (const Award& award : awards) {
    const bool inNotes = std::ranges::find(award.fields, kNoteField) != award.fields.end();
    if (inNotes) notePatterns_.push_back(award.pattern);
    for (const Area& area : award.areas) areaCountries_.push_back(area.country);
  }
}

// One way through the log and what stands beside it, or through one contact.
class LogReading::Walk {
 public:
  Walk(LogReading& reading, LogImage& log, const std::string& where)
      : reading_(reading),
        rules_(reading.rules_),
        log_(log),
        where_(where),
        reader_(reading.session_.Db.OpenReader()),
        times_(reading.session_) {
    ReadFields();
    ReadRecords();
    ReadStations();
    noteField_ = log.FieldAt(kNoteField);
  }

  bool Run(const Progress& progress) {
    std::int64_t done = 0;
    return reader_->ForEach(fmt::format(kColumns, where_), [&](engine::Reader::Row& row) {
      See(row);
      return ++done % kRowsPerLook != 0 || !progress || progress(done);
    });
  }

 private:
  struct FieldFacts {
    std::optional<std::uint16_t> wanted;
    bool confirms = false;
  };

  void ReadFields() {
    Remembered<FieldFacts> fields;
    Remembered<Remembered<worked::ServiceSet>> values;
    reader_->ForEach("select QsoNr,Campo,Valore from LogAdif" + where_,
                     [&](engine::Reader::Row& row) {
                       const std::string_view field = row.Text(1);
                       const FieldFacts& facts = fields.Of(field, [&](std::string_view name) {
                         const auto same = [&](const std::string& each) {
                           return base::SameText(each, base::Trim(name));
                         };
                         return FieldFacts{log_.FieldAt(base::Trim(name)),
                                           std::ranges::any_of(rules_.Fields(), same)};
                       });
                       if (facts.wanted) {
                         beside_.Put(row.Integer(0), {*facts.wanted, log_.texts.Of(row.Text(2))});
                       }
                       if (facts.confirms) NoteService(row, field, values);
                       return true;
                     });
    services_.Settle();
  }
  void NoteService(engine::Reader::Row& row, std::string_view field,
                   Remembered<Remembered<worked::ServiceSet>>& values) {
    auto& ofField = const_cast<Remembered<worked::ServiceSet>&>(
        values.Of(field, [](std::string_view) { return Remembered<worked::ServiceSet>(); }));
    const worked::ServiceSet services = ofField.Of(
        row.Text(2), [&](std::string_view value) { return rules_.ByField(field, value); });
    if (services != 0) services_.Put(row.Integer(0), services);
  }

  void ReadRecords() {
    reader_->ForEach("select QsoNr,Servizio,Locator,Iota,Spunta from LogConferme" + where_,
                     [&](engine::Reader::Row& row) {
                       const auto service = ServiceOf(rules_, row.Text(1));
                       const auto put = [&](std::size_t what, std::string_view text) {
                         if (!service || base::Trim(text).empty()) return;
                         beside_.Put(row.Integer(0), {static_cast<std::uint16_t>(what + *service),
                                                      log_.texts.Of(text)});
                       };
                       put(kRecordLocator, row.Text(2));
                       put(kRecordIota, row.Text(3));
                       ticks_ = ticks_ || row.Bool(4);
                       return true;
                     });
    beside_.Settle();
    if (ticks_) {
      // Boxes that a service has ticked, and no card.
      reader_->ForEach(
          fmt::format("select QsoNr from LogConferme{} Spunta and QsoNr not in (select QsoNr from "
                      "LogQsl where Verso='R' and Via<>'E')",
                      where_.empty() ? " where" : where_ + " and"),
          [&](engine::Reader::Row& row) {
            boxes_.Put(row.Integer(0), true);
            return true;
          });
    }
    boxes_.Settle();
  }

  void ReadStations() {
    const auto stations = core::AllStations(reading_.session_.Db);
    if (stations.size() == 1) {
      only_ = stations.front().Stazione;
    } else {
      reader_->ForEach("select QsoNr,Stazione from LogOrigine" + where_,
                       [&](engine::Reader::Row& row) {
                         stations_.Put(row.Integer(0), row.Integer(1));
                         return true;
                       });
    }
    stations_.Settle();
  }

  void See(engine::Reader::Row& row) {
    SeenContact seen;
    seen.key = row.Integer(kQsoNr);
    const auto when = row.Date(kDataQso);
    if (when) seen.utc = times_.ToUtc(*when);
    seen.call = row.Text(kCall);
    seen.country = row.Text(kCountry);
    seen.continent = row.Text(kContinente);
    seen.province = row.Text(kProvincia);
    seen.locator = row.Text(kLocator);
    seen.band = row.Text(kBanda);
    seen.propagation = row.Text(kPropagazione);
    seen.zoneCq = row.Number(kZonaCQ);
    seen.satellite = propagations_.Of(
        seen.propagation, [&](std::string_view text) { return rules_.IsSatellite(text); });
    const auto meaning = [&](std::string_view text) { return rules_.MeaningOf(text); };
    worked::ModeMeaning means = modes_.Of(row.Text(kModo), meaning);
    if (means.satellite) {
      seen.satellite = true;
      means = modes_.Of(core::ParseSatelliteNote(row.Text(kNote)).mode, meaning);
    }
    seen.group = means.group;
    seen.station = only_;
    stations_.Each(seen.key, [&](std::int64_t station) { seen.station = station; });
    services_.Each(seen.key, [&](worked::ServiceSet services) { seen.services |= services; });
    bool box = row.Bool(kQslRicevuta);
    boxes_.Each(seen.key, [&](bool) { box = false; });
    if (box) seen.services |= rules_.ByCard();
    besides_.clear();
    beside_.Each(seen.key, [&](const Beside& each) { besides_.push_back(each); });
    if (noteField_) PutNote(row.Text(kNote));
    seen.beside = besides_;
    if (HasAreas(seen.country)) {
      seen.area = reading_.session_.ByDate.Of(seen.call, seen.utc).area;
    }
    log_.Add(seen);
  }

  void PutNote(std::string_view note) {
    if (note.empty()) return;
    const bool tells = std::ranges::any_of(reading_.notePatterns_, [&](const std::string& pattern) {
      return !ReferencesIn(note, pattern).empty();
    });
    if (tells) besides_.push_back({*noteField_, log_.texts.Of(note)});
  }
  bool HasAreas(std::string_view country) {
    if (reading_.areaCountries_.empty()) return false;
    return areas_.Of(country, [&](std::string_view text) {
      return std::ranges::any_of(reading_.areaCountries_, [&](const std::string& each) {
        return base::SameText(each, base::Trim(text));
      });
    });
  }

  LogReading& reading_;
  const worked::Rules& rules_;
  LogImage& log_;
  const std::string where_;
  std::unique_ptr<engine::Reader> reader_;
  core::LogTimes times_;
  ByKey<Beside> beside_;
  ByKey<worked::ServiceSet> services_;
  ByKey<bool> boxes_;
  ByKey<std::int64_t> stations_;
  bool ticks_ = false;
  std::int64_t only_ = 0;
  std::optional<std::uint16_t> noteField_;
  std::vector<Beside> besides_;
  Remembered<bool> propagations_, areas_;
  Remembered<worked::ModeMeaning> modes_;
};

std::optional<LogImage> LogReading::Read(const Progress& progress) {
  LogImage log(fields_);
  const auto count = session_.Db.OpenSnapshot("select count(*) from Log");
  log.Reserve(static_cast<std::size_t>(count->Field(std::size_t{0}).Integer()));
  if (!Walk(*this, log, "").Run(progress)) return std::nullopt;
  log.Settle();
  ReadCredits(log);
  return log;
}

void LogReading::ReadAgain(LogImage& log, std::int64_t key) {
  (void)log.Remove(key);
  (void)Walk(*this, log, fmt::format(" where QsoNr={}", key)).Run({});
}

void LogReading::ReadCredits(LogImage& log) {
  log.RemoveCredits();
  const auto field = log.FieldAt(kCreditField);
  if (!field) return;
  const auto rows = session_.Db.OpenSnapshot(
      "select Numero,Call,Quando,Banda,Gruppo,Dxcc,Crediti,Modo from ConfermeRecord where "
      "Stato<>'I' and Crediti<>''");
  if (rows->EOF_()) return;
  adif::StationTables tables(session_);
  for (; !rows->EOF_(); rows->MoveNext()) {
    const std::string call = base::Trim(rows->Field(1).Text());
    const std::string band = tables.BandaOf(base::Trim(rows->Field(3).Text()));
    const std::string group = base::UpperAscii(base::Trim(rows->Field(4).Text()));
    const adif::DxccEntity* const entity =
        adif::FindDxccEntity(static_cast<int>(rows->Field(5).Integer()));
    const std::string country(entity == nullptr ? std::string_view() : entity->country);
    const core::CallPlace& place = tables.OfCountry(country);
    SeenContact seen;
    seen.key = -rows->Field(std::size_t{0}).Integer();
    seen.utc = rows->Field(2).ReadableDate().value_or(base::DateTime());
    seen.call = call;
    seen.country = country;
    seen.continent = place.Continente;
    seen.zoneCq = place.ZonaCQ;
    seen.band = band;
    seen.group = rules_.MeaningOf(base::Trim(rows->Field(7).Text())).group;
    constexpr std::pair<std::string_view, std::string_view> kGroups[] = {
        {"CW", "CW"}, {"PHONE", "Fonia"}, {"DATA", "Digitale"}, {"IMAGE", "Immagine"}};
    for (const auto& [told, name] : kGroups) {
      if (group == told) seen.group = rules_.FindGroup(name).value_or(worked::kNoGroup);
    }
    seen.satellite = group == "SATELLITE";
    const Beside beside[] = {{*field, log.texts.Of(rows->Field(6).Text())}};
    seen.beside = beside;
    log.Add(seen);
  }
}

}  // namespace brenvo::diplomi
