// Links: gara
// Arbitrary bytes as a contest's rules, as both kinds of log and as a file that teaches calls:
// every reader ends, a rule without faults counts alike both ways, a log written again reads as the
// same contacts, and a call is known once, with no more places than there is room for.
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

#include "gara/call_file.h"
#include "gara/count.h"
#include "gara/keyer.h"
#include "gara/log_file.h"
#include "gara/rule.h"

using namespace brenvo::gara;

namespace {

void TryRule(std::string_view bytes) {
  const ReadRule read = ReadRuleText(bytes);
  if (!read.faults.empty()) return;
  (void)PeriodsOf(read.rule, 2026);
  for (const RuleFault& fault : FailedExamples(read.rule)) {
    if (fault.what.find("secondo conteggio") != std::string::npos) std::abort();
  }
}

bool Same(const Contact& a, const Contact& b) {
  return a.time == b.time && a.call == b.call && a.serialSent == b.serialSent &&
         a.serialReceived == b.serialReceived;
}

void TryLog(const ReadContestLog& read) {
  std::vector<LogRow> rows;
  for (const ReadContact& each : read.contacts) rows.push_back({each.contact, {}});
  if (rows.empty()) return;
  const Rule rule;
  LogHead head;
  head.call = read.call;
  head.locator = read.locator;
  const ReadContestLog again = ReadEdi(WriteEdi(rule, head, read.band, rows).bytes);
  if (again.contacts.size() != rows.size()) std::abort();
  for (std::size_t i = 0; i < rows.size(); ++i) {
    // A year is told in two digits.
    const int year = rows[i].contact.time.Year();
    if (year < 1970 || year > 2069) continue;
    if (!Same(again.contacts[i].contact, rows[i].contact)) std::abort();
  }
}

void TryCalls(std::string_view bytes) {
  std::string before;
  for (const brenvo::core::KnownCall& each : ReadCallFileBytes(bytes).calls) {
    if (each.call <= before || each.call.size() > brenvo::core::kLongestKnownCall) std::abort();
    if (each.places.size() > brenvo::core::kMostPlaces) std::abort();
    for (const auto& place : each.places) {
      if (!IsLocator(place.locator, 6)) std::abort();
    }
    before = each.call;
  }
}

void TryKey(std::string_view bytes) {
  const std::string call(bytes.substr(0, 20));
  for (const char c : CwText(FillKeyText(bytes, {call, call, call, call, call, call}))) {
    if (c < ' ' || c > '~') std::abort();
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  TryRule(bytes);
  TryLog(ReadEdi(bytes));
  TryLog(ReadCabrillo(bytes));
  TryCalls(bytes);
  TryKey(bytes);
  return 0;
}
