// Which contact of the log each record of a report means: one assignment over the whole report.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "base/date.h"
#include "conferme/mode_table.h"
#include "conferme/report.h"

namespace brenvo::conferme {

// What is looked at of a contact. The views last as long as the call.
struct LogEntry {
  std::int64_t key = 0;  // its number
  base::DateTime utc;
  std::string_view call, band, mode;  // the band by the standard's name
  ServiceMode means;                  // of the mode
  bool bySatellite = false;
  std::string_view satellite;  // empty where it is not known
  std::string_view ownCall;    // likewise
  int dxcc = 0;                // likewise
};

enum class Outcome : std::uint8_t {
  kMatched,   // to `key`
  kKnown,     // to `key`, by an earlier report or the operator's hand
  kDoubtful,  // to one of the candidates: `why` says what is missing
  kNone,      // the log has no such contact
  kIgnored,   // by the operator's wish
};

struct Match {
  Outcome outcome = Outcome::kNone;
  std::int64_t key = 0;
  bool otherMode = false;                // of the same group
  std::string why;                       // Italian
  std::vector<std::int64_t> candidates;  // the likeliest first
  friend bool operator==(const Match&, const Match&) = default;
};

// What earlier reports and the operator have settled, by service and record.
struct Settled {
  std::map<std::string, std::int64_t, std::less<>> contacts;  // of records, by KeyOf
  std::map<std::string, bool, std::less<>> ignored;           // likewise
  // Contacts that have a record already, by service: number and record.
  std::map<std::pair<std::string, std::int64_t>, std::string> taken;
  static std::string KeyOf(std::string_view service, std::string_view record) {
    return std::string(service) + '|' + std::string(record);
  }
};

inline constexpr std::int64_t kMostSecondsApart = 30 * 60;
inline constexpr std::size_t kMostCandidates = 10;  // that are told of a record

// A contact is a candidate of a record of the same call (or its form with a slash), band,
// satellite and own call within 30 minutes; a record of a credit is one of the same day. Of the
// ways to give each record one candidate of its mode's group, and no contact two records of a
// service, the best is taken: the same call, then the same second or minute, the same mode, the
// same mode of the service, the least time apart. Where two ways are equally good the record is
// doubtful. The answers do not depend on the order of records or contacts.
class Matcher {
 public:
  // All three outlive it. `rules` says of modes that the table lacks in which group they are.
  Matcher(const std::vector<ReportRecord>& records, const ModeTable& modes,
          const worked::Rules& rules, const Settled& settled);
  ~Matcher();
  Matcher(const Matcher&) = delete;
  Matcher& operator=(const Matcher&) = delete;

  // Whether a contact of this call may be meant; of others the rest need not be found out. The call
  // as it stands in the log.
  bool Wants(std::string_view call);
  // A contact, each once.
  void See(const LogEntry& entry);
  // Of each record, when all contacts have been seen.
  std::vector<Match> Run();

 private:
  struct Work;
  std::unique_ptr<Work> work_;
};

}  // namespace brenvo::conferme
