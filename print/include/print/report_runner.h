// The report printer of the station: layout file, staging table, printer.
#pragma once

#include <filesystem>

#include "core/session.h"

namespace brenvo::print {

// Reads the layout and prints the staging table by it, with progress that the operator can stop:
// nothing is then printed.
// LayoutError, DeviceError, or std::runtime_error when the file is not there, each in Italian.
void RunReport(core::Session& session, const std::filesystem::path& layout);

}  // namespace brenvo::print
