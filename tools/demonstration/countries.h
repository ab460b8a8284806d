// Where the made-up stations live.
#pragma once

#include <string_view>
#include <vector>

namespace brenvo::demonstration {

struct DemonstrationTown {
  std::string_view prefix;  // of calls given out there
  std::string_view name;
  std::string_view square;         // it lies in
  std::string_view province = {};  // of an Italian one
};

using DemonstrationNames = std::vector<std::string_view>;

// Towns of one kind: how often one meets them, and under what names.
struct DemonstrationCountry {
  int weight = 1;
  bool near = false;  // may be within reach of the VHF bands
  const DemonstrationNames* names = nullptr;
  std::vector<DemonstrationTown> towns;
};

const std::vector<DemonstrationCountry>& DemonstrationCountries();

}  // namespace brenvo::demonstration
