#include "worked/worked_index.h"

#include <algorithm>
#include <cmath>
#include <span>
#include <unordered_map>
#include <utility>

#include "core/note_tag.h"
#include "folding.h"
#include "slot_table.h"

namespace brenvo::worked {
namespace {

// What a slot counts, in 32 bits: the band's number, the group, by satellite or not, the services.
constexpr unsigned kBandAt = 16, kGroupAt = 9, kSatelliteAt = 8;
constexpr std::uint32_t kServiceBits = 0xFF, kSatelliteBit = 1U << kSatelliteAt,
                        kGroupBits = 7U << kGroupAt, kBandBits = 0xFFFFU << kBandAt;

// Contacts without a band have the number 0. Bands beyond the most that are told apart, of a log
// full of rubbish, count as one that nobody can ask for.
constexpr std::uint16_t kNoBand = 0, kMostBands = 1000, kOtherBand = 0xFFFF;

constexpr std::uint64_t kSeedOfBands = 100, kSeedOfModes = 101, kSeedOfPropagations = 102;

std::uint64_t SeedOf(Kind kind) { return static_cast<std::uint64_t>(kind) + 1; }

std::optional<std::uint64_t> TextKey(Kind kind, std::string_view text) {
  text = WithoutTrailingBlanks(text);
  if (text.empty()) return std::nullopt;
  return KeyOf(text, SeedOf(kind));
}

std::optional<std::uint64_t> ZoneKey(Kind kind, double zone) {
  constexpr double kLargest = 9e15;
  const double whole = std::nearbyint(zone);
  if (!(std::fabs(whole) < kLargest) || whole == 0) return std::nullopt;
  return KeyOf(static_cast<std::uint64_t>(static_cast<std::int64_t>(whole)), SeedOf(kind));
}

std::optional<std::uint64_t> SquareKey(Kind kind, std::string_view locator) {
  const std::size_t size = kind == Kind::kSquare ? 4 : 6;
  if (locator.size() < size) return std::nullopt;
  const std::string_view square = locator.substr(0, size);
  for (const char c : square) {
    if (c <= ' ' || c > '~') return std::nullopt;
  }
  return KeyOf(square, SeedOf(kind));
}

std::optional<std::uint64_t> ProvinceKey(const Rules& rules, std::string_view country,
                                         std::string_view province) {
  const auto key = TextKey(Kind::kProvincia, province);
  if (!key || WithoutTrailingBlanks(country).empty()) return std::nullopt;
  return KeyOf(rules.CountryOfProvinces(country), *key);
}

}  // namespace

struct WorkedIndex::Tables {
  explicit Tables(std::size_t keys) : slots(keys) {}

  std::uint16_t BandOf(std::string_view band) const {
    if (WithoutTrailingBlanks(band).empty()) return kNoBand;
    const auto found = bands.find(KeyOf(band, kSeedOfBands));
    return found == bands.end() ? kOtherBand : found->second;
  }
  std::uint16_t BandToCount(std::string_view band) {
    const std::uint16_t known = BandOf(band);
    if (known != kOtherBand || bands.size() == kMostBands) return known;
    const auto number = static_cast<std::uint16_t>(bands.size() + 1);
    bands.emplace(KeyOf(band, kSeedOfBands), number);
    return number;
  }

