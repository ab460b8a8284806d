// Brings the contacts of a log file into Log.
#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <map>
#include <optional>
#include <ostream>
#include <set>
#include <string>
#include <vector>

#include "adif/record_to_contact.h"
#include "adif/repeated_contacts.h"
#include "core/session.h"

namespace brenvo::adif {

// Every record of the file is one of the three: read = fresh + repeated + refused.
struct ImportCounts {
  std::int64_t read = 0;
  std::int64_t fresh = 0;      // to be stored, or stored
  std::int64_t repeated = 0;   // the same contact is in the log, or stands earlier in the file
  std::int64_t completed = 0;  // of the repeated: those that had a column to fill
  std::int64_t refused = 0;
  std::int64_t moved = 0;    // of the fresh: those whose second another mode had already
  std::int64_t repairs = 0;  // fields of records not refused whose lengths were wrong
  // Of the stored ones; some hundred at most, whatever a file brings.
  std::set<std::string> bands;
};

struct FirstRecord {
  AdifRecord record;
  Placement placement;  // of a record that is not refused for what it says
};

// A field that was read although its length was wrong.
struct RepairedField {
  std::int64_t line = 0;         // of its record
  std::string call, name, text;  // a long text is cut
  std::size_t told = 0, read = 0;
};

struct ImportPreview {
  ImportCounts counts;
  std::optional<base::DateTime> first, last;         // of the contacts that can be stored
  std::map<std::string, std::int64_t> bands, modes;  // of these, by Banda and Modo
  std::map<std::string, std::int64_t> reasons;       // of the refused; rare ones under one name
  std::vector<FirstRecord> firstRecords;             // as they stand in the file
  std::vector<RepairedField> firstRepairs;           // of records not refused
  std::int64_t damaged = 0;                          // records that are no records
  bool endsEarly = false;                            // the file ends within a record
};

struct ImportOptions {
  QslChoice qsl;
  bool fillEmptyColumns = false;  // of repeated contacts; otherwise they are left as they are
};

// `done` bytes of the file; false stops.
using ImportProgress = std::function<bool(std::int64_t done)>;

inline constexpr std::string_view kNoSecondFree = "nel minuto non c'è più un secondo libero";
inline constexpr std::size_t kFirstRecords = 20;
inline constexpr std::size_t kFirstRepairs = 200;

// Each of these throws std::runtime_error with an Italian text when the file cannot be read or is
// no log file, and gives nothing when it was stopped.
std::optional<ImportPreview> PreviewImport(core::Session& session,
                                           const std::filesystem::path& file,
                                           const QslChoice& choice, const ImportProgress& progress);
// One transaction: all of it, or nothing when it is stopped or fails. Writes each refused record,
// with its line, its text and the reason, each repaired field, and the counts to `report`, in
// UTF-8.
std::optional<ImportCounts> ImportContacts(core::Session& session,
                                           const std::filesystem::path& file,
                                           const ImportOptions& options,
                                           const ImportProgress& progress, std::ostream& report);

std::int64_t SizeOf(const std::filesystem::path& file);

}  // namespace brenvo::adif
