#include "card_labels.h"

#include <algorithm>
#include <map>
#include <tuple>

#include "base/text.h"
#include "core/call_forms.h"
#include "core/prefix.h"

namespace brenvo::print {
namespace {

// A word that a station can be called by.
bool IsCall(std::string_view word) {
  constexpr std::size_t kShortest = 3;
  bool letter = false, digit = false;
  for (const char c : word) {
    const bool isLetter = c >= 'A' && c <= 'Z', isDigit = c >= '0' && c <= '9';
    if (!isLetter && !isDigit && c != '/') return false;
    letter |= isLetter;
    digit |= isDigit;
  }
  return letter && digit && word.size() >= kShortest;
}

// Where a card lies in the pile.
struct Place {
  bool home = false;
  std::string country;
  char digit = ' ';
  std::string call;
  bool manager = false;
  friend auto operator<=>(const Place&, const Place&) = default;
};

Place PlaceOf(const Addressee& to, const std::string& country, const CardRules& rules,
              const std::vector<std::string>& home) {
  Place place{std::ranges::find(home, country) != home.end(), country, ' ', to.call, to.manager};
  if (IsInCountries(rules.byDigit, country, home)) {
    const std::string prefix = core::PrefixCandidate(to.call);
    if (!prefix.empty()) place.digit = prefix.back();
  }
  if (place.home) place.country.clear();  // one bureau: its regions count alone
  return place;
}

}  // namespace

Addressee AddresseeOf(std::string_view call, std::string_view manager) {
  std::string word = base::UpperAscii(base::Trim(manager));
  if (word.starts_with("VIA ")) word = base::Trim(std::string_view(word).substr(4));
  if (IsCall(word)) return {core::BaseCall(word), true};
  return {core::BaseCall(call), false};
}

std::vector<CardLabel> LabelsFor(
    const std::vector<LabelContact>& contacts, const CardRules& rules,
    const std::vector<std::string>& home, int linesALabel,
    const std::function<std::string(const std::string& call)>& countryOf) {
  std::map<std::string, std::string> countries;
  std::map<Place, std::vector<const LabelContact*>> cards;
  for (const LabelContact& each : contacts) {
    const Addressee to = AddresseeOf(each.qso.Call, each.Manager);
    const auto [known, isNew] = countries.try_emplace(to.call);
    if (isNew) known->second = base::UpperAscii(base::Trim(countryOf(to.call)));
    cards[PlaceOf(to, known->second, rules, home)].push_back(&each);
  }
  std::vector<CardLabel> labels;
  for (auto& [place, ofOne] : cards) {
    std::ranges::stable_sort(ofOne, {}, [](const LabelContact* each) {
      return std::tie(each->qso.DataQso, each->qsoNr);
    });
    for (std::size_t i = 0; i < ofOne.size(); ++i) {
      if (i % static_cast<std::size_t>(linesALabel) == 0) {
        labels.push_back({place.call, place.manager, {}});
      }
      labels.back().lines.push_back({ofOne[i]->qso, ofOne[i]->qsoNr});
    }
  }
  return labels;
}

}  // namespace brenvo::print
