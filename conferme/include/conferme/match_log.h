// A report against the session's log.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "conferme/matching.h"
#include "core/session.h"

namespace brenvo::conferme {

struct MatchedReport {
  std::vector<Match> matches;  // of each record
  // Records of another station's call than any of the log's, and one such call.
  std::int64_t foreign = 0;
  std::string foreignCall;
};

// `done` of the log's contacts; false stops.
using MatchProgress = std::function<bool(std::int64_t done)>;

// Whether what earlier reports and the operator have settled counts, or stands aside.
enum class Earlier : std::uint8_t { kCounts, kAside };

// Reads the log once, by number, as it was stored when this began. Nothing when it was stopped.
// Throws DatabaseError, and std::runtime_error for tables of rules that cannot be read.
std::optional<MatchedReport> MatchLog(core::Session& session,
                                      const std::vector<ReportRecord>& records,
                                      const MatchProgress& progress = {},
                                      Earlier earlier = Earlier::kCounts);

}  // namespace brenvo::conferme
