// Links: conferme
// Arbitrary bytes as a service's report: read or refused in words, in whatever pieces they come;
// what was read is well, stands there once, and comes back from the text that the table keeps.
#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <set>
#include <string>
#include <string_view>

#include "conferme/report.h"
#include "conferme/taking.h"

namespace {

using namespace brenvo;

// The records, and why there are none.
struct Outcome {
  std::vector<conferme::ReportRecord> records;
  std::string refusal;
  friend bool operator==(const Outcome&, const Outcome&) = default;
};

Outcome Read(std::string_view bytes, std::size_t piece) {
  try {
    const auto report = conferme::ReadReport([&](char* buffer, std::size_t size) {
      const std::size_t got = std::min({size, piece, bytes.size()});
      std::copy_n(bytes.data(), got, buffer);
      bytes.remove_prefix(got);
      return got;
    });
    return {report->records, {}};
  } catch (const conferme::ReportError& error) {
    return {{}, error.what()};
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  const Outcome outcome = Read(bytes, bytes.size() + 1);
  if (!(Read(bytes, 7) == outcome)) std::abort();
  std::set<std::pair<conferme::Service, std::string>> ids;
  for (const conferme::ReportRecord& record : outcome.records) {
    if (record.call.empty() || record.id.empty()) std::abort();
    if (!record.credit && (!record.hasDay || !record.hasTime || record.band.empty())) std::abort();
    if (!ids.emplace(record.service, record.id).second) std::abort();
    auto back = conferme::RecordOfText(conferme::TextOfRecord(record));
    if (!back) std::abort();
    if (back->call != record.call || back->when != record.when) std::abort();
  }
  return 0;
}
