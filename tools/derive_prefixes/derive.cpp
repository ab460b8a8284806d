#include "derive_prefixes/derive.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <map>
#include <set>
#include <string_view>
#include <tuple>
#include <utility>

namespace brenvo::derive_prefixes {
namespace {

constexpr std::string_view kLetters = "ABCDEFGHIJKLMNOPQRSTUVWXYZ";
constexpr std::string_view kDigits = "0123456789";
constexpr std::size_t kLongestPrefix = 5;

// How much the letters behind a prefix weigh together against one call, and a whole call that the
// country file lists for a special prefix.
constexpr double kLettersWeight = 1.5;
constexpr double kListedCallWeight = 2;
// What bare letters tell of a prefix that France gives overseas alone: next to nothing.
constexpr double kFrenchOverseasWeight = 0.1;
// Among the answers that calls alone give, one is kept from this share of a prefix's calls on.
constexpr double kLeastShare = 0.02;
constexpr double kLeastCalls = 2;

// Prefixes that count on with the years: 9A50, TM24, LZ25.
constexpr std::array<std::string_view, 10> kNumbered = {"4X", "9A", "DL", "LZ", "OE",
                                                        "OL", "R",  "SN", "TC", "TM"};

// What neither letters nor calls tell: prefixes whose countries are told apart by the letters
// behind, heard too seldom to count, and some that are no longer given out but stand in logs.
struct Chosen {
  std::string_view Prefix;
  measure_prefixes::Answer Tells;
};
const Chosen kChosen[] = {
    {"3Y0", {"3Y/B", 38, 67, "AF"}},  {"BS7", {"BS7", 27, 50, "AS"}},
    {"CE9", {"CE9", 13, 73, "SA"}},   {"4U1", {"4U1I", 14, 28, "EU"}},
    {"4U1", {"OE", 15, 28, "EU"}},    {"FT0", {"FT/X", 39, 68, "AF"}},
    {"FT1", {"FT/X", 39, 68, "AF"}},  {"FT2", {"FT/X", 39, 68, "AF"}},
    {"FT3", {"FT/X", 39, 68, "AF"}},  {"FT4", {"FT/T", 39, 53, "AF"}},
    {"FT4", {"FT/X", 39, 68, "AF"}},  {"FT5", {"FT/X", 39, 68, "AF"}},
    {"FT6", {"FT/X", 39, 68, "AF"}},  {"FT7", {"FT/X", 39, 68, "AF"}},
    {"FT8", {"FT/W", 39, 68, "AF"}},  {"FT9", {"FT/X", 39, 68, "AF"}},
    {"JD1", {"JD/O", 27, 45, "AS"}},  {"JD1", {"JD/M", 27, 90, "OC"}},
    {"KG4", {"K", 5, 8, "NA"}},       {"KG4", {"KG4", 8, 11, "NA"}},
    {"PY0", {"PY0F", 11, 13, "SA"}},  {"PY0", {"PY0T", 11, 15, "SA"}},
    {"RI1", {"CE9", 29, 69, "SA"}},   {"RI1", {"R1FJ", 40, 75, "EU"}},
    {"T90", {"E7", 15, 28, "EU"}},    {"T91", {"E7", 15, 28, "EU"}},
    {"T92", {"E7", 15, 28, "EU"}},    {"T93", {"E7", 15, 28, "EU"}},
    {"T94", {"E7", 15, 28, "EU"}},    {"T95", {"E7", 15, 28, "EU"}},
    {"T96", {"E7", 15, 28, "EU"}},    {"T97", {"E7", 15, 28, "EU"}},
    {"T98", {"E7", 15, 28, "EU"}},    {"T99", {"E7", 15, 28, "EU"}},
    {"T9", {"E7", 15, 28, "EU"}},     {"VK0", {"VK0M", 30, 60, "OC"}},
    {"VK0", {"VK0H", 39, 68, "AF"}},  {"VK0", {"CE9", 39, 69, "SA"}},
    {"VK9", {"VK9N", 32, 60, "OC"}},  {"VP8", {"VP8", 13, 16, "SA"}},
    {"VP8", {"VP8/G", 13, 73, "SA"}}, {"VS6", {"VR", 24, 44, "AS"}},
    {"ZK1", {"E5/S", 32, 63, "OC"}},  {"ZK2", {"E6", 32, 62, "OC"}},
};

bool IsDigit(char c) { return kDigits.find(c) != std::string_view::npos; }

// Several digits at the end: a special call's prefix, unless it is of an allocation like S5.
bool HasTwoDigits(std::string_view prefix) {
  return prefix.size() >= 3 && IsDigit(prefix[prefix.size() - 1]) &&
         IsDigit(prefix[prefix.size() - 2]);
}

// France gives TO and TX to special stations of its lands overseas, never to those at home.
bool IsFrenchOverseas(std::string_view prefix) {
  return prefix.starts_with("TO") || prefix.starts_with("TX");
}

// Stations of the United Nations lie in several countries, told apart by the whole call.
bool IsUnitedNations(std::string_view prefix) { return prefix.starts_with("4U"); }

// A letter O typed as the digit: W02ABC.
bool IsMistyped(std::string_view prefix) {
  return prefix.size() >= 3 && !IsDigit(prefix[0]) && prefix[1] == '0';
}

class Deriver {
 public:
  Deriver(const measure_prefixes::CtyFile& file, const std::vector<std::string>& calls)
      : file_(file) {
    AddPlain();
    for (const std::string& call : calls) {
      const std::string prefix(measure_prefixes::PrefixOf(call));
      const std::optional<measure_prefixes::Answer> answer = file.Find(call);
      if (!answer || !IsWanted(call, prefix)) continue;
      if (HasTwoDigits(prefix)) AddSpecial(prefix);
      AddWeight(heard_, prefix, *answer, 1);
    }
    for (const auto& [call, answer] : file.Calls()) {
      const std::string prefix(measure_prefixes::PrefixOf(call));
      if (!IsWanted(call, prefix)) continue;
      if (HasTwoDigits(prefix)) AddSpecial(prefix);
      if (special_.contains(prefix) || IsFrenchOverseas(prefix)) {
        AddWeight(expected_, prefix, answer, kListedCallWeight);
      }
    }
    for (const std::string_view base : kNumbered) {
      for (int number = 10; number <= 99; ++number) {
        AddSpecial(std::string(base) + std::to_string(number));
      }
    }
  }

