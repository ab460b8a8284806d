#include "checks/log_check.h"

#include <fmt/format.h>

#include <algorithm>
#include <deque>
#include <optional>
#include <tuple>
#include <unordered_map>

#include "base/text.h"
#include "places_of_call.h"
#include "similar_call.h"

namespace brenvo::checks {
namespace {

constexpr std::int64_t kWindow = kRepeatedWithin * 60;  // seconds
// In a log without times a whole day stands at midnight.
constexpr std::size_t kMostRecent = 100;
constexpr std::size_t kRepeatsKept = 4096;

std::uint32_t HashOf(std::string_view text) {
  const std::string name = CheckFacts::Name(text);
  return name.empty() ? 0 : static_cast<std::uint32_t>(std::hash<std::string>()(name)) | 1;
}

std::string MinutesText(std::int64_t seconds) {
  const std::int64_t minutes = seconds / 60;
  if (minutes == 0) return "nello stesso minuto del";
  return minutes == 1 ? "un minuto dopo il" : fmt::format("{} minuti dopo il", minutes);
}

// What is kept of a call; what was noted last of the operator and his place, 0 for nothing.
struct CallSeen {
  std::int64_t firstQso = 0, placeQso = 0;
  std::uint32_t contacts = 0;
  std::uint32_t locator = 0, name = 0, town = 0;
  std::uint32_t place = 0,
                inPlace = 0;  // the first place, noted in placeQso, and the contacts there
  bool confirmed = false;
};

struct Place {
  std::uint32_t locator = 0, contacts = 0;
  std::int64_t firstQso = 0;
};

struct Recent {
  std::int64_t qsoNr;
  base::DateTime at;
  std::string call, banda;
};

// A contact minutes away from one with a similar call on the same band.
struct Neighbours {
  std::string call, other;
};

}  // namespace

class LogCheck::Work {
 public:
  Work(const CheckFacts& facts, std::size_t most) : facts_(facts), most_(most) {}

  void See(const CheckedContact& contact) {
    ++contacts_;
    for (const Rule& each : Rules()) {
      if (each.ofOne == nullptr) continue;
      std::string reason = each.ofOne(contact, facts_);
      if (!reason.empty()) Find(contact, each.name, std::move(reason));
    }
    const std::string call = CheckFacts::Name(contact.Call);
    if (call.empty()) return;
    if (contact.DataQso != base::DateTime()) {
      SeeRepeated(contact, call);
      SeeRecent(contact, call);
    }
    SeeCall(contact, call);
  }

  std::vector<Finding> Finish() {
    FindMoved();
    FindSimilar();
    std::ranges::sort(findings_, {}, [](const Finding& each) {
      const auto at = std::ranges::find(Rules(), each.rule, &Rule::name);
      return std::tuple(at - Rules().begin(), each.qsoNr);
    });
    return std::move(findings_);
  }

  std::int64_t Contacts() const { return contacts_; }
  std::int64_t Count() const { return count_; }

 private:
  void Find(Finding finding) {
    ++count_;
    if (findings_.size() < most_) findings_.push_back(std::move(finding));
  }
  void Find(const CheckedContact& contact, std::string_view name, std::string reason) {
    Find({contact.qsoNr, name, std::move(reason)});
  }

  // Modes of one group are one; of those in none each is its own.
  std::string KindOfMode(const CheckedContact& contact) const {
    const worked::ModeMeaning meaning = facts_.rules->MeaningOf(contact.Modo);
    const bool satellite = meaning.satellite || facts_.rules->IsSatellite(contact.Propagazione);
    const std::string kind = meaning.group == worked::kNoGroup ? CheckFacts::Name(contact.Modo)
                                                               : std::to_string(meaning.group);
    return satellite ? kind + "|sat" : kind;
  }

  void SeeRepeated(const CheckedContact& contact, const std::string& call) {
    const std::string key =
        fmt::format("{}|{}|{}", call, CheckFacts::Name(contact.Banda), KindOfMode(contact));
    const auto [last, isNew] = repeats_.try_emplace(key, contact.DataQso, contact.qsoNr);
    if (!isNew) {
      const std::int64_t after = contact.DataQso.Seconds() - last->second.first.Seconds();
      if (after <= kWindow) {
        Find(contact, rule::kRepeated,
             fmt::format("{} Qso {}, stessa banda e stesso modo", MinutesText(after),
                         last->second.second));
      }
      last->second = {contact.DataQso, contact.qsoNr};
    }
    if (repeats_.size() < forgetAt_) return;
    std::erase_if(repeats_, [&](const auto& each) {
      return contact.DataQso.Seconds() - each.second.first.Seconds() > kWindow;
    });
    forgetAt_ = std::max(kRepeatsKept, 2 * repeats_.size());
  }

  void SeeRecent(const CheckedContact& contact, const std::string& call) {
    if (HasSlash(call)) return;
    while (!recent_.empty() &&
           (recent_.size() >= kMostRecent ||
            contact.DataQso.Seconds() - recent_.front().at.Seconds() > kWindow)) {
      recent_.pop_front();
    }
    std::string banda = CheckFacts::Name(contact.Banda);
    for (const Recent& each : recent_) {
      if (each.banda == banda && !SlipBetween(each.call, call).empty()) {
        neighbours_.push_back({each.call, call});
      }
    }
    recent_.push_back({contact.qsoNr, contact.DataQso, call, std::move(banda)});
  }

