#include "entities/resolver.h"

#include <fmt/format.h>

#include <algorithm>
#include <bit>
#include <functional>
#include <unordered_map>
#include <vector>

#include "call_parts.h"
#include "prefix_trie.h"

namespace brenvo::entities {
namespace {

// A table of prefixes that knows what was there at other times for a good part of them, and of most
// of the world, is asked before those that know today alone.
constexpr std::size_t kMostOfTheWorld = 100;
constexpr std::size_t kGoodPart = 20;  // one in so many

constexpr int kItaly = 248, kSardinia = 225, kArgentina = 100, kAntarctica = 13;
constexpr int kEuropeanRussia = 54, kAsiaticRussia = 15;
// The bases of the United States in Antarctica, where it tells the place; in front of letters it is
// of the states.
constexpr std::string_view kBasesOfTheStates = "KC4";

struct Packed {
  Span when;
  std::uint32_t text = 0;
  std::uint16_t entity = 0, table = 0;
  std::uint8_t length = 0, plain = 0, cq = 0, itu = 0, continent = 0, area = 0;
  RuleKind kind = RuleKind::kPrefix;
  bool deletedEntity = false, strong = false;
};

std::int64_t Width(const Span& span) {
  if (span.HasFrom() && span.HasTo()) return span.to - span.from;
  return std::numeric_limits<std::int64_t>::max() - (span.IsOpen() ? 0 : 1);
}

// A few short words, by their number.
class Words {
 public:
  std::uint8_t NumberOf(std::string_view word) {
    const auto known = std::ranges::find(words_, word);
    if (known != words_.end()) return static_cast<std::uint8_t>(known - words_.begin());
    if (words_.size() == 255) return 0;
    words_.emplace_back(word);
    return static_cast<std::uint8_t>(words_.size() - 1);
  }
  std::string_view operator[](std::uint8_t number) const { return words_[number]; }

 private:
  std::vector<std::string> words_ = {""};
};

}  // namespace

class Resolver::Work {
 public:
  explicit Work(std::span<const Table* const> tables) {
    for (auto table = tables.rbegin(); table != tables.rend(); ++table) {
      for (const Entity& each : (*table)->entities) TakeEntity(each);
    }
    for (const Table* table : tables) TakeRules(*table);
    FinishCalls();
    prefixes_.Finish();
  }

  const Entity* Find(int number) const {
    const auto found = entities_.find(number);
    return found == entities_.end() ? nullptr : &found->second;
  }

  const Entity* FindCountry(std::string_view code) const {
    const auto found = byCountry_.find(std::string(code));
    return found == byCountry_.end() ? nullptr : Find(found->second);
  }

  Answer Resolve(std::string_view typed, base::DateTime utc, bool byCall) const {
    const std::string call = CallText(typed);
    if (call.empty()) return {};
    const std::int64_t second = utc.Seconds();
    if (byCall) {
      if (const Packed* rule = BestCall(call, second)) return WithZone(By(*rule), call, second);
    }
    const CallParts parts =
        PartsOf(call, [&](std::string_view part) { return PrefixIn(part, second); });
    if (parts.mobile) {
      Answer answer;
      answer.reason = Reason::kMobile;
      return answer;
    }
    if (parts.base.empty()) return {};
    if (call.find('/') != std::string::npos) {
      // "3D2ABC/R" by a rule of its own.
      Answer whole = ByWhole(call, second);
      if (whole.what != nullptr) return WithZone(whole, call, second);
      whole = BySuffix(call, second);
      if (whole.what != nullptr) return WithZone(whole, call, second);
    }
    if (!parts.place.empty()) return WithZone(AtPlace(parts.place, second), call, second);
    return WithZone(OfStation(parts, second, byCall), call, second);
  }

 private:
  Answer OfStation(const CallParts& parts, std::int64_t second, bool byCall) const {
    const Answer home = OfBase(parts.base, second);
    if (parts.province != 0 && home.entity == kArgentina) {
      const Answer there = ByPrefix(std::string("LU1") + parts.province, second);
      if (there.what != nullptr) return there;
    }
    if (parts.digit == 0) {
      if (const Packed* rule = byCall ? BestCall(parts.base, second) : nullptr) return By(*rule);
      return home;
    }
    if (const Packed* rule = byCall ? BestCall(parts.base, second) : nullptr) {
      // Listed for its country, it stays there; listed for its zone, it has left that.
      if (rule->entity != home.entity) return By(*rule);
    }
    // The second district of Russia is Kaliningrad, whoever visits.
    if (parts.digit == '2' && (home.entity == kEuropeanRussia || home.entity == kAsiaticRussia)) {
      const Answer kaliningrad = ByPrefix("UA2", second);
      if (kaliningrad.what != nullptr) return kaliningrad;
    }
    // The districts 0 and 9 of Italy are not Sardinia and Sicily for those that visit.
    if (home.entity == kItaly || home.entity == kSardinia) return home;
    const std::string moved = InDistrict(
        parts.base, parts.digit, [&](std::string_view part) { return PrefixIn(part, second); });
    const Answer there = ByPrefix(moved, second);
    return there.what != nullptr ? there : home;
  }

