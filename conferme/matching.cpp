#include "conferme/matching.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstdlib>
#include <numeric>
#include <tuple>
#include <unordered_map>

#include "assignment.h"
#include "base/text.h"
#include "core/call_forms.h"

namespace brenvo::conferme {
namespace {

// More contacts than these around a record, or records around a contact, and nobody can tell.
constexpr std::size_t kMostAround = 100;
// As many records and contacts that hang together are assigned at once.
constexpr std::size_t kMostTogether = 300;
constexpr std::int64_t kDay = 24 * 60 * 60;

// How near a candidate is; less is nearer. In this order what counts.
struct Nearness {
  int call = 0;  // 0 the same, 1 another form of it
  int time = 0;  // 0 the same second, 1 the same minute, 2 further
  int mode = 0;  // 0 the same, 1 the same of the service, 2 of its group, 3 of another group
  std::int64_t apart = 0;  // seconds
  std::int64_t Cost() const {
    return call * 100'000'000LL + time * 10'000'000LL + mode * 1'000'000LL + apart * 100LL;
  }
  friend auto operator<=>(const Nearness&, const Nearness&) = default;
};

constexpr int kOtherGroup = 3;

struct Candidate {
  std::size_t record;
  std::int64_t key;
  Nearness nearness;
};

std::int64_t MinuteOf(base::DateTime time) { return time.Seconds() / 60; }

std::string_view ServiceOf(const ReportRecord& record) { return FactsOf(record.service).name; }

}  // namespace

struct Matcher::Work {
  const std::vector<ReportRecord>& records;
  const ModeTable& modes;
  const worked::Rules& rules;
  const Settled& settled;

  struct Told {  // of a record
    ServiceMode mode;
    std::string base, ownBase;
    bool open = true;  // neither ignored nor settled
    std::size_t around = 0;
  };
  std::vector<Told> told;
  // Records by the base of their call, by time.
  std::unordered_map<std::string, std::vector<std::size_t>> byBase;
  std::vector<Candidate> candidates;
  std::vector<Match> matches;
  std::string lastCall;  // of Wants
  const std::vector<std::size_t>* lastRecords = nullptr;

  const std::vector<std::size_t>* RecordsOf(std::string_view call) {
    if (call != lastCall) {
      lastCall = call;
      const auto at = byBase.find(core::BaseCall(call));
      lastRecords = at == byBase.end() ? nullptr : &at->second;
    }
    return lastRecords;
  }

  // Calls see(record) for each that a contact of that time may be; a credit wants its day.
  template <class See>
  void ForEachNear(const std::vector<std::size_t>& ofCall, base::DateTime utc, const See& see) {
    const auto from = std::ranges::lower_bound(ofCall, utc.Later(-kDay), {},
                                               [&](std::size_t at) { return records[at].when; });
    for (auto at = from; at != ofCall.end(); ++at) {
      const ReportRecord& record = records[*at];
      if (record.when > utc.Later(kMostSecondsApart + 60)) break;
      if (record.credit ? record.hasDay && record.when.DatePart() == utc.DatePart()
                        : std::abs(Apart(record, utc)) <= kMostSecondsApart) {
        see(*at);
      }
    }
  }

  // Where the service knows no seconds, whole minutes count.
  static std::int64_t Apart(const ReportRecord& record, base::DateTime utc) {
    if (record.hasSeconds) return utc.Seconds() - record.when.Seconds();
    return (MinuteOf(utc) - MinuteOf(record.when)) * 60;
  }

  Nearness NearnessOf(std::size_t at, const LogEntry& entry) const {
    const ReportRecord& record = records[at];
    Nearness near;
    near.call = base::SameText(base::Trim(entry.call), record.call) ? 0 : 1;
    near.apart = record.credit ? 0 : std::abs(Apart(record, entry.utc));
    const bool sameMinute = MinuteOf(entry.utc) == MinuteOf(record.when);
    near.time = record.credit ? 0 : record.hasSeconds && near.apart == 0 ? 0 : sameMinute ? 1 : 2;
    const ServiceMode& mode = told[at].mode;
    const std::string_view word =
        base::SameText(record.submode, entry.mode) ? record.submode : record.mode;
    if (!record.credit && base::SameText(word, base::Trim(entry.mode))) {
      near.mode = 0;
    } else if (!mode.mode.empty() && mode.mode == entry.means.mode) {
      near.mode = 1;
    } else if (mode.group != ModeGroup::kUnknown && mode.group == entry.means.group) {
      near.mode = 2;
    } else {
      near.mode = kOtherGroup;
    }
    return near;
  }