  std::vector<measure_prefixes::PrefixTable::Row> Rows() const {
    std::vector<measure_prefixes::PrefixTable::Row> rows;
    for (const Chosen& row : kChosen) rows.push_back({std::string(row.Prefix), row.Tells});
    const auto isChosen = [](std::string_view prefix) {
      return std::any_of(std::begin(kChosen), std::end(kChosen),
                         [prefix](const Chosen& row) { return row.Prefix == prefix; });
    };
    for (const auto& [prefix, expected] : expected_) {
      if (!isChosen(prefix)) AddRows(rows, prefix, expected);
    }
    std::sort(rows.begin(), rows.end(), [](const auto& a, const auto& b) {
      return std::make_tuple(std::string_view(a.Prefix), Place(a.Tells)) <
             std::make_tuple(std::string_view(b.Prefix), Place(b.Tells));
    });
    return rows;
  }

 private:
  using Weights = std::map<measure_prefixes::Answer, double>;

  // What orders the rows of one prefix.
  static std::tuple<int, int, std::string_view> Place(const measure_prefixes::Answer& answer) {
    return {answer.ZoneCq, answer.ZoneItu, answer.Continent};
  }

  static void AddWeight(std::map<std::string, Weights, std::less<>>& weights,
                        const std::string& prefix, const measure_prefixes::Answer& answer,
                        double weight) {
    weights[prefix][answer] += weight;
  }

  bool IsWanted(std::string_view call, std::string_view prefix) const {
    return !prefix.empty() && prefix.size() <= kLongestPrefix &&
           call.find('/') == std::string_view::npos &&
           (plain_.contains(prefix) || !IsMistyped(prefix));
  }

