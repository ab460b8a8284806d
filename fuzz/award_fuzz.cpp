// Links: diplomi
// Arbitrary bytes as an award's rules and as a list of references: every reader ends, an award
// without faults counts its own examples, and no total is larger than its units.
#include <cstdint>
#include <cstdlib>
#include <stdexcept>
#include <string_view>

#include "diplomi/award.h"
#include "diplomi/count.h"

using namespace brenvo;
using namespace brenvo::diplomi;

namespace {

void TryAward(std::string_view bytes) {
  const ReadAward read = ReadAwardText(bytes);
  for (const AwardFault& fault : read.faults) {
    if (fault.what.empty()) std::abort();
  }
  if (!read.faults.empty()) return;
  static const World kWorld = [] {
    World world;
    world.countries = {{"I", "Italia", "EU", {}}, {"K", "Stati Uniti", "NA", {}}};
    world.provinces = {{"I", "MI", "Milano"}};
    world.bands = {"20 m", "2 m"};
    return world;
  }();
  const worked::Rules rules;
  (void)FailedExamples(read.award, rules, kWorld);
  LogImage log(WantedFields({&read.award, 1}));
  SeenContact seen;
  seen.key = 1;
  seen.call = "K1AA";
  seen.country = "K";
  seen.band = "20 m";
  seen.locator = "FN31";
  log.Add(seen);
  const OwnPlace place{1, "I", "JN65AA"};
  const Counted counted = Count(read.award, log, kWorld, {&place, 1}, rules, {});
  for (const Totals& totals : counted.totals) {
    if (totals.worked > static_cast<int>(counted.units.size()) ||
        totals.confirmed > totals.worked || totals.credited > totals.confirmed) {
      std::abort();
    }
  }
  for (const Reached& each : GoalsOf(read.award, counted)) {
    if (each.next && *each.next <= each.now.confirmed) std::abort();
  }
}

void TryList(std::string_view bytes) {
  try {
    for (const ListedReference& each : ReadReferences(bytes)) {
      if (each.reference.empty()) std::abort();
    }
  } catch (const std::runtime_error&) {
  }
  // The first half is a pattern for the second one.
  const std::string_view pattern = bytes.substr(0, bytes.size() / 2);
  for (const std::string& each : ReferencesIn(bytes.substr(bytes.size() / 2), pattern)) {
    if (each.empty()) std::abort();
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  TryAward(bytes);
  TryList(bytes);
  return 0;
}