  bool Fits(std::size_t at, const LogEntry& entry) const {
    const ReportRecord& record = records[at];
    if (!record.band.empty() && !base::SameText(record.band, entry.band)) return false;
    if (record.credit) {
      return record.dxcc == 0 || entry.dxcc == 0 || record.dxcc == entry.dxcc;
    }
    if (record.bySatellite != entry.bySatellite) return false;
    if (record.bySatellite && !record.satellite.empty() && !entry.satellite.empty() &&
        !base::SameText(record.satellite, entry.satellite)) {
      return false;
    }
    const std::string& own = told[at].ownBase;
    return own.empty() || entry.ownCall.empty() || own == core::BaseCall(entry.ownCall);
  }

  bool IsTaken(std::size_t at, std::int64_t key) const {
    // Any number of credits may be of one contact.
    if (records[at].credit) return false;
    const auto by = settled.taken.find({std::string(ServiceOf(records[at])), key});
    return by != settled.taken.end() && by->second != records[at].id;
  }

  void Prepare() {
    matches.resize(records.size());
    told.resize(records.size());
    for (std::size_t i = 0; i < records.size(); ++i) {
      const ReportRecord& record = records[i];
      Told& of = told[i];
      of.mode = modes.Of(record.mode, record.submode, rules);
      if (const ModeGroup group = GroupNamed(record.modeGroup); group != ModeGroup::kUnknown) {
        of.mode.group = group;
      }
      // A credit by satellite tells the satellites' group in place of a mode's.
      of.base = core::BaseCall(record.call);
      of.ownBase = core::BaseCall(record.ownCall);
      const std::string key = Settled::KeyOf(ServiceOf(record), record.id);
      if (settled.ignored.contains(key)) {
        matches[i].outcome = Outcome::kIgnored;
        of.open = false;
      } else if (const auto known = settled.contacts.find(key); known != settled.contacts.end()) {
        matches[i].outcome = Outcome::kKnown;
        matches[i].key = known->second;
        of.open = false;
      }
      if (of.open) byBase[of.base].push_back(i);
    }
    for (auto& [base, ofCall] : byBase) {
      std::ranges::stable_sort(ofCall, {}, [&](std::size_t at) {
        return std::tuple(records[at].when, std::string_view(records[at].id));
      });
    }
  }

  void TellCandidates(std::size_t at, const std::vector<const Candidate*>& of) {
    for (const Candidate* each : of) {
      if (matches[at].candidates.size() == kMostCandidates) break;
      matches[at].candidates.push_back(each->key);
    }
  }

  void Doubt(std::size_t at, std::string why) {
    matches[at].outcome = Outcome::kDoubtful;
    matches[at].why = std::move(why);
  }

