// Texts that a file of plain letters cannot hold, in letters that it can.
#pragma once

#include <string>
#include <string_view>

namespace brenvo::adif {

// Other characters than printable ASCII become "\u0141" or "\U01F4FB", a backslash two; blanks at
// the ends are escaped too.
std::string EscapeText(std::string_view text);
// What is no escape stays; one that names no character is U+FFFD.
std::string UnescapeText(std::string_view text);

}  // namespace brenvo::adif
