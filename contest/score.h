// What a contest log is worth.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "contact.h"

namespace brenvo::contest {

// The country code of a call; empty when it is not known.
using CountryOfCall = std::function<std::string(std::string_view call)>;

// Different texts, told apart as a unique text key does: letter case and trailing blanks make no
// difference. The first spelling stays.
class DistinctTexts {
 public:
  // True when the text is new.
  bool Add(std::string_view text);
  std::size_t Count() const { return texts_.size(); }
  const std::vector<std::string>& Texts() const { return texts_; }

 private:
  std::unordered_set<std::string> keys_;
  std::vector<std::string> texts_;
};

// The large square of a contact.
std::string SquareOf(const ScoredContact& contact);

// Sums over a log. Duplicates count in all of them but QsoValidi; their points are 0 as stored.
struct Tally {
  std::int64_t TotaleQso = 0, QsoValidi = 0;
  double TotaleQrb = 0, TotalePunti = 0;
  // The first contact of the greatest distance; empty, and distance 0, when all are 0.
  double MaxQrb = 0;
  std::int64_t ProgrMaxQrb = 0;
  std::string CallMaxQrb, LocatorMaxQrb;
  DistinctTexts Squares, Countries, Exchanges;

  // Throws what ExchangeOf and countryOf throw.
  void Add(const ScoredContact& contact, const CountryOfCall& countryOf);
};

// Of contacts, whole or scored alone.
template <class Contacts>
Tally TallyOf(const Contacts& contacts, const CountryOfCall& countryOf) {
  Tally tally;
  for (const ScoredContact& contact : contacts) tally.Add(contact, countryOf);
  return tally;
}

// Which multipliers a contest counts.
struct MultiplierSwitches {
  bool Square = false, Country = false, Exch = false;
};

// The sum of the multipliers that count, 1 when that is 0.
std::int64_t MultiplierOf(const Tally& tally, const MultiplierSwitches& switches);
double ScoreOf(const Tally& tally, const MultiplierSwitches& switches);

}  // namespace brenvo::contest
