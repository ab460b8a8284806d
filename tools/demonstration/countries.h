// Where the made-up stations live.
#pragma once

#include <string_view>
#include <vector>

namespace brenvo {

// Names and towns that go together.
struct DemonstrationTongue {
  std::vector<std::string_view> names, towns;
};

struct DemonstrationCountry {
  int weight = 1;     // how often one meets it
  bool near = false;  // within reach of the VHF bands
  std::vector<std::string_view> prefixes;
  std::vector<std::string_view> squares;
  const DemonstrationTongue* tongue = nullptr;
};

const std::vector<DemonstrationCountry>& DemonstrationCountries();

}  // namespace brenvo
