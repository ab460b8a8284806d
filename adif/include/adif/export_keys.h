// Chosen contacts of Log written as a log file.
#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <vector>

#include "core/session.h"

namespace brenvo::adif {

struct ExportCounts {
  std::int64_t written = 0;
  std::int64_t leftOut = 0;          // no call or no date that a log file can hold
  std::int64_t changed = 0;          // letters that the file has in another way,
  std::int64_t changedContacts = 0;  // and the contacts that have such
};

// `done` contacts; false stops.
using ExportProgress = std::function<bool(std::int64_t done)>;

// The contacts of these numbers, in this order, with what is kept beside them, in UTF-8; those that
// are gone are passed over. The file takes the place of an older one only when it is whole; nothing
// when it was stopped. std::runtime_error with an Italian text when it cannot be written, or when
// what stands there is no log file.
std::optional<ExportCounts> ExportKeys(core::Session& session,
                                       const std::vector<std::int64_t>& keys,
                                       const std::filesystem::path& file,
                                       const ExportProgress& progress);

}  // namespace brenvo::adif
