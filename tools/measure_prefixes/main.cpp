#include <fmt/core.h>

#include <cstdio>
#include <exception>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "measure_prefixes/call_list.h"
#include "measure_prefixes/measure.h"

namespace {

using namespace brenvo;
using namespace measure_prefixes;

constexpr std::string_view kUsage =
    "usage: measure_prefixes BRENVO.mdb CALL_LIST COUNTRY_FILE [--misses] [--at-least COUNTRY "
    "ZONES]\n"
    "  --misses    also prints each wrong call, with our answer and the file's\n"
    "  --at-least  fails below these percentages\n";

double ParsePercent(const std::string& text) {
  std::size_t end = 0;
  const double value = std::stod(text, &end);
  if (end != text.size()) throw std::runtime_error(text + " is no percentage");
  return value;
}

void Print(std::string_view what, const Score& score) {
  fmt::print("{:<38} country {:>6} of {} = {:.3f} %   and both zones {:>6} = {:.3f} %\n", what,
             score.RightCountry, score.Calls, score.CountryPercent(), score.RightCountryAndZones,
             score.ZonesPercent());
}

std::string Shown(const Answer& answer) {
  if (answer.Country.empty()) return "none";
  return fmt::format("{} {}/{} {}", answer.Country, answer.ZoneCq, answer.ZoneItu,
                     answer.Continent);
}

void Print(const Measurement& result) {
  fmt::print("calls {} ({} with a stroke), each counted once\n", result.All.Calls,
             result.WithStroke);
  fmt::print("no prefix in the call {}, prefix not in the table {}\n", result.WithoutPrefix,
             result.NotInTable);
  fmt::print("unknown to the country file {}, of these without an answer of ours {}\n",
             result.UnknownToFile, result.UnknownToBoth);
  Print("right", result.All);
  Print("right, calls without an entry", result.WithoutOwnEntry);
  Print("most that one answer a prefix can give", result.Ceiling);
}

int Run(const std::vector<std::string_view>& arguments) {
  if (arguments.size() < 3) {
    fmt::print(stderr, "{}", kUsage);
    return 2;
  }
  bool misses = false;
  double leastCountry = 0;
  double leastZones = 0;
  for (std::size_t i = 3; i < arguments.size(); ++i) {
    if (arguments[i] == "--misses") {
      misses = true;
    } else if (arguments[i] == "--at-least" && i + 2 < arguments.size()) {
      leastCountry = ParsePercent(std::string(arguments[++i]));
      leastZones = ParsePercent(std::string(arguments[++i]));
    } else {
      fmt::print(stderr, "{}", kUsage);
      return 2;
    }
  }
  const Measurement result = Measure(PrefixTable::Load(arguments[0]), CtyFile::Read(arguments[2]),
                                     ReadCalls(arguments[1]));
  Print(result);
  if (misses) {
    for (const Miss& miss : result.Misses) {
      fmt::print("{:<12} ours {:<16} theirs {}\n", miss.Call, Shown(miss.Ours), Shown(miss.Theirs));
    }
  }
  const bool enough =
      result.All.CountryPercent() >= leastCountry && result.All.ZonesPercent() >= leastZones;
  return enough ? 0 : 1;
}

}  // namespace

int main(int argc, char** argv) {
  try {
    return Run(std::vector<std::string_view>(argv + 1, argv + argc));
  } catch (const std::exception& error) {
    fmt::print(stderr, "measure_prefixes: {}\n", error.what());
    return 1;
  }
}
