// The same count by texts alone, written apart, for proof: for each unit and band it looks at every
// contact.
#pragma once

#include <set>
#include <string>
#include <vector>

#include "base/text.h"
#include "core/wpx_prefix.h"
#include "diplomi/count.h"
#include "tests/diplomi/awards.h"

namespace brenvo::diplomi {

// A contact as it is written down; `group` is the name of its group of modes.
struct PlainContact {
  std::int64_t key = 0;
  base::DateTime utc;
  std::string call, country, continent, area, province, locator, band, group, propagation;
  int zoneCq = 0;
  bool satellite = false;
  std::int64_t station = 1;
  std::vector<std::string> services;
  std::map<std::string, std::string> fields;
  std::vector<ExampleRecord> records;
};

inline void AddPlain(LogImage& log, const PlainContact& plain, const worked::Rules& rules) {
  SeenContact seen;
  seen.key = plain.key;
  seen.utc = plain.utc;
  seen.call = plain.call;
  seen.country = plain.country;
  seen.continent = plain.continent;
  seen.area = plain.area;
  seen.province = plain.province;
  seen.locator = plain.locator;
  seen.band = plain.band;
  seen.propagation = plain.propagation;
  seen.zoneCq = plain.zoneCq;
  seen.satellite = plain.satellite;
  seen.station = plain.station;
  seen.group = rules.FindGroup(plain.group).value_or(worked::kNoGroup);
  const auto number = [&](const std::string& name) {
    const auto& names = rules.Services();
    return static_cast<std::size_t>(std::ranges::find(names, name) - names.begin());
  };
  for (const std::string& name : plain.services) {
    seen.services |= static_cast<worked::ServiceSet>(1U << number(name));
  }
  std::vector<Beside> beside;
  const auto put = [&](std::size_t what, const std::string& text) {
    if (!text.empty()) beside.push_back({static_cast<std::uint16_t>(what), log.texts.Of(text)});
  };
  for (const auto& [field, value] : plain.fields) {
    if (const auto at = log.FieldAt(field)) put(*at, value);
  }
  for (const ExampleRecord& record : plain.records) {
    put(kRecordLocator + number(record.service), record.locator);
    put(kRecordIota + number(record.service), record.iota);
  }
  seen.beside = beside;
  log.Add(seen);
}

class SlowCount {
 public:
  SlowCount(const Award& award, const std::vector<PlainContact>& contacts, const World& world,
            const Choice& choice)
      : award_(award), contacts_(contacts), world_(world), choice_(choice) {}

  // Of a unit on a band, or on all: the contact that fills it, and its state.
  Cell Of(const std::string& unit, const std::string& band) const {
    Cell best;
    for (const PlainContact& each : contacts_) {
      const State state = Brings(each, unit, band);
      if (state == State::kNone) continue;
      const bool bare = each.key < 0, bestIsBare = best.key < 0;
      const bool better = state > best.state ||
                          (state == best.state &&
                           (bare != bestIsBare                   ? bestIsBare
                            : each.utc.Seconds() != best.seconds ? each.utc.Seconds() < best.seconds
                                                                 : each.key < best.key));
      if (better) best = {state, -1, each.key, each.utc.Seconds()};
    }
    return best;
  }

 private:
  static bool In(const std::vector<std::string>& words, const std::string& word) {
    for (const std::string& each : words) {
      if (base::UpperAscii(each) == base::UpperAscii(word)) return true;
    }
    return false;
  }
  static std::set<std::string> Split(const std::string& text) {
    std::set<std::string> pieces;
    std::string piece;
    for (const char c : text + ",") {
      if (c == ',') {
        if (!piece.empty()) pieces.insert(base::UpperAscii(piece));
        piece.clear();
      } else {
        piece += c;
      }
    }
    return pieces;
  }
  const WorldCountry* Country(const std::string& code) const {
    for (const WorldCountry& each : world_.countries) {
      if (each.code == code) return &each;
    }
    return nullptr;
  }
  bool FieldSays(const PlainContact& contact, const std::string& field,
                 const std::string& value) const {
    const auto at = contact.fields.find(field);
    return at != contact.fields.end() && base::UpperAscii(at->second) == base::UpperAscii(value);
  }
  std::set<std::string> Squares(const std::string& locators) const {
    std::set<std::string> squares;
    for (const std::string& each : Split(locators)) {
      if (each.size() < 4) continue;
      squares.insert(each.substr(0, award_.unit == UnitKind::kField ? 2 : 4));
    }
    return squares;
  }

