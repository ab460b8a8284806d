#include "judge.h"

#include <fmt/format.h>

#include <algorithm>
#include <limits>

#include "base/text.h"

namespace brenvo::diplomi {
namespace {

constexpr std::int64_t kDay = 24 * 60 * 60;
constexpr int kZones = 40;
constexpr std::size_t kSquares = 180 * 180;

struct ContinentFacts {
  std::string_view code, name;
};
constexpr ContinentFacts kContinents[] = {{"AF", "Africa"},  {"AS", "Asia"},
                                          {"EU", "Europa"},  {"NA", "America del Nord"},
                                          {"OC", "Oceania"}, {"SA", "America del Sud"}};

bool Holds(const std::vector<std::string>& words, std::string_view word) {
  return std::ranges::any_of(words,
                             [&](const std::string& each) { return base::SameText(each, word); });
}

// The names of the credits that a text lists: "DXCC:CARD&LOTW,DXCC_BAND".
template <class See>
void EachCredit(std::string_view text, const See& see) {
  while (!text.empty()) {
    const std::size_t end = std::min(text.find(','), text.size());
    const std::string_view piece = text.substr(0, end);
    see(base::Trim(piece.substr(0, piece.find(':'))));
    text.remove_prefix(std::min(end + 1, text.size()));
  }
}

}  // namespace

Judge::Judge(const Award& award, const LogImage& log, const World& world,
             std::span<const OwnPlace> places, const worked::Rules& rules, const Choice& choice)
    : award_(award), log_(log) {
  from_ = award.from ? award.from->Seconds() : std::numeric_limits<std::int64_t>::min();
  to_ = award.to ? award.to->Seconds() + kDay - 1 : std::numeric_limits<std::int64_t>::max();
  if (!choice.mode.empty()) {
    group_ = rules.FindGroup(choice.mode);
    noGroup_ = !group_;
  }
  for (std::uint32_t i = 0; i < log.propagations.Count(); ++i) {
    propagationOut_.push_back(i != 0 && Holds(award.notPropagation, log.propagations.Text(i)));
  }
  for (std::uint32_t i = 0; i < log.suffixes.Count(); ++i) {
    suffixOut_.push_back(i != 0 && Holds(award.notSuffix, log.suffixes.Text(i)));
  }
  FindBands(world);
  FindServices(rules);
  FindStations(places, choice);
  FindUnits(world);
}

void Judge::FindBands(const World& world) {
  const std::vector<std::string>& wanted = award_.bands.empty() ? world.bands : award_.bands;
  for (const std::string& band : wanted) {
    // Of an award for all bands those that were ever worked.
    if (award_.bands.empty() && log_.bands.Find(band) == 0) continue;
    columns_.push_back(band);
  }
  columnOfBand_.assign(log_.bands.Count(), award_.bands.empty() ? 0 : -1);
  for (std::size_t i = 0; i < columns_.size(); ++i) {
    const std::uint32_t band = log_.bands.Find(columns_[i]);
    if (band != 0) columnOfBand_[band] = static_cast<int>(i) + 1;
  }
}

void Judge::FindServices(const worked::Rules& rules) {
  const std::vector<std::string>& names = rules.Services();
  for (const Counting& each : award_.counting) {
    Service& made = services_.emplace_back();
    const auto at = std::ranges::find_if(
        names, [&](const std::string& name) { return base::SameText(name, each.service); });
    if (at == names.end()) continue;
    made.number = static_cast<std::size_t>(at - names.begin());
    made.bit = static_cast<worked::ServiceSet>(1U << made.number);
    if (!each.field.empty()) made.field = log_.FieldAt(each.field);
    counting_ |= made.bit;
  }
  creditField_ = log_.FieldAt(kCreditField);
  squaresField_ = log_.FieldAt(kSquaresField);
  for (const std::string& field : award_.fields) {
    if (const auto at = log_.FieldAt(field)) referenceFields_.push_back(*at);
  }
}

void Judge::FindStations(std::span<const OwnPlace> places, const Choice& choice) {
  const bool binds = award_.ownWithinKm > 0 || award_.ownCountry;
  if (binds) {
    const std::int64_t first = choice.station != 0 ? choice.station
                               : places.empty()    ? 0
                                                   : places.front().station;
    together_ = StationsThatGoTogether(award_, places, first);
  } else if (choice.station != 0) {
    together_ = {choice.station};
  }
  anyStation_ = !binds && choice.station == 0;
  anyCredit_ = binds || choice.station == 0;
  for (std::size_t i = 0; i < log_.StationCount(); ++i) {
    const std::int64_t station = log_.Station(static_cast<std::uint16_t>(i));
    stationIn_.push_back(std::ranges::find(together_, station) != together_.end());
  }
}

std::size_t Judge::NewUnit(std::string code, std::string name, bool former) {
  const auto [at, isNew] = byCode_.try_emplace(code, units_.size());
  if (isNew) units_.push_back({std::move(code), std::move(name), former});
  return at->second;
}

std::string Judge::Renamed(std::string_view code) const {
  std::string upper = base::UpperAscii(base::Trim(code));
  const auto at = award_.same.find(upper);
  return at == award_.same.end() ? upper : base::UpperAscii(at->second);
}

void Judge::FindCountries(const World& world, bool european) {
  unitOfCountry_.assign(log_.countries.Count(), -1);
  daysOfCountry_.assign(log_.countries.Count(), {});
  for (const WorldCountry& country : world.countries) {
    const std::uint32_t number = log_.countries.Find(country.code);
    if (number != 0) daysOfCountry_[number] = country.valid;
    if (european && country.continent != "EU") continue;
    const bool former = (country.valid.HasTo() && country.valid.to < world.today.Seconds()) ||
                        Holds(award_.former, country.code);
    const std::size_t unit = NewUnit(Renamed(country.code), country.name, former);
    if (number != 0) unitOfCountry_[number] = static_cast<int>(unit);
  }
}

void Judge::FindUnits(const World& world) {
  switch (award_.unit) {
    case UnitKind::kCountry:
      FindCountries(world, false);
      break;
    case UnitKind::kWaeCountry:
      FindCountries(world, true);
      unitOfArea_.assign(log_.areas.Count(), -1);
      countryOfArea_.assign(log_.areas.Count(), 0);
      for (const Area& area : award_.areas) {
        const std::size_t unit = NewUnit(Renamed(area.code), area.name, false);
        const std::uint32_t number = log_.areas.Find(area.area);
        if (number == 0) continue;
        unitOfArea_[number] = static_cast<int>(unit);
        countryOfArea_[number] = log_.countries.Find(area.country);
      }
      break;
    case UnitKind::kCqZone:
      for (int zone = 1; zone <= kZones; ++zone) NewUnit(fmt::format("{:02}", zone), "", false);
      break;
    case UnitKind::kContinent:
      unitOfContinent_.assign(log_.continents.Count(), -1);
      for (const ContinentFacts& each : kContinents) {
        const std::size_t unit = NewUnit(std::string(each.code), std::string(each.name), false);
        const std::uint32_t number = log_.continents.Find(each.code);
        if (number != 0) unitOfContinent_[number] = static_cast<int>(unit);
      }
      break;
    case UnitKind::kProvince:
      unitOfProvince_.assign(log_.provinces.Count(), -1);
      provinceCountry_.assign(log_.countries.Count(), false);
      for (const std::string& country : award_.countries) {
        const std::uint32_t number = log_.countries.Find(country);
        if (number != 0) provinceCountry_[number] = true;
      }
      // Those that have been renamed bring no name of their own.
      for (const bool renamed : {false, true}) {
        for (const WorldProvince& province : world.provinces) {
          if (!Holds(award_.countries, province.country)) continue;
          const std::string code = Renamed(province.code);
          if (base::SameText(code, province.code) == renamed) continue;
          const std::size_t unit = NewUnit(code, province.name, Holds(award_.former, code));
          const std::uint32_t number = log_.provinces.Find(province.code);
          if (number != 0) unitOfProvince_[number] = static_cast<int>(unit);
        }
      }
      break;
    case UnitKind::kPrefix:
      unitOfPrefix_.assign(log_.prefixes.Count(), -1);
      break;
    case UnitKind::kSquare:
    case UnitKind::kField:
      unitOfSquare_.assign(kSquares + 1, -1);
      break;
    case UnitKind::kReference: {
      const auto list = world.lists.find(award_.file);
      onlyListed_ = list != world.lists.end();
      if (!onlyListed_) break;
      for (const ListedReference& each : list->second) {
        NewUnit(Renamed(each.reference), each.name, Holds(award_.former, each.reference));
      }
      break;
    }
  }
}

bool Judge::Counts(const ImageRow& row) {
  // What is credited has been judged already.
  if (row.key >= 0 && (row.seconds < from_ || row.seconds > to_)) return false;
  if (noGroup_ || (group_ && row.group != *group_)) return false;
  if (row.satellite ? award_.satellite == Satellite::kNo : award_.satellite == Satellite::kOnly) {
    return false;
  }
  if (propagationOut_[row.propagation] || suffixOut_[row.suffix]) return false;
  if (columnOfBand_[row.band] < 0) return false;
  const bool fromHere = row.key < 0 ? anyCredit_ : anyStation_ || stationIn_[row.station];
  if (!fromHere) ++left_.otherPlace;
  return fromHere;
}

void Judge::AddUnits(std::string_view text, UnitList& units) {
  for (const std::string& each : ReferencesIn(text, "")) {
    const std::uint16_t square = SquareNumber(each);
    if (square == 0) continue;
    int& unit = unitOfSquare_[square];
    if (unit < 0) {
      const std::string code =
          award_.unit == UnitKind::kField ? SquareText(square).substr(0, 2) : SquareText(square);
      unit = static_cast<int>(NewUnit(code, "", false));
    }
    if (std::ranges::find(units, static_cast<std::size_t>(unit)) == units.end()) {
      units.push_back(static_cast<std::size_t>(unit));
    }
  }
}

void Judge::AddReferences(std::uint32_t text, UnitList& units) {
  auto at = references_.find(text);
  if (at == references_.end()) {
    at = references_.emplace(text, UnitList()).first;
    for (const std::string& each : ReferencesIn(log_.texts.Text(text), award_.pattern)) {
      const std::string code = Renamed(each);
      const auto known = byCode_.find(code);
      if (known != byCode_.end()) {
        at->second.push_back(known->second);
      } else if (!onlyListed_) {
        at->second.push_back(NewUnit(code, "", Holds(award_.former, code)));
      }
    }
  }
  for (const std::size_t unit : at->second) {
    if (std::ranges::find(units, unit) == units.end()) units.push_back(unit);
  }
}

void Judge::UnitsOf(const ImageRow& row, UnitList& units) {
  const auto add = [&](int unit) {
    if (unit >= 0) units.push_back(static_cast<std::size_t>(unit));
  };
  switch (award_.unit) {
    case UnitKind::kWaeCountry:
      if (unitOfArea_[row.area] >= 0 && countryOfArea_[row.area] == row.country) {
        add(unitOfArea_[row.area]);
        break;
      }
      [[fallthrough]];
    case UnitKind::kCountry:
      if (unitOfCountry_[row.country] < 0) break;
      if (row.key < 0 || daysOfCountry_[row.country].Holds(row.seconds)) {
        add(unitOfCountry_[row.country]);
      } else {
        ++left_.notThen;
      }
      break;
    case UnitKind::kCqZone:
      add(row.zone - 1);
      break;
    case UnitKind::kContinent:
      add(unitOfContinent_[row.continent]);
      break;
    case UnitKind::kProvince:
      if (provinceCountry_[row.country]) add(unitOfProvince_[row.province]);
      break;
    case UnitKind::kPrefix: {
      if (row.prefix == 0) break;
      int& unit = unitOfPrefix_[row.prefix];
      if (unit < 0) unit = static_cast<int>(NewUnit(log_.prefixes.Text(row.prefix), "", false));
      add(unit);
      break;
    }
    case UnitKind::kSquare:
    case UnitKind::kField: {
      const auto beside = log_.BesideOf(row);
      const auto several = std::ranges::find_if(
          beside, [&](const Beside& each) { return squaresField_ && each.what == *squaresField_; });
      if (several != beside.end()) {
        AddUnits(log_.texts.Text(several->text), units);
      } else if (row.square != 0) {
        AddUnits(SquareText(row.square), units);
      }
      break;
    }
    case UnitKind::kReference:
      for (const Beside& each : log_.BesideOf(row)) {
        if (std::ranges::find(referenceFields_, each.what) != referenceFields_.end()) {
          AddReferences(each.text, units);
        }
      }
      break;
  }
}

void Judge::UnitsOfRecord(const ImageRow& row, std::size_t service, UnitList& units) {
  const bool reference = award_.unit == UnitKind::kReference;
  const auto what =
      static_cast<std::uint16_t>((reference ? kRecordIota : kRecordLocator) + service);
  for (const Beside& each : log_.BesideOf(row)) {
    if (each.what != what) continue;
    if (reference) {
      AddReferences(each.text, units);
    } else {
      AddUnits(log_.texts.Text(each.text), units);
    }
  }
}

bool Judge::Keeps(const ImageRow& row, const Counting& counting, std::uint16_t field) const {
  return std::ranges::any_of(log_.BesideOf(row), [&](const Beside& each) {
    return each.what == field && base::SameText(log_.texts.Text(each.text), counting.value);
  });
}

Judge::Credit Judge::CreditOf(const ImageRow& row) {
  Credit all;
  if (!creditField_) return all;
  for (const Beside& each : log_.BesideOf(row)) {
    if (each.what != *creditField_) continue;
    auto at = credits_.find(each.text);
    if (at == credits_.end()) {
      at = credits_.emplace(each.text, Credit()).first;
      EachCredit(log_.texts.Text(each.text), [&](const std::string& name) {
        at->second.all |= Holds(award_.creditAll, name);
        at->second.band |= Holds(award_.creditBand, name);
        at->second.mode |= Holds(award_.creditMode, name);
      });
    }
    all.all |= at->second.all;
    all.band |= at->second.band;
    all.mode |= at->second.mode;
  }
  return all;
}

void Judge::Add(const UnitList& units, const ImageRow& row, State all, State onBand,
                std::int8_t by) {
  const auto raise = [&](std::size_t unit, std::size_t column, State state) {
    if (state == State::kNone) return;
    for (Brought& each : brought_) {
      if (each.unit != unit || each.column != column) continue;
      if (each.by < 0 || (by >= 0 && by < each.by)) each.by = by;
      each.state = std::max(each.state, state);
      return;
    }
    brought_.push_back({unit, column, state, by});
  };
  const int column = columnOfBand_[row.band];
  for (const std::size_t unit : units) {
    raise(unit, 0, all);
    if (column > 0) raise(unit, static_cast<std::size_t>(column), onBand);
  }
}

void Judge::Bring(const ImageRow& row) {
  logged_.clear();
  UnitsOf(row, logged_);
  const bool confirmed = (row.services & counting_) != 0;
  const Credit credit = row.besides == 0 ? Credit() : CreditOf(row);
  const State worked = row.key < 0 ? State::kNone : State::kWorked;
  Add(logged_, row, worked, worked, -1);
  bool isRecorded = false;
  std::int8_t by = -1;
  for (std::size_t i = 0; confirmed && i < services_.size(); ++i) {
    const Counting& counting = award_.counting[i];
    if ((row.services & services_[i].bit) == 0) continue;
    if (!counting.field.empty() &&
        (!services_[i].field || !Keeps(row, counting, *services_[i].field))) {
      continue;
    }
    const auto number = static_cast<std::int8_t>(i);
    if (by < 0) by = number;
    if (counting.ofRecord) {
      recorded_.clear();
      UnitsOfRecord(row, services_[i].number, recorded_);
      isRecorded = isRecorded || !recorded_.empty();
      Add(recorded_, row, State::kConfirmed, State::kConfirmed, number);
      if (!recorded_.empty() && (credit.all || credit.band || credit.mode)) {
        const auto given = [](bool yes) { return yes ? State::kCredited : State::kNone; };
        Add(recorded_, row, given(group_ ? credit.mode : credit.all),
            given(credit.band && (!group_ || credit.mode)), number);
      }
    } else {
      Add(logged_, row, State::kConfirmed, State::kConfirmed, number);
    }
  }
  if (isRecorded || !(credit.all || credit.band || credit.mode)) return;
  const auto given = [](bool yes) { return yes ? State::kCredited : State::kNone; };
  Add(logged_, row, given(group_ ? credit.mode : credit.all),
      given(credit.band && (!group_ || credit.mode)), by);
}

}  // namespace brenvo::diplomi
