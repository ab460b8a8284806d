#include "measure_prefixes/measure.h"

#include <algorithm>
#include <map>
#include <optional>

namespace brenvo::measure_prefixes {
namespace {

void Count(Score& score, const std::optional<Answer>& ours, const std::optional<Answer>& theirs) {
  ++score.Calls;
  if (ours.has_value() != theirs.has_value()) return;
  if (ours && ours->Country != theirs->Country) return;
  ++score.RightCountry;
  if (!ours || ours->SameZones(*theirs)) ++score.RightCountryAndZones;
}

// The calls that the country file knows under one prefix of ours.
class Share {
 public:
  void Add(const Answer& theirs) {
    ++countries_[theirs.Country];
    ++zones_[{theirs.Country, theirs.ZoneCq, theirs.ZoneItu, {}}];
  }
  void AddBest(Score& score) const {
    score.RightCountry += Most(countries_);
    score.RightCountryAndZones += Most(zones_);
  }

 private:
  template <typename Counts>
  static std::size_t Most(const Counts& counts) {
    return std::max_element(counts.begin(), counts.end(),
                            [](const auto& a, const auto& b) { return a.second < b.second; })
        ->second;
  }

  std::map<std::string, std::size_t> countries_;
  std::map<Answer, std::size_t> zones_;
};

}  // namespace

Measurement Measure(const PrefixTable& table, const CtyFile& file,
                    const std::vector<std::string>& calls) {
  Measurement result;
  std::map<std::string, Share, std::less<>> shares;
  for (const std::string& call : calls) {
    const std::optional<Answer> ours = table.Resolve(call);
    const std::optional<Answer> theirs = file.Find(call);
    const std::string_view prefix = PrefixOf(call);

    Count(result.All, ours, theirs);
    if (!file.Lists(call)) Count(result.WithoutOwnEntry, ours, theirs);
    if (call.find('/') != std::string::npos) ++result.WithStroke;
    if (prefix.empty()) {
      ++result.WithoutPrefix;
    } else if (!ours) {
      ++result.NotInTable;
    }
    if (!theirs) {
      ++result.UnknownToFile;
      if (!ours) ++result.UnknownToBoth;
      ++result.Ceiling.RightCountry;
      ++result.Ceiling.RightCountryAndZones;
    } else if (!prefix.empty()) {
      shares.try_emplace(std::string(prefix)).first->second.Add(*theirs);
    }
    const bool right = ours.has_value() == theirs.has_value() &&
                       (!ours || (ours->Country == theirs->Country && ours->SameZones(*theirs)));
    if (!right) {
      result.Misses.push_back({call, ours.value_or(Answer()), theirs.value_or(Answer())});
    }
  }
  result.Ceiling.Calls = calls.size();
  for (const auto& [prefix, share] : shares) share.AddBest(result.Ceiling);
  return result;
}

}  // namespace brenvo::measure_prefixes