  Answer AtPlace(std::string_view place, std::int64_t second) const {
    Answer answer = ByPrefix(place, second);
    const Entity* const antarctica = place == kBasesOfTheStates ? Find(kAntarctica) : nullptr;
    if (answer.what == nullptr || antarctica == nullptr) return answer;
    answer.what = antarctica;
    answer.entity = antarctica->number;
    answer.cq = antarctica->cq;
    answer.itu = antarctica->itu;
    answer.continent = antarctica->continent;
    answer.area = {};
    return answer;
  }

  std::string_view PrefixIn(std::string_view part, std::int64_t second) const {
    const Answer answer = ByPrefix(part, second);
    return answer.what == nullptr ? std::string_view() : answer.rule;
  }

  Answer OfBase(std::string_view base, std::int64_t second) const {
    if (!IsKg4OfTheStates(base)) return ByPrefix(base, second);
    Answer pattern = ByWhole(base, second);
    return pattern.what != nullptr ? pattern : ByPrefix("K4" + std::string(base.substr(3)), second);
  }

  void TakeEntity(const Entity& told) {
    const auto [at, isNew] = entities_.try_emplace(told.number, told);
    if (!isNew && !at->second.listedOnly) at->second.listedOnly = told.listedOnly;
    if (isNew && !told.country.empty()) byCountry_.try_emplace(told.country, told.number);
  }

  void TakeRules(const Table& table) {
    const auto number = static_cast<std::uint16_t>(files_.size());
    files_.push_back(table.file);
    std::size_t prefixes = 0, dated = 0;
    std::vector<bool> told(10000);
    std::size_t world = 0;
    for (const Rule& rule : table.rules) {
      if (rule.kind != RuleKind::kPrefix) continue;
      ++prefixes;
      if (!rule.when.IsOpen()) ++dated;
      if (rule.entity > 0 && rule.entity < std::ssize(told) &&
          !told[static_cast<std::size_t>(rule.entity)]) {
        told[static_cast<std::size_t>(rule.entity)] = true;
        ++world;
      }
    }
    const bool strong = world >= kMostOfTheWorld && dated * kGoodPart >= prefixes;
    for (const Rule& rule : table.rules) TakeRule(rule, number, strong);
  }

  void TakeRule(const Rule& rule, std::uint16_t table, bool strong) {
    if (rule.entity < 0 || (rule.entity > 0 && Find(rule.entity) == nullptr)) return;
    if (rule.text.size() > 200) return;
    Packed packed;
    packed.when = rule.when;
    packed.entity = static_cast<std::uint16_t>(rule.entity);
    packed.table = table;
    packed.cq = static_cast<std::uint8_t>(rule.cq);
    packed.itu = static_cast<std::uint8_t>(rule.itu);
    packed.continent = continents_.NumberOf(rule.continent);
    packed.area = areas_.NumberOf(rule.area);
    packed.kind = rule.kind;
    packed.deletedEntity = rule.deletedEntity;
    packed.strong = strong || rule.when.HasTo();
    packed.text = static_cast<std::uint32_t>(texts_.size());
    packed.length = static_cast<std::uint8_t>(rule.text.size());
    const auto at = static_cast<std::uint32_t>(rules_.size());
    const bool plain = IsPlainText(rule.text);
    if (plain && rule.kind != RuleKind::kPrefix) {
      calls_.push_back(at);
    } else {
      std::optional<Pattern> pattern = ParsePattern(rule.text);
      if (!pattern) return;
      // What is a call in all but one sign is as good as whole.
      pattern->whole = pattern->whole || rule.kind != RuleKind::kPrefix;
      packed.plain = static_cast<std::uint8_t>(pattern->plain);
      const std::size_t stroke = rule.text.find('/');
      if (plain && stroke != std::string::npos) {
        suffixed_.push_back(at);
      } else {
        prefixes_.Add(*pattern, at);
      }
    }
    texts_ += rule.text;
    rules_.push_back(packed);
  }

