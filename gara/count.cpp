#include "gara/count.h"

#include <algorithm>
#include <unordered_map>
#include <unordered_set>

#include "base/text.h"
#include "core/call_forms.h"
#include "worth.h"

namespace brenvo::gara {
namespace {

constexpr char kBetween = '\x1f';  // no text of a log holds it

void AddPer(std::string& key, Per per, const Contact& contact) {
  if (per == Per::kContest) return;
  key += kBetween;
  key += contact.band;
  if (per != Per::kBandAndMode) return;
  key += kBetween;
  key += ModeFamily(contact.mode);
}

}  // namespace

struct Count::State {
  State(const Rule& r, OwnEntry o) : rule(r), own(std::move(o)) {}

  std::string StationKey(const Contact& contact) const {
    std::string key = core::BaseCall(contact.call);
    AddPer(key, rule.duplicates, contact);
    return key;
  }
  std::string MultiplierKey(std::size_t number, std::string_view value,
                            const Contact& contact) const {
    std::string key = std::to_string(number) + kBetween;
    key += value;
    AddPer(key, rule.multipliers[number].per, contact);
    return key;
  }
  // `found` gets the key of each multiplier that is new.
  Worth Weigh(const Contact& contact, std::vector<std::string>* found) const {
    Worth worth;
    if (const auto at = stations.find(StationKey(contact)); at != stations.end()) {
      worth.duplicateOf = at->second;
      return worth;
    }
    worth.points = PointsOf(rule, own, contact);
    for (std::size_t i = 0; i < rule.multipliers.size(); ++i) {
      std::string value = MultiplierOf(rule.multipliers[i], contact);
      if (value.empty()) continue;
      std::string key = MultiplierKey(i, value, contact);
      if (multipliers.contains(key)) continue;
      worth.multipliers.push_back(std::move(value));
      if (found != nullptr) found->push_back(std::move(key));
    }
    return worth;
  }
  BandScore& Band(std::string_view band) {
    for (BandScore& each : bands) {
      if (each.band == band) return each;
    }
    return bands.emplace_back(BandScore{std::string(band), 0, 0, 0, 0});
  }
  void Clear() {
    worths.clear();
    stations.clear();
    multipliers.clear();
    bands.clear();
  }

  const Rule& rule;
  OwnEntry own;
  std::vector<Worth> worths;
  std::unordered_map<std::string, std::size_t> stations;  // the first contact with each
  std::unordered_set<std::string> multipliers;
  std::vector<BandScore> bands;
};

Count::Count(const Rule& rule, OwnEntry own)
    : state_(std::make_unique<State>(rule, std::move(own))) {}
Count::~Count() = default;
Count::Count(Count&&) noexcept = default;
Count& Count::operator=(Count&&) noexcept = default;

const Worth& Count::Add(const Contact& contact) {
  std::vector<std::string> found;
  Worth worth = state_->Weigh(contact, &found);
  BandScore& band = state_->Band(contact.band);
  ++band.contacts;
  if (worth.duplicateOf) {
    ++band.duplicates;
  } else {
    state_->stations.emplace(state_->StationKey(contact), state_->worths.size());
  }
  band.points += worth.points;
  band.multipliers += std::ssize(found);
  for (std::string& key : found) state_->multipliers.insert(std::move(key));
  return state_->worths.emplace_back(std::move(worth));
}

Worth Count::Try(const Contact& contact) const { return state_->Weigh(contact, nullptr); }

void Count::Reset(std::span<const Contact> contacts) {
  state_->Clear();
  state_->worths.reserve(contacts.size());
  for (const Contact& contact : contacts) Add(contact);
}

const std::vector<Worth>& Count::Worths() const { return state_->worths; }

Score Count::Total() const {
  const Rule& rule = state_->rule;
  Score score;
  for (const std::string& band : rule.bands) {
    for (const BandScore& each : state_->bands) {
      if (each.band == band) score.bands.push_back(each);
    }
  }
  for (const BandScore& each : state_->bands) {
    if (std::ranges::find(rule.bands, each.band) == rule.bands.end()) score.bands.push_back(each);
  }
  const bool multiplies = !rule.multipliers.empty();
  for (const BandScore& each : score.bands) {
    score.contacts += each.contacts;
    score.duplicates += each.duplicates;
    score.points += each.points;
    score.multipliers += each.multipliers;
    score.total += multiplies ? each.points * each.multipliers : each.points;
  }
  if (!rule.scorePerBand && multiplies) score.total = score.points * score.multipliers;
  return score;
}

}  // namespace brenvo::gara
