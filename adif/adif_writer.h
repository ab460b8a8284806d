// Writes log files in the ADI form of the standard, version 3.1.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "adif/adif_reader.h"

namespace brenvo {

// The bytes of a text in a file: Windows-1252, so that a length counts bytes and characters alike.
std::string AdifBytes(std::string_view text);

// The lines up to "<EOH>". `userFields` are the names that the standard does not know.
std::string AdifHeader(const std::vector<std::string>& userFields);
// One line, closed by "<EOR>".
std::string AdifLine(const std::vector<AdifField>& fields);

}  // namespace brenvo