  void FinishCalls() {
    texts_.shrink_to_fit();
    std::ranges::stable_sort(calls_, {}, [&](std::uint32_t at) { return TextOf(rules_[at]); });
    std::size_t different = 0;
    for (std::size_t i = 0; i < calls_.size(); ++i) different += i == 0 || !SameAsLast(i);
    slots_.assign(std::bit_ceil(different * 2 + 1), 0);
    for (std::size_t i = 0; i < calls_.size(); ++i) {
      if (i > 0 && SameAsLast(i)) continue;
      std::size_t slot = SlotOf(TextOf(rules_[calls_[i]]));
      while (slots_[slot] != 0) slot = (slot + 1) % slots_.size();
      slots_[slot] = static_cast<std::uint32_t>(i + 1);
    }
  }

  bool SameAsLast(std::size_t i) const {
    return TextOf(rules_[calls_[i]]) == TextOf(rules_[calls_[i - 1]]);
  }
  std::string_view TextOf(const Packed& rule) const {
    return std::string_view(texts_).substr(rule.text, rule.length);
  }
  std::size_t SlotOf(std::string_view text) const {
    return std::hash<std::string_view>()(text) % slots_.size();
  }

  // The rules of this very call; empty for none.
  std::span<const std::uint32_t> RulesOf(std::string_view call) const {
    for (std::size_t slot = SlotOf(call); slots_[slot] != 0; slot = (slot + 1) % slots_.size()) {
      const std::size_t first = slots_[slot] - 1;
      if (TextOf(rules_[calls_[first]]) != call) continue;
      std::size_t end = first + 1;
      while (end < calls_.size() && SameAsLast(end)) ++end;
      return std::span(calls_).subspan(first, end - first);
    }
    return {};
  }

  bool IsThere(const Packed& rule, std::int64_t second) const {
    return rule.entity == 0 || Find(rule.entity)->valid.Holds(second);
  }

  const Packed* BestCall(std::string_view call, std::int64_t second) const {
    const std::span<const std::uint32_t> all = RulesOf(call);
    if (all.empty()) return nullptr;
    // Where one table knows the days of a call, another one that does not is not believed.
    const auto isDated = [&](std::uint32_t at) { return !rules_[at].when.IsOpen(); };
    const bool anyDated = std::ranges::any_of(all, isDated);
    const Packed* best = nullptr;
    for (const std::uint32_t at : all) {
      const Packed& rule = rules_[at];
      if (rule.kind == RuleKind::kZone || !rule.when.Holds(second) || !IsThere(rule, second)) {
        continue;
      }
      if (anyDated && rule.when.IsOpen() && std::ranges::none_of(all, [&](std::uint32_t other) {
            return rules_[other].table == rule.table && isDated(other);
          })) {
        continue;
      }
      if (best == nullptr || IsBetterCall(rule, *best)) best = &rule;
    }
    return best;
  }

  static bool IsBetterCall(const Packed& a, const Packed& b) {
    if (a.when.IsOpen() != b.when.IsOpen()) return !a.when.IsOpen();
    if (a.table != b.table) return a.table < b.table;
    if (Width(a.when) != Width(b.when)) return Width(a.when) < Width(b.when);
    return a.kind == RuleKind::kInvalid && b.kind != RuleKind::kInvalid;
  }

  struct Candidate {
    const Packed* rule = nullptr;
    std::size_t length = 0;

    bool IsBetterThan(const Candidate& other) const {
      if (other.rule == nullptr) return true;
      const Packed &a = *rule, &b = *other.rule;
      if (a.strong != b.strong) return a.strong;
      if (length != other.length) return length > other.length;
      if (a.plain != b.plain) return a.plain > b.plain;
      if (a.deletedEntity != b.deletedEntity) return !a.deletedEntity;
      if (a.table != b.table) return a.table < b.table;
      return Width(a.when) < Width(b.when);
    }
  };

  Answer ByPrefix(std::string_view part, std::int64_t second) const {
    return Best(part, second, false);
  }
  // By a rule as long as the call.
  Answer ByWhole(std::string_view call, std::int64_t second) const {
    return Best(call, second, true);
  }

  Answer Best(std::string_view part, std::int64_t second, bool whole) const {
    Candidate best, gone;
    prefixes_.Find(part, [&](std::uint32_t at, std::size_t length) {
      const Packed& rule = rules_[at];
      if (whole && length != part.size()) return;
      if (!rule.when.Holds(second)) return;
      const Candidate candidate{&rule, length};
      Candidate& wins = IsThere(rule, second) ? best : gone;
      if (candidate.IsBetterThan(wins)) wins = candidate;
    });
    if (best.rule != nullptr) return Counted(By(*best.rule), second);
    Answer answer;
    if (gone.rule != nullptr) {
      answer.reason = Reason::kNotThen;
      answer.would = Find(gone.rule->entity);
      answer.when = answer.would->valid;
      answer.rule = TextOf(*gone.rule);
      answer.file = files_[gone.rule->table];
    }
    return answer;
  }

