// Writes contacts of Log as a log file.
#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <optional>
#include <string_view>

#include "adif/adif_writer.h"
#include "adif/export_keys.h"
#include "core/session.h"

namespace brenvo::adif {

inline constexpr std::string_view kAllContacts = "SELECT * FROM Log ORDER By DataQso,QsoNr";

// The contacts of a SELECT on Log, in its order; else as ExportKeys.
std::optional<ExportCounts> ExportContacts(core::Session& session, std::string_view select,
                                           const std::filesystem::path& file,
                                           const ExportProgress& progress,
                                           AdifLetters letters = AdifLetters::kUtf8);

}  // namespace brenvo::adif