  void Match1(std::size_t at, const Candidate& candidate) {
    matches[at].outcome = Outcome::kMatched;
    matches[at].key = candidate.key;
    matches[at].otherMode = candidate.nearness.mode == 2;
  }
};

Matcher::Matcher(const std::vector<ReportRecord>& records, const ModeTable& modes,
                 const worked::Rules& rules, const Settled& settled)
    : work_(new Work{records, modes, rules, settled, {}, {}, {}, {}, {}, nullptr}) {
  work_->Prepare();
}

Matcher::~Matcher() = default;

bool Matcher::Wants(std::string_view call) { return work_->RecordsOf(call) != nullptr; }

void Matcher::See(const LogEntry& entry) {
  const auto* const ofCall = work_->RecordsOf(entry.call);
  if (ofCall == nullptr) return;
  std::size_t around = 0;
  work_->ForEachNear(*ofCall, entry.utc, [&](std::size_t at) {
    if (!work_->records[at].credit) ++around;
  });
  work_->ForEachNear(*ofCall, entry.utc, [&](std::size_t at) {
    if (!work_->Fits(at, entry) || work_->IsTaken(at, entry.key)) return;
    Work::Told& told = work_->told[at];
    ++told.around;
    if (around > kMostAround) told.around = kMostAround + 1;
    if (told.around > kMostAround) return;
    work_->candidates.push_back({at, entry.key, work_->NearnessOf(at, entry)});
  });
}

std::vector<Match> Matcher::Run() {
  Work& work = *work_;
  auto& candidates = work.candidates;
  std::erase_if(candidates,
                [&](const Candidate& each) { return work.told[each.record].around > kMostAround; });
  std::ranges::sort(candidates, {}, [](const Candidate& each) {
    return std::tuple(each.record, each.nearness, each.key);
  });
  // Of each record, the nearest first.
  std::vector<std::vector<const Candidate*>> of(work.records.size());
  for (const Candidate& each : candidates) of[each.record].push_back(&each);
  const auto isSure = [](const Candidate* each) { return each->nearness.mode < kOtherGroup; };

  // Records and contacts that hang together, by a tree of each.
  std::vector<std::size_t> tree(work.records.size());
  std::iota(tree.begin(), tree.end(), std::size_t{0});
  const auto rootOf = [&](std::size_t at) {
    while (tree[at] != at) at = tree[at] = tree[tree[at]];
    return at;
  };
  std::map<std::pair<Service, std::int64_t>, std::size_t> firstOf;  // of a contact
  for (std::size_t i = 0; i < of.size(); ++i) {
    if (work.records[i].credit) continue;
    for (const Candidate* each : of[i]) {
      if (!isSure(each)) continue;
      const auto [at, isNew] = firstOf.try_emplace({work.records[i].service, each->key}, i);
      if (!isNew) tree[rootOf(i)] = rootOf(at->second);
    }
  }
  std::map<std::size_t, std::vector<std::size_t>> together;
  for (std::size_t i = 0; i < of.size(); ++i) {
    if (!work.told[i].open) continue;
    if (work.told[i].around > kMostAround) {
      work.Doubt(i, "troppi contatti possibili");
      continue;
    }
    work.TellCandidates(i, of[i]);
    const auto sure = std::ranges::count_if(of[i], isSure);
    if (work.records[i].credit) {
      // Several credits may be of one contact.
      if (sure == 1) {
        work.Match1(i, *of[i].front());
      } else if (!of[i].empty()) {
        work.Doubt(i, sure == 0 ? "il modo è di un altro gruppo" : "più contatti quel giorno");
      }
    } else if (sure > 0) {
      together[rootOf(i)].push_back(i);
    } else if (!of[i].empty()) {
      work.Doubt(i, "il modo è di un altro gruppo");
    }
  }
  for (const auto& [root, lefts] : together) {
    std::map<std::int64_t, std::size_t> rights;
    std::vector<Edge> edges;
    for (std::size_t left = 0; left < lefts.size(); ++left) {
      for (const Candidate* each : of[lefts[left]]) {
        if (!isSure(each)) continue;
        const std::size_t right = rights.try_emplace(each->key, rights.size()).first->second;
        edges.push_back({left, right, each->nearness.Cost()});
      }
    }
    if (lefts.size() + rights.size() > kMostTogether) {
      for (const std::size_t at : lefts) work.Doubt(at, "troppi contatti possibili");
      continue;
    }
    const std::vector<Given> given = Assign(lefts.size(), rights.size(), edges);
    for (std::size_t left = 0; left < lefts.size(); ++left) {
      const std::size_t at = lefts[left];
      if (!given[left].only) {
        work.Doubt(at, "due contatti vanno bene allo stesso modo");
      } else if (given[left].right == Given::kNothing) {
        work.Doubt(at, "il contatto è di un altro record");
      } else {
        for (const Candidate* each : of[at]) {
          if (isSure(each) && rights.at(each->key) == given[left].right) work.Match1(at, *each);
        }
      }
    }
  }
  return std::move(work.matches);
}

}  // namespace brenvo::conferme