  // "SV/A": what begins with the one and ends with the other.
  Answer BySuffix(std::string_view call, std::int64_t second) const {
    const std::string_view suffix = call.substr(call.rfind('/'));
    Candidate best;
    for (const std::uint32_t at : suffixed_) {
      const Packed& rule = rules_[at];
      const std::string_view text = TextOf(rule);
      const std::size_t stroke = text.find('/');
      if (text.substr(stroke) != suffix || !call.starts_with(text.substr(0, stroke))) continue;
      if (!rule.when.Holds(second) || !IsThere(rule, second)) continue;
      const Candidate candidate{&rule, text.size()};
      if (candidate.IsBetterThan(best)) best = candidate;
    }
    return best.rule == nullptr ? Answer() : Counted(By(*best.rule), second);
  }

  Answer Counted(Answer answer, std::int64_t second) const {
    if (answer.what == nullptr || !answer.what->listedOnly ||
        !answer.what->listedOnly->Holds(second)) {
      return answer;
    }
    Answer none;
    none.reason = Reason::kNotListed;
    none.would = answer.what;
    none.rule = answer.rule;
    none.file = answer.file;
    return none;
  }

  Answer By(const Packed& rule) const {
    Answer answer;
    answer.rule = TextOf(rule);
    answer.when = rule.when;
    answer.file = files_[rule.table];
    if (rule.kind == RuleKind::kInvalid || rule.entity == 0) {
      answer.reason = Reason::kInvalid;
      return answer;
    }
    answer.reason = rule.kind == RuleKind::kCall ? Reason::kCall : Reason::kPrefix;
    answer.what = Find(rule.entity);
    answer.entity = rule.entity;
    answer.cq = rule.cq != 0 ? rule.cq : answer.what->cq;
    answer.itu = rule.itu != 0 ? rule.itu : answer.what->itu;
    answer.continent = rule.continent != 0 ? continents_[rule.continent]
                                           : std::string_view(answer.what->continent);
    answer.area = areas_[rule.area];
    return answer;
  }

  Answer WithZone(Answer answer, std::string_view call, std::int64_t second) const {
    if (answer.what == nullptr) return answer;
    for (const std::uint32_t at : RulesOf(call)) {
      const Packed& rule = rules_[at];
      if (rule.kind == RuleKind::kZone && rule.when.Holds(second)) answer.cq = rule.cq;
    }
    return answer;
  }

  std::unordered_map<int, Entity> entities_;
  std::unordered_map<std::string, int> byCountry_;
  std::vector<std::string> files_;
  Words continents_, areas_;
  std::string texts_;
  std::vector<Packed> rules_;
  std::vector<std::uint32_t> calls_;     // rules of whole calls, by their texts
  std::vector<std::uint32_t> slots_;     // of these, the first of each text, from 1 on
  std::vector<std::uint32_t> suffixed_;  // rules such as "SV/A"
  PrefixTrie prefixes_;
};

Resolver::Resolver(std::span<const Table* const> tables)
    : work_(std::make_unique<const Work>(tables)) {}
Resolver::~Resolver() = default;
Resolver::Resolver(Resolver&&) noexcept = default;
Resolver& Resolver::operator=(Resolver&&) noexcept = default;

Answer Resolver::Resolve(std::string_view call, base::DateTime utc) const {
  return work_->Resolve(call, utc, true);
}
Answer Resolver::ResolveByPrefix(std::string_view call, base::DateTime utc) const {
  return work_->Resolve(call, utc, false);
}
const Entity* Resolver::Find(int number) const { return work_->Find(number); }
const Entity* Resolver::FindCountry(std::string_view code) const {
  return work_->FindCountry(code);
}

std::string Explanation(std::string_view call, const Answer& answer) {
  const auto with = [](std::string text, const Span& when) {
    const std::string days = SpanText(when);
    if (!days.empty()) text += ' ' + days;
    return text;
  };
  switch (answer.reason) {
    case Reason::kCall:
    case Reason::kPrefix:
      return with(fmt::format("{}: {}", call, answer.what->name), answer.when);
    case Reason::kInvalid:
      return with(fmt::format("{}: non conta per nessun country", call), answer.when);
    case Reason::kMobile:
      return fmt::format("{}: in mare o in volo non conta per nessun country", call);
    case Reason::kNotThen:
      return with(fmt::format("{}: {} conta solo", call, answer.would->name), answer.when);
    case Reason::kNotListed:
      return fmt::format("{}: {} conta solo per i nominativi elencati", call, answer.would->name);
    case Reason::kUnknown:
      break;
  }
  return fmt::format("{}: nessuna regola di quel giorno", call);
}

}  // namespace brenvo::entities