  std::set<std::string> Logged(const PlainContact& contact) const {
    switch (award_.unit) {
      case UnitKind::kWaeCountry:
        for (const Area& area : award_.areas) {
          if (!contact.area.empty() && area.area == contact.area &&
              area.country == contact.country) {
            return {area.code};
          }
        }
        [[fallthrough]];
      case UnitKind::kCountry: {
        const WorldCountry* const country = Country(contact.country);
        if (country == nullptr) return {};
        if (award_.unit == UnitKind::kWaeCountry && country->continent != "EU") return {};
        if (contact.key >= 0 && !country->valid.Holds(contact.utc.Seconds())) return {};
        return {contact.country};
      }
      case UnitKind::kCqZone: {
        if (contact.zoneCq == 0) return {};
        const std::string zone = std::to_string(contact.zoneCq);
        return {zone.size() == 1 ? "0" + zone : zone};
      }
      case UnitKind::kContinent:
        if (!In({"EU", "AF", "AS", "NA", "SA", "OC"}, contact.continent)) return {};
        return {contact.continent};
      case UnitKind::kPrefix: {
        const std::string prefix = core::WpxPrefix(contact.call);
        if (prefix.empty()) return {};
        return {prefix};
      }
      case UnitKind::kProvince: {
        if (!In(award_.countries, contact.country)) return {};
        for (const WorldProvince& each : world_.provinces) {
          if (!In(award_.countries, each.country) || each.code != contact.province) continue;
          const auto other = award_.same.find(each.code);
          return {other == award_.same.end() ? each.code : other->second};
        }
        return {};
      }
      case UnitKind::kSquare:
      case UnitKind::kField: {
        const auto several = contact.fields.find("VUCC_GRIDS");
        return Squares(several == contact.fields.end() ? contact.locator : several->second);
      }
      case UnitKind::kReference: {
        std::set<std::string> found;
        for (const std::string& field : award_.fields) {
          const auto at = contact.fields.find(field);
          if (at == contact.fields.end()) continue;
          for (const std::string& each : ReferencesIn(at->second, award_.pattern)) {
            found.insert(each);
          }
        }
        return found;
      }
    }
    return {};
  }

  State Brings(const PlainContact& contact, const std::string& unit,
               const std::string& band) const {
    const bool bare = contact.key < 0;
    if (!bare && award_.from && contact.utc < *award_.from) return State::kNone;
    if (!bare && award_.to && contact.utc >= award_.to->Later(86400)) return State::kNone;
    if (!choice_.mode.empty() && contact.group != choice_.mode) return State::kNone;
    if (contact.satellite && award_.satellite == Satellite::kNo) return State::kNone;
    if (!contact.satellite && award_.satellite == Satellite::kOnly) return State::kNone;
    if (!contact.propagation.empty() && In(award_.notPropagation, contact.propagation)) {
      return State::kNone;
    }
    const std::size_t stroke = contact.call.rfind('/');
    if (stroke != std::string::npos && In(award_.notSuffix, contact.call.substr(stroke + 1))) {
      return State::kNone;
    }
    if (!award_.bands.empty() && !In(award_.bands, contact.band)) return State::kNone;
    if (!band.empty() && contact.band != band) return State::kNone;
    // Nobody knows from where a credit without a contact was worked.
    if (choice_.station != 0 && (bare || contact.station != choice_.station)) return State::kNone;

    const std::set<std::string> logged = Logged(contact);
    State state = State::kNone;
    const auto raise = [&](State other) { state = std::max(state, other); };
    if (!bare && logged.contains(unit)) raise(State::kWorked);
    std::set<std::string> recorded;
    for (const Counting& counting : award_.counting) {
      if (!In(contact.services, counting.service)) continue;
      if (!counting.field.empty() && !FieldSays(contact, counting.field, counting.value)) continue;
      if (!counting.ofRecord) {
        if (logged.contains(unit)) raise(State::kConfirmed);
        continue;
      }
      for (const ExampleRecord& record : contact.records) {
        if (record.service != counting.service) continue;
        std::set<std::string> told;
        if (award_.unit == UnitKind::kReference) {
          for (const std::string& each : ReferencesIn(record.iota, award_.pattern)) {
            told.insert(each);
          }
        } else {
          told = Squares(record.locator);
        }
        if (told.contains(unit)) raise(State::kConfirmed);
        recorded.insert(told.begin(), told.end());
      }
    }
    const auto credits = contact.fields.find("CREDIT_GRANTED");
    if (credits == contact.fields.end()) return state;
    bool all = false, onBand = false, mode = false;
    for (const std::string& each : Split(credits->second)) {
      const std::string name = each.substr(0, each.find(':'));
      all = all || In(award_.creditAll, name);
      onBand = onBand || In(award_.creditBand, name);
      mode = mode || In(award_.creditMode, name);
    }
    const bool chosen = !choice_.mode.empty();
    const bool given = band.empty() ? (chosen ? mode : all) : onBand && (!chosen || mode);
    const bool mine = recorded.empty() ? logged.contains(unit) : recorded.contains(unit);
    if (given && mine) raise(State::kCredited);
    return state;
  }

  const Award& award_;
  const std::vector<PlainContact>& contacts_;
  const World& world_;
  const Choice& choice_;
};

}  // namespace brenvo::diplomi
