// The settings of an application directory between two scripts.
#pragma once

#include <filesystem>

#include "recorder/memory_settings.h"

namespace brenvo::drive {

// The file in which the screens keep them: `[Section]` lines, `Key=value` below. Empty when there
// is none; what is no such line is passed over.
recorder::MemorySettings::Values ReadSettings(const std::filesystem::path& file);
// In the place of what the file held. Refused when it cannot be written.
void WriteSettings(const std::filesystem::path& file,
                   const recorder::MemorySettings::Values& values);

}  // namespace brenvo::drive
