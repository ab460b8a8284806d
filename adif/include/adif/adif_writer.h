// Writes log files in the ADI form of the standard, version 3.1.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "adif/adif_reader.h"

namespace brenvo::adif {

// The letters of a file; its lengths are bytes.
enum class AdifLetters {
  kUtf8,  // all of them
  kAscii  // for programs that know no others (base/plain_letters.h)
};

// The bytes of a text in a file.
std::string AdifBytes(std::string_view text, AdifLetters letters = AdifLetters::kUtf8);

// The lines up to "<EOH>". `userFields` are the names that the standard does not know.
std::string AdifHeader(const std::vector<std::string>& userFields,
                       AdifLetters letters = AdifLetters::kUtf8);
// One line, closed by "<EOR>".
std::string AdifLine(const std::vector<AdifField>& fields,
                     AdifLetters letters = AdifLetters::kUtf8);

}  // namespace brenvo::adif
