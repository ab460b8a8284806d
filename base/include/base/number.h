// Numbers and texts, converted as the station's screens, files and statements write them.
#pragma once

#include <string>
#include <string_view>

namespace brenvo::base {

// The number that a text begins with: leading blanks are passed over, the longest valid beginning
// of a decimal number with a point counts ("144,5" is 144, "1E2" is 100); 0 when there is none.
double Val(std::string_view text);
// A number's text with a blank in front when it is not negative: Str(3) is " 3".
// At most 15 significant digits and no trailing zeros behind the point; from 1E15 on all digits
// before it. Never an exponent.
std::string Str(double value);
// The same without the blank.
std::string PlainNumber(double value);
// Rounded to the nearest whole number, halves to even.
long long RoundHalfEven(double value);

// A number by a pattern such as "000", "#####.000" or "#,###".
// Before the point: at least as many digits as "0" places, and all the others too, even where the
// pattern has no place for them; a comma between threes where the pattern has one; nothing for 0
// where it has no place at all (".00").
// Behind the point: as many digits as places, without the zeros at the end that stand on "#".
// Halves round away from zero, as the number stands in 15 digits.
std::string FormatNumber(double value, std::string_view pattern);

}  // namespace brenvo::base
