// Numbers and texts, converted as the station's screens, files and statements write them.
#pragma once

#include <string>
#include <string_view>

namespace brenvo {

// The number that a text begins with: leading blanks are passed over, the longest valid beginning
// of a decimal number with a point counts ("144,5" is 144, "1E2" is 100); 0 when there is none.
double Val(std::string_view text);
// A number's text with a blank in front when it is not negative: Str(3) is " 3".
// At most 15 significant digits, never an exponent, no trailing zeros.
std::string Str(double value);
// The same without the blank.
std::string PlainNumber(double value);
// Rounded to the nearest whole number, halves to even.
long long RoundHalfEven(double value);

// A number by a pattern of "0", "#", "," and "."; patterns in use: "00", "000", "0000", "000000",
// "#####.000", "####.000", "###.0", "##", "####", "#######", "####,###", "####,###,###",
// "#,###.000", "###,###.0", ".00". Halves round away from zero. A pattern of # places shows 0 as
// "0"; digits that do not fit the pattern are written all the same.
std::string FormatNumber(double value, std::string_view pattern);

}  // namespace brenvo
