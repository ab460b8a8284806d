// The session's log gone through by the rules.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "checks/log_check.h"
#include "core/session.h"

namespace brenvo::checks {

// A finding with what a list shows of its contact.
struct ListedFinding : Finding {
  base::DateTime DataQso;
  std::string Call, Banda;
};

struct CheckedLog {
  std::vector<ListedFinding> findings;  // by rule and number
  std::int64_t contacts = 0;
  std::int64_t count = 0;  // of all findings, those beyond the first so many too
};

// Reads the log once, by date, and shows how far it is. Nothing when the operator stops it.
std::optional<CheckedLog> CheckLog(core::Session& session, const CheckFacts& facts);

// The same of the contacts with these calls alone, without what only the whole log can tell
// (rule::kSimilar); contacts are all that were looked at.
CheckedLog CheckCalls(core::Session& session, const CheckFacts& facts,
                      const std::vector<std::string>& calls);

// What the operator lets stand: table Verificati. A finding counts as let stand as long as its
// reason is the same.
void LetStand(core::Session& session, const Finding& finding);
void LookAgain(core::Session& session, const Finding& finding);
class LetStandFindings {
 public:
  explicit LetStandFindings(core::Session& session);
  bool Holds(const Finding& finding) const;

 private:
  std::vector<Finding> all_;  // by number
};

}  // namespace brenvo::checks
