// Reads what a service says of contacts: a report of LoTW and its credits, an inbox of eQSL, QRZ's
// logbook, Club Log's matches, or any log file that tells of confirmations.
#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "base/date.h"
#include "conferme/services.h"

namespace brenvo::conferme {

// What a service says of one contact. Times are UTC. Empty texts and numbers 0 were not told.
struct ReportRecord {
  Service service = Service::kLotw;
  bool credit = false;    // of an award's account, not of a contact that was uploaded
  bool confirmed = true;  // else the service has the contact, and nobody has confirmed it yet
  std::int64_t line = 0;  // of the file, from 1
  // The same whenever the service tells the record again.
  std::string id;
  std::string call, ownCall, band, mode, submode, modeGroup, satellite;
  bool bySatellite = false;
  base::DateTime when;
  bool hasDay = false, hasTime = false, hasSeconds = false;
  std::optional<base::DateTime> day;  // on which it was confirmed
  std::string credits;                // as CREDIT_GRANTED writes them
  std::string locator, state, iota, inferred, partnerMode;
  int dxcc = 0, zoneCq = 0, zoneItu = 0;
  bool authentic = false;  // eQSL: of a station whose call is proved
  friend bool operator==(const ReportRecord&, const ReportRecord&) = default;
};

enum class ReportKind : std::uint8_t { kLotw, kLotwCredits, kEqsl, kQrz, kClubLog, kAdif };
// For the operator: "rapporto LoTW".
std::string_view NameOf(ReportKind kind);

struct Report {
  ReportKind kind = ReportKind::kAdif;
  std::vector<ReportRecord> records;  // each id once
  std::int64_t read = 0;              // records of the file, of which...
  std::int64_t silent = 0;            // ...so many confirm nothing
  std::int64_t repeated = 0;          // ...stood there already
  std::int64_t faulty = 0;            // ...cannot be understood
  std::vector<std::string> faults;    // the first of these: "riga 12: manca il nominativo"
  // Cards that have come, as any log file tells of them (QSL_RCVD), and the letter of each one's
  // way (core/qsl_cards.h), empty where it is not told: paper, where the operator says so.
  std::vector<ReportRecord> cards;
  std::vector<std::string> cardWays;
  // Until when LoTW has told, of confirmations and of contacts: where the next report begins.
  std::string lastConfirmed, lastAccepted;
};

// What cannot be taken as a report, in Italian; nothing of it is to be used.
class ReportError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// The service has not accepted who asks.
class LoginError : public ReportError {
 public:
  using ReportError::ReportError;
};

// Fills a buffer and tells how many bytes it gave; 0 at the end.
using ReportSource = std::function<std::size_t(char* buffer, std::size_t size)>;
// False stops; then the report has nothing.
using ReportProgress = std::function<bool(std::int64_t bytes)>;

inline constexpr std::size_t kMostRecords = 500'000;
inline constexpr std::size_t kLargestMatches = std::size_t{32} << 20;  // bytes of JSON
inline constexpr std::size_t kMostFaults = 20;

// Memory grows with the records and not with the file. Throws ReportError for what is no report,
// was cut short, does not hold as many records as it says, or holds too many.
std::optional<Report> ReadReport(ReportSource source, const ReportProgress& progress = {});
std::optional<Report> ReadReportFile(const std::filesystem::path& file,
                                     const ReportProgress& progress = {});

}  // namespace brenvo::conferme
