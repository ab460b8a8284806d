// How often the prefix table is right.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "measure_prefixes/cty_file.h"
#include "measure_prefixes/prefix_table.h"

namespace brenvo::measure_prefixes {

// A call for which the table is wrong; Country is empty where there is no answer.
struct Miss {
  std::string Call;
  Answer Ours;
  Answer Theirs;
};

// Counts of calls. A call without an answer is right only if the country file has none either.
struct Score {
  std::size_t Calls = 0;
  std::size_t RightCountry = 0;
  std::size_t RightCountryAndZones = 0;

  double CountryPercent() const { return Percent(RightCountry); }
  double ZonesPercent() const { return Percent(RightCountryAndZones); }

 private:
  double Percent(std::size_t count) const {
    return Calls == 0 ? 0 : 100.0 * static_cast<double>(count) / static_cast<double>(Calls);
  }
};

struct Measurement {
  Score All;
  // The calls without an entry of their own in the country file: those that follow their prefix.
  Score WithoutOwnEntry;
  // The most that any table could reach, since the rule gives all calls of one prefix one answer.
  Score Ceiling;
  std::size_t WithStroke = 0;
  std::size_t WithoutPrefix = 0;  // the rule finds no prefix in the call
  std::size_t NotInTable = 0;     // the table does not hold the call's prefix
  std::size_t UnknownToFile = 0;  // the country file knows no answer
  std::size_t UnknownToBoth = 0;
  std::vector<Miss> Misses;
};

[[nodiscard]] Measurement Measure(const PrefixTable& table, const CtyFile& file,
                                  const std::vector<std::string>& calls);

}  // namespace brenvo::measure_prefixes
