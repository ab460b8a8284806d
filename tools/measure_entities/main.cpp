// How right the countries by date are.
#include <fmt/core.h>

#include <algorithm>
#include <cstdio>
#include <exception>
#include <random>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "adif/dxcc_entities.h"
#include "entities/read_tables.h"
#include "entities/resolver.h"
#include "measure_prefixes/call_list.h"
#include "measure_prefixes/cty_file.h"

namespace {

using namespace brenvo;
using measure_prefixes::Answer;
using measure_prefixes::CtyFile;

constexpr std::string_view kUsage =
    "usage: measure_entities Entita.csv calls CALL_LIST COUNTRY_FILE DAY [--misses]\n"
    "                                   strokes CALL_LIST COUNTRY_FILE DAY [--misses]\n"
    "                                   slashes COUNTRY_FILE DAY [--misses]\n"
    "                                   dated HOW_MANY TABLE... [--misses]\n"
    "       ... --at-least PERCENT [ZONES]\n";

constexpr std::int64_t kDay = 24 * 60 * 60;

struct Options {
  bool misses = false;
  double least = 0, leastZones = 0;
};

struct Score {
  std::size_t asked = 0, right = 0, zones = 0;
  static double Percent(std::size_t part, std::size_t all) {
    return all == 0 ? 0 : 100.0 * static_cast<double>(part) / static_cast<double>(all);
  }
  bool Print(std::string_view what, const Options& options) const {
    fmt::print("{}: country {} of {} = {:.3f} %, and both zones {} = {:.3f} %\n", what, right,
               asked, Percent(right, asked), zones, Percent(zones, asked));
    return Percent(right, asked) >= options.least && Percent(zones, asked) >= options.leastZones;
  }
};

int NumberOf(std::string_view prefix) {
  const adif::DxccEntity* entity = adif::FindDxccEntityOf(prefix);
  return entity == nullptr ? 0 : entity->number;
}

void Compare(Score& score, const entities::Answer& ours, const std::optional<Answer>& theirs,
             std::string_view call, const Options& options) {
  ++score.asked;
  const std::string country = ours.what == nullptr ? std::string() : ours.what->country;
  const bool right = theirs ? country == theirs->Country : country.empty();
  const bool zones =
      right && (!theirs || (ours.cq == theirs->ZoneCq && ours.itu == theirs->ZoneItu));
  score.right += right;
  score.zones += zones;
  if (options.misses && !zones) {
    fmt::print("{:<12} ours {} {}/{} by {} of {}, theirs {}\n", call, country, ours.cq, ours.itu,
               ours.rule, ours.file,
               theirs ? fmt::format("{} {}/{}", theirs->Country, theirs->ZoneCq, theirs->ZoneItu)
                      : "none");
  }
}

bool Calls(const entities::Resolver& resolver, const std::string& list, const std::string& file,
           base::DateTime day, const Options& options) {
  const CtyFile theirs = CtyFile::Read(file);
  Score score;
  for (const std::string& call : measure_prefixes::ReadCalls(list)) {
    Compare(score, resolver.Resolve(call, day), theirs.Find(call), call, options);
  }
  return score.Print("active calls", options);
}

// The calls with a stroke that a country file lists, asked as if none were listed.
bool Slashes(const entities::Resolver& resolver, const std::string& file, base::DateTime day,
             const Options& options) {
  Score score;
  const CtyFile listed = CtyFile::Read(file);
  for (const auto& [call, theirs] : listed.Calls()) {
    if (call.find('/') == std::string::npos) continue;
    Compare(score, resolver.ResolveByPrefix(call, day), theirs, call, options);
  }
  return score.Print("calls with a stroke", options);
}

// What a country file says of a call with a stroke, by the plain rule that whoever uses such files
// knows: the call itself where it is listed; else the part that is a prefix of the file, or one and
// a digit, where one alone is; else the longest part. A single letter is a prefix in front alone.
std::optional<Answer> PlainRule(const CtyFile& file, std::string_view call) {
  if (file.Lists(call)) return file.Find(call);
  std::string_view place, longest;
  std::size_t places = 0;
  for (std::size_t start = 0; start <= call.size();) {
    const std::size_t end = std::min(call.find('/', start), call.size());
    const std::string_view part = call.substr(start, end - start);
    start = end + 1;
    if (part == "MM" || part == "AM") return std::nullopt;
    if (part.size() > longest.size()) longest = part;
    const bool mayBePlace = part.size() > 1 || part.data() == call.data();
    const bool digit = part.size() > 1 && part.back() >= '0' && part.back() <= '9';
    if (mayBePlace &&
        (file.HasPrefix(part) || (digit && file.HasPrefix(part.substr(0, part.size() - 1))))) {
      place = part;
      ++places;
    }
  }
  return file.Find(places == 1 ? place : longest);
}

// The active calls with a stroke.
bool Strokes(const entities::Resolver& resolver, const std::string& list, const std::string& file,
             base::DateTime day, const Options& options) {
  const CtyFile theirs = CtyFile::Read(file);
  Score score;
  for (const std::string& call : measure_prefixes::ReadCalls(list)) {
    if (call.find('/') == std::string::npos) continue;
    Compare(score, resolver.Resolve(call, day), PlainRule(theirs, call), call, options);
  }
  return score.Print("active calls with a stroke", options);
}

bool IsOneCall(const entities::Rule& rule) {
  return rule.kind != entities::RuleKind::kPrefix && rule.when.HasFrom() && rule.when.HasTo() &&
         rule.text.find_first_of("%#?[") == std::string::npos;
}

// So many of the calls that the tables tell with their days: at the middle of these the country is
// theirs, and a day before and behind it is not by that rule.
bool Dated(const entities::Resolver& resolver, const std::vector<entities::Table>& tables,
           std::size_t wanted, const Options& options) {
  std::vector<const entities::Rule*> rules;
  for (const entities::Table& table : tables) {
    for (const entities::Rule& rule : table.rules) {
      if (IsOneCall(rule)) rules.push_back(&rule);
    }
  }
  std::mt19937 random(1);
  std::shuffle(rules.begin(), rules.end(), random);
  rules.resize(std::min(wanted, rules.size()));
  Score score;
  std::size_t outside = 0;
  for (const entities::Rule* rule : rules) {
    const auto at = [&](std::int64_t second) {
      return resolver.Resolve(rule->text, base::DateTime::FromSeconds(second));
    };
    const entities::Answer then = at(rule->when.from + (rule->when.to - rule->when.from) / 2);
    ++score.asked;
    const bool right = then.entity == rule->entity;
    score.right += right;
    score.zones += right && (rule->cq == 0 || rule->cq == then.cq);
    if (options.misses && !right) {
      fmt::print("{:<12} {}: ours {} by {} of {}, theirs {}\n", rule->text,
                 entities::SpanText(rule->when), then.entity, then.rule, then.file, rule->entity);
    }
    for (const std::int64_t second : {rule->when.from - kDay, rule->when.to + kDay}) {
      const entities::Answer other = at(second);
      if (other.rule == rule->text && other.when == rule->when) ++outside;
    }
  }
  fmt::print("by the rule outside its days: {}\n", outside);
  return score.Print("calls with their days", options) && outside == 0;
}

base::DateTime DayOf(const std::string& text) {
  const auto day = base::ParseIso(text);
  if (!day) throw std::runtime_error(text + " is no day");
  return *day;
}

int Run(std::vector<std::string> arguments) {
  Options options;
  if (const auto at = std::ranges::find(arguments, "--at-least"); at != arguments.end()) {
    const std::vector<std::string> told(at + 1, arguments.end());
    arguments.erase(at, arguments.end());
    options.least = told.empty() ? 0 : std::stod(told[0]);
    options.leastZones = told.size() < 2 ? 0 : std::stod(told[1]);
  }
  options.misses = std::erase(arguments, "--misses") > 0;
  if (arguments.size() < 4) {
    fmt::print(stderr, "{}", kUsage);
    return 2;
  }
  const entities::KnownEntities known{.numberOf = NumberOf};
  std::vector<entities::Table> tables;
  if (arguments[1] == "dated") {
    for (std::size_t i = 3; i < arguments.size(); ++i) {
      tables.push_back(entities::ReadTableFile(arguments[i], known));
      const entities::Table& table = tables.back();
      fmt::print("{}: {} rules, {} lines passed over\n", table.file, table.rules.size(),
                 table.faultCount);
    }
  }
  const entities::Table delivered = entities::ReadTableFile(arguments[0], known);
  std::vector<const entities::Table*> all;
  for (const entities::Table& table : tables) all.push_back(&table);
  all.push_back(&delivered);
  const entities::Resolver resolver(all);
  bool enough = false;
  if (arguments[1] == "calls" && arguments.size() == 5) {
    enough = Calls(resolver, arguments[2], arguments[3], DayOf(arguments[4]), options);
  } else if (arguments[1] == "strokes" && arguments.size() == 5) {
    enough = Strokes(resolver, arguments[2], arguments[3], DayOf(arguments[4]), options);
  } else if (arguments[1] == "slashes" && arguments.size() == 4) {
    enough = Slashes(resolver, arguments[2], DayOf(arguments[3]), options);
  } else if (arguments[1] == "dated") {
    enough = Dated(resolver, tables, std::stoul(arguments[2]), options);
  } else {
    fmt::print(stderr, "{}", kUsage);
    return 2;
  }
  return enough ? 0 : 1;
}

}  // namespace

int main(int argc, char** argv) {
  try {
    return Run({argv + 1, argv + argc});
  } catch (const std::exception& error) {
    fmt::print(stderr, "measure_entities: {}\n", error.what());
    return 2;
  }
}
