// The index's answers worked out from the log by plain loops.
#pragma once

#include <map>
#include <set>
#include <string>
#include <string_view>
#include <tuple>
#include <vector>

#include "base/text.h"
#include "core/log_contact.h"
#include "core/note_tag.h"
#include "core/session.h"
#include "worked/worked_index.h"

namespace brenvo::worked {

struct PlainQuestion {
  Kind kind;
  std::string value, country;  // the country of a province
  double zone = 0;
  friend auto operator<=>(const PlainQuestion&, const PlainQuestion&) = default;

  Subject AsSubject() const {
    switch (kind) {
      case Kind::kCall:
        return Subject::Call(value);
      case Kind::kPrefisso:
        return Subject::Prefisso(value);
      case Kind::kCountry:
        return Subject::Country(value);
      case Kind::kZonaCQ:
        return Subject::ZonaCQ(zone);
      case Kind::kZonaITU:
        return Subject::ZonaITU(zone);
      case Kind::kContinente:
        return Subject::Continente(value);
      case Kind::kProvincia:
        return Subject::Provincia(country, value);
      case Kind::kSquare:
        return Subject::Square(value);
      case Kind::kSquare6:
        return Subject::Square6(value);
    }
    throw std::logic_error("no such kind");
  }
};

class PlainAnswers {
 public:
  PlainAnswers(core::Session& session, const Rules& rules) : rules_(rules) {
    std::map<std::int64_t, ServiceSet> kept;
    const auto fields = session.Db.OpenSnapshot("select QsoNr,Campo,Valore from LogAdif");
    for (; !fields->EOF_(); fields->MoveNext()) {
      kept[fields->Field(0).Integer()] |=
          rules.ByField(fields->Field(1).Text(), fields->Field(2).Text());
    }
    const auto rows = session.Db.OpenSnapshot("select * from Log");
    for (; !rows->EOF_(); rows->MoveNext()) {
      contacts_.push_back({core::ReadContact(*rows), kept[rows->Field(0).Integer()]});
    }
  }

  std::int64_t Contacts() const { return static_cast<std::int64_t>(contacts_.size()); }

  // Whatever may be asked about these contacts.
  std::set<PlainQuestion> Questions() const {
    std::set<PlainQuestion> questions;
    for (const auto& [contact, kept] : contacts_) {
      for (const Kind kind :
           {Kind::kCall, Kind::kPrefisso, Kind::kCountry, Kind::kZonaCQ, Kind::kZonaITU,
            Kind::kContinente, Kind::kProvincia, Kind::kSquare, Kind::kSquare6}) {
        questions.insert(QuestionOf(contact, kind));
      }
    }
    return questions;
  }

  Answer Ask(const PlainQuestion& question, const Filter& filter) const {
    Answer answer;
    for (const auto& [contact, kept] : contacts_) {
      if (!IsSomething(question) || !Matches(QuestionOf(contact, question.kind), question))
        continue;
      const ModeMeaning meaning = rules_.MeaningOf(contact.Modo);
      const bool satellite = meaning.satellite || rules_.IsSatellite(contact.Propagazione);
      const Group group = meaning.satellite
                              ? rules_.MeaningOf(core::ParseSatelliteNote(contact.Note).mode).group
                              : meaning.group;
      if (filter.band && !Same(contact.Banda, *filter.band)) continue;
      if (filter.group && group != *filter.group) continue;
      if (filter.satellite && satellite != *filter.satellite) continue;
      ++answer.contacts;
      ServiceSet by = kept;
      if (contact.QslRicevuta) by |= rules_.ByCard();
      by &= filter.services;
      by &= rules_.CountingFor(question.kind);
      answer.confirmedBy |= by;
    }
    answer.state = answer.contacts == 0      ? State::kNew
                   : answer.confirmedBy != 0 ? State::kConfirmed
                                             : State::kWorked;
    return answer;
  }

 private:
  static bool Same(std::string_view a, std::string_view b) {
    return base::UpperAscii(base::RTrim(a)) == base::UpperAscii(base::RTrim(b));
  }
  static PlainQuestion QuestionOf(const core::LogContact& contact, Kind kind) {
    switch (kind) {
      case Kind::kCall:
        return {kind, contact.Call, ""};
      case Kind::kPrefisso:
        return {kind, contact.Prefisso, ""};
      case Kind::kCountry:
        return {kind, contact.Country, ""};
      case Kind::kZonaCQ:
        return {kind, "", "", contact.ZonaCQ};
      case Kind::kZonaITU:
        return {kind, "", "", contact.ZonaITU};
      case Kind::kContinente:
        return {kind, contact.Continente, ""};
      case Kind::kProvincia:
        return {kind, contact.Provincia, contact.Country};
      case Kind::kSquare:
        return {kind, contact.Locator.size() < 4 ? "" : contact.Locator.substr(0, 4), ""};
      case Kind::kSquare6:
        return {kind, contact.Locator.size() < 6 ? "" : contact.Locator.substr(0, 6), ""};
    }
    throw std::logic_error("no such kind");
  }
  static bool IsSomething(const PlainQuestion& question) {
    if (question.zone != 0) return true;
    if (question.kind == Kind::kProvincia && base::RTrim(question.country).empty()) return false;
    return !base::RTrim(question.value).empty();
  }
  bool Matches(const PlainQuestion& a, const PlainQuestion& b) const {
    return Same(a.value, b.value) && a.zone == b.zone &&
           Same(rules_.CountryOfProvinces(a.country), rules_.CountryOfProvinces(b.country));
  }

  const Rules& rules_;
  std::vector<std::pair<core::LogContact, ServiceSet>> contacts_;
};

}  // namespace brenvo::worked