  // A prefix of the ordinary forms, if the country file knows any call of it.
  void AddIfGiven(const std::string& prefix) {
    if (IsUnitedNations(prefix)) return;
    for (const char letter : kLetters) {
      if (const auto answer = file_.Find(prefix + letter + "QQ")) {
        const bool atHome = IsFrenchOverseas(prefix) && answer->Country == "F";
        AddWeight(expected_, prefix, *answer,
                  (atHome ? kFrenchOverseasWeight : kLettersWeight) /
                      static_cast<double>(kLetters.size()));
        plain_.insert(prefix);
      }
    }
  }

  // Whether the letter alone is a country's, so that a digit behind it is the call area; S5, E7
  // and T7 are countries of their own, with the call area behind them.
  bool IsOfOneCountry(char letter) const {
    return file_.HasPrefix({&letter, 1}) ||
           std::all_of(kDigits.begin(), kDigits.end(), [&](char digit) {
             return file_.HasPrefix(std::string{letter, digit});
           });
  }

  void AddPlain() {
    for (const char digit : kDigits) {
      for (const char first : kLetters) {
        const bool oneCountry = IsOfOneCountry(first);
        const std::string allocation = {first, digit};
        AddIfGiven(allocation);
        for (const char area : kDigits) {
          if (!oneCountry && (file_.HasPrefix(allocation) || file_.HasPrefix(allocation + area))) {
            AddIfGiven(allocation + area);
          }
        }
        for (const char second : kLetters) AddIfGiven({first, second, digit});
        for (const char number : kDigits) AddIfGiven({number, first, digit});
        for (const char number : kDigits) {
          for (const char second : kLetters) {
            const std::string split = {number, first, second};
            if (file_.HasPrefix(split)) AddIfGiven(split + digit);
          }
        }
      }
    }
  }

  void AddSpecial(const std::string& prefix) {
    if (plain_.contains(prefix) || !special_.insert(prefix).second) return;
    if (IsUnitedNations(prefix)) return;
    if (const auto answer = file_.Find(prefix + "QQQ")) {
      AddWeight(expected_, prefix, *answer,
                IsFrenchOverseas(prefix) ? kFrenchOverseasWeight : kLettersWeight);
    }
  }

  void AddRows(std::vector<measure_prefixes::PrefixTable::Row>& rows, const std::string& prefix,
               const Weights& expected) const {
    Weights all = expected;
    double calls = 0;
    const auto heard = heard_.find(prefix);
    if (heard != heard_.end()) {
      for (const auto& [answer, count] : heard->second) {
        all[answer] += count;
        calls += count;
      }
    }
    const auto byWeight = [](const auto& a, const auto& b) { return a.second < b.second; };
    const measure_prefixes::Answer first =
        std::max_element(all.begin(), all.end(), byWeight)->first;
    std::map<std::tuple<int, int, std::string_view>, std::pair<measure_prefixes::Answer, double>>
        behind;
    for (const auto& [answer, weight] : all) {
      const double count = weight - (expected.contains(answer) ? expected.at(answer) : 0);
      const bool kept =
          expected.contains(answer) || (count >= kLeastCalls && count >= kLeastShare * calls);
      if (!kept || Place(answer) <= Place(first)) continue;
      if (IsFrenchOverseas(prefix) && answer.Country == "F") continue;
      auto& place = behind[Place(answer)];
      if (weight > place.second) place = {answer, weight};
    }
    rows.push_back({prefix, first});
    for (const auto& [place, best] : behind) rows.push_back({prefix, best.first});
  }

  const measure_prefixes::CtyFile& file_;
  // By prefix, what letters and the file's own calls let expect, and what the calls heard were.
  std::map<std::string, Weights, std::less<>> expected_;
  std::map<std::string, Weights, std::less<>> heard_;
  std::set<std::string, std::less<>> plain_;
  std::set<std::string, std::less<>> special_;
};

}  // namespace

std::vector<measure_prefixes::PrefixTable::Row> DerivePrefixes(
    const measure_prefixes::CtyFile& file, const std::vector<std::string>& calls) {
  return Deriver(file, calls).Rows();
}

}  // namespace brenvo::derive_prefixes