  void SeeCall(const CheckedContact& contact, const std::string& call) {
    CallSeen& seen = calls_[call];
    const std::uint32_t locator = PackedLocator(CheckFacts::Name(contact.Locator));
    if (++seen.contacts == 1) seen.firstQso = contact.qsoNr;
    seen.confirmed = seen.confirmed || contact.QslRicevuta;
    if (const std::uint32_t name = HashOf(contact.Qra)) seen.name = name;
    if (const std::uint32_t town = HashOf(contact.Qth)) seen.town = town;
    if (locator == 0) return;
    seen.locator = locator;
    if (!HasSlash(call)) SeePlace(contact, call, seen, locator);
  }

  void SeePlace(const CheckedContact& contact, const std::string& call, CallSeen& seen,
                std::uint32_t locator) {
    if (seen.place == 0) {
      seen.place = locator;
      seen.placeQso = contact.qsoNr;
    }
    if (seen.place == locator || KmBetween(seen.place, locator) <= kFarAway) {
      ++seen.inPlace;
      return;
    }
    std::vector<Place>& others = elsewhere_[call];
    for (Place& each : others) {
      if (KmBetween(each.locator, locator) > kFarAway) continue;
      ++each.contacts;
      return;
    }
    if (others.size() < kMostPlaces) others.push_back({locator, 1, contact.qsoNr});
  }

  // A place that was noted once, of a station that has one place otherwise. With one contact each
  // the later one is told: nobody knows which is right.
  void FindMoved() {
    for (const auto& [call, others] : elsewhere_) {
      if (others.size() + 1 > kMostPlaces) continue;
      const CallSeen& seen = calls_.at(call);
      std::vector<Place> places = others;
      places.insert(places.begin(), {seen.place, seen.inPlace, seen.placeQso});
      const auto usual = std::ranges::max_element(places, {}, &Place::contacts);
      const auto oftener =
          std::ranges::count_if(places, [](const Place& each) { return each.contacts > 1; });
      if (oftener > 1) continue;
      for (const Place& each : places) {
        if (each.locator == usual->locator) continue;
        Find({each.firstQso, rule::kMoved,
              fmt::format("{} è a {} km da {}, dato in altri collegamenti", LocatorOf(each.locator),
                          KmBetween(each.locator, usual->locator), LocatorOf(usual->locator))});
      }
    }
  }

  void FindSimilar() {
    std::vector<std::string_view> often;
    for (const auto& [call, seen] : calls_) {
      if (seen.contacts >= kWorkedOften && !HasSlash(call)) often.push_back(call);
    }
    std::ranges::sort(often);
    const SimilarCalls similar(often);
    const auto pair = [](const Neighbours& each) { return std::tie(each.call, each.other); };
    std::ranges::sort(neighbours_, {}, pair);
    for (const auto& [call, seen] : calls_) {
      if (seen.contacts != 1 || seen.confirmed || HasSlash(call)) continue;
      for (const std::size_t at : similar.Of(call)) {
        if (FindSlip(call, seen, std::string(often[at]))) break;
      }
    }
  }

  // One slip alone is chance: calls are given out densely. Something else has to say that it is the
  // same station, and nothing that it is not.
  bool FindSlip(const std::string& call, const CallSeen& seen, const std::string& often) {
    const std::vector<std::string> country = facts_.CountriesOf(call);
    if (country.empty() || country != facts_.CountriesOf(often)) return false;
    const CallSeen& other = calls_.at(often);
    const auto differ = [](std::uint32_t a, std::uint32_t b) { return a != 0 && b != 0 && a != b; };
    const auto alike = [](std::uint32_t a, std::uint32_t b) { return a != 0 && a == b; };
    // His first locator counts too: the last one may be a slip itself.
    const bool samePlace = alike(seen.locator, other.locator) || alike(seen.locator, other.place);
    if (differ(seen.name, other.name)) return false;
    if (differ(seen.locator, other.locator) && !samePlace) return false;
    std::string_view also;
    if (samePlace) {
      also = "stesso locator";
    } else if (alike(seen.name, other.name) && alike(seen.town, other.town)) {
      also = "stesso nome e Qth";
    } else if (Near(call, often)) {
      also = "collegati a pochi minuti";
    } else {
      return false;
    }
    if (facts_.confirmedBeside(seen.firstQso)) return false;
    Find(
        {seen.firstQso, rule::kSimilar,
         fmt::format("forse {}, collegato spesso: {}, {}", often, SlipBetween(often, call), also)});
    return true;
  }

  bool Near(const std::string& a, const std::string& b) const {
    const auto pair = [](const Neighbours& each) { return std::tie(each.call, each.other); };
    return std::ranges::binary_search(neighbours_, std::tie(a, b), {}, pair) ||
           std::ranges::binary_search(neighbours_, std::tie(b, a), {}, pair);
  }

  const CheckFacts& facts_;
  const std::size_t most_;
  std::int64_t contacts_ = 0, count_ = 0;
  std::vector<Finding> findings_;
  std::unordered_map<std::string, CallSeen> calls_;
  std::unordered_map<std::string, std::vector<Place>> elsewhere_;  // beside CallSeen::place
  std::unordered_map<std::string, std::pair<base::DateTime, std::int64_t>> repeats_;
  std::size_t forgetAt_ = kRepeatsKept;
  std::deque<Recent> recent_;
  std::vector<Neighbours> neighbours_;
};

LogCheck::LogCheck(const CheckFacts& facts, std::size_t mostFindings)
    : work_(std::make_unique<Work>(facts, mostFindings)) {}
LogCheck::~LogCheck() = default;

void LogCheck::See(const CheckedContact& contact) { work_->See(contact); }
std::vector<Finding> LogCheck::Finish() { return work_->Finish(); }
std::int64_t LogCheck::Contacts() const { return work_->Contacts(); }
std::int64_t LogCheck::Count() const { return work_->Count(); }

}  // namespace brenvo::checks
