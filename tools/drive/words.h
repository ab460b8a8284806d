// A line of a script as words.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace brenvo::drive {

// Words stand apart by blanks; one with blanks inside stands in double quotes, where \n, \r, \t,
// \", \\ and \xHH (the character of that code) mean what they say. A word that begins with "#"
// begins a comment. Refused when quotes or escapes do not close.
std::vector<std::string> SplitWords(std::string_view line);
// What stands behind the first word: a text in quotes, or else everything as it stands up to a
// comment, blanks between the words included. Empty when there is nothing.
std::string RestOfLine(std::string_view line);

}  // namespace brenvo::drive