  SlotTable slots;
  std::unordered_map<std::uint64_t, std::uint16_t> bands;
  // What the rules say of the words that were met.
  std::unordered_map<std::uint64_t, ModeMeaning> modes;
  std::unordered_map<std::uint64_t, bool> propagations;
};

WorkedIndex::WorkedIndex(std::shared_ptr<const Rules> rules, std::int64_t subjects)
    : rules_(std::move(rules)),
      tables_(std::make_unique<Tables>(static_cast<std::size_t>(subjects))) {}

WorkedIndex::~WorkedIndex() = default;
WorkedIndex::WorkedIndex(WorkedIndex&& other) noexcept = default;
WorkedIndex& WorkedIndex::operator=(WorkedIndex&& other) noexcept = default;

WorkedIndex::Keys WorkedIndex::KeysOf(const Contact& contact) {
  Keys all;
  const auto add = [&](const std::optional<std::uint64_t>& key) {
    if (key) all.keys[all.count++] = *key;
  };
  add(TextKey(Kind::kCall, contact.Call));
  add(TextKey(Kind::kPrefisso, contact.Prefisso));
  add(TextKey(Kind::kCountry, contact.Country));
  add(ZoneKey(Kind::kZonaCQ, contact.ZonaCQ));
  add(ZoneKey(Kind::kZonaITU, contact.ZonaITU));
  add(TextKey(Kind::kContinente, contact.Continente));
  add(ProvinceKey(*rules_, contact.Country, contact.Provincia));
  add(SquareKey(Kind::kSquare, contact.Locator));
  add(SquareKey(Kind::kSquare6, contact.Locator));
  all.slot = SlotOf(contact);
  all.whole = true;
  return all;
}

std::uint32_t WorkedIndex::SlotOf(const Contact& contact) {
  const auto meaningOf = [&](std::string_view mode) {
    const auto [met, isNew] = tables_->modes.try_emplace(KeyOf(mode, kSeedOfModes));
    if (isNew) met->second = rules_->MeaningOf(mode);
    return met->second;
  };
  ModeMeaning meaning = meaningOf(contact.Modo);
  if (meaning.satellite) {
    meaning.group = meaningOf(core::ParseSatelliteNote(contact.Note).mode).group;
  } else if (!contact.Propagazione.empty()) {
    const auto [met, isNew] =
        tables_->propagations.try_emplace(KeyOf(contact.Propagazione, kSeedOfPropagations));
    if (isNew) met->second = rules_->IsSatellite(contact.Propagazione);
    meaning.satellite = met->second;
  }
  return static_cast<std::uint32_t>(tables_->BandToCount(contact.Banda)) << kBandAt |
         static_cast<std::uint32_t>(meaning.group) << kGroupAt |
         (meaning.satellite ? kSatelliteBit : 0) | contact.confirmedBy;
}

void WorkedIndex::Count(const Keys& keys) {
  if (!keys.whole) return;
  for (std::size_t i = 0; i < keys.count; ++i) tables_->slots.Add(keys.keys[i], keys.slot);
  ++contacts_;
}

void WorkedIndex::Add(const Contact& contact) { Count(KeysOf(contact)); }

void WorkedIndex::Filler::Add(const Contact& contact) {
  index_.Count(last_);
  last_ = index_.KeysOf(contact);
  for (std::size_t i = 0; i < last_.count; ++i) index_.tables_->slots.Prepare(last_.keys[i]);
}

bool WorkedIndex::Remove(const Contact& contact) {
  const Keys all = KeysOf(contact);
  const auto keys = std::span(all.keys).first(all.count);
  const bool there = std::ranges::all_of(
      keys, [&](std::uint64_t key) { return tables_->slots.Count(key, all.slot) > 0; });
  if (!there) return false;
  for (const std::uint64_t key : keys) tables_->slots.Remove(key, all.slot);
  --contacts_;
  return true;
}

Answer WorkedIndex::Ask(const Subject& subject, const Filter& filter) const {
  std::optional<std::uint64_t> key;
  switch (subject.kind) {
    case Kind::kZonaCQ:
    case Kind::kZonaITU:
      key = ZoneKey(subject.kind, subject.zone);
      break;
    case Kind::kSquare:
    case Kind::kSquare6:
      key = SquareKey(subject.kind, subject.text);
      break;
    case Kind::kProvincia:
      key = ProvinceKey(*rules_, subject.country, subject.text);
      break;
    default:
      key = TextKey(subject.kind, subject.text);
  }
  if (!key) return {};

  std::uint32_t bits = 0, wanted = 0;
  if (filter.band) {
    const std::uint16_t band = tables_->BandOf(*filter.band);
    if (band == kOtherBand) return {};
    bits |= kBandBits;
    wanted |= static_cast<std::uint32_t>(band) << kBandAt;
  }
  if (filter.group) {
    bits |= kGroupBits;
    wanted |= static_cast<std::uint32_t>(*filter.group) << kGroupAt;
  }
  if (filter.satellite) {
    bits |= kSatelliteBit;
    wanted |= *filter.satellite ? kSatelliteBit : 0;
  }
  Answer answer;
  std::uint32_t services = 0;
  tables_->slots.ForEach(*key, [&](const SlotTable::Slot& slot) {
    if ((slot.what & bits) != wanted) return;
    answer.contacts += slot.count;
    services |= slot.what & kServiceBits;
  });
  if (answer.contacts == 0) return answer;
  answer.confirmedBy =
      static_cast<ServiceSet>(services & filter.services & rules_->CountingFor(subject.kind));
  answer.state = answer.confirmedBy != 0 ? State::kConfirmed : State::kWorked;
  return answer;
}

void WorkedIndex::Shrink() { tables_->slots.Shrink(); }

std::size_t WorkedIndex::Bytes() const { return sizeof *this + tables_->slots.Bytes(); }

bool operator==(const WorkedIndex& a, const WorkedIndex& b) {
  if (a.contacts_ != b.contacts_) return false;
  // Bands are numbered as they come.
  std::unordered_map<std::uint32_t, std::uint32_t> numbers = {{kNoBand, kNoBand},
                                                              {kOtherBand, kOtherBand}};
  for (const auto& [key, number] : a.tables_->bands) {
    const auto found = b.tables_->bands.find(key);
    numbers[number] = found == b.tables_->bands.end() ? kOtherBand : found->second;
  }
  bool same = true;
  std::size_t slots = 0, others = 0;
  a.tables_->slots.ForEach([&](std::uint64_t key, const SlotTable::Slot& slot) {
    ++slots;
    const std::uint32_t band = numbers.at(slot.what >> kBandAt);
    const std::uint32_t what = (slot.what & ~kBandBits) | band << kBandAt;
    same = same && b.tables_->slots.Count(key, what) == slot.count;
  });
  b.tables_->slots.ForEach([&](std::uint64_t, const SlotTable::Slot&) { ++others; });
  return same && slots == others;
}

}  // namespace brenvo::worked
