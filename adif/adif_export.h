// Writes contacts of Log as a log file.
#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <string_view>

#include "adif_writer.h"
#include "core/session.h"

namespace brenvo::adif {

inline constexpr std::string_view kAllContacts = "SELECT * FROM Log ORDER By DataQso,QsoNr";

struct ExportCounts {
  std::int64_t written = 0;
  std::int64_t leftOut = 0;          // no call or no date that a log file can hold
  std::int64_t changed = 0;          // letters that the file has in another way,
  std::int64_t changedContacts = 0;  // and the contacts that have such
};

// `done` contacts; false stops.
using ExportProgress = std::function<bool(std::int64_t done)>;

// The contacts of a SELECT on Log, in its order, with what is kept beside them. The file takes the
// place of an older one only when it is whole; nothing when it was stopped. std::runtime_error with
// an Italian text when it cannot be written, or when what stands there is no log file.
std::optional<ExportCounts> ExportContacts(core::Session& session, std::string_view select,
                                           const std::filesystem::path& file,
                                           const ExportProgress& progress,
                                           AdifLetters letters = AdifLetters::kUtf8);

}  // namespace brenvo::adif
