// Text as characters: every length and position counts characters of UTF-8, never bytes.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace brenvo::base {

std::size_t Len(std::string_view text);
// Whether every byte is a character of ASCII: then bytes and characters count alike.
bool IsAscii(std::string_view text);
// The first or last `count` characters, or the whole text if it is shorter.
std::string Left(std::string_view text, std::size_t count);
std::string Right(std::string_view text, std::size_t count);
// From position `start`, counted from 1 (0 counts as 1).
std::string Mid(std::string_view text, std::size_t start);
std::string Mid(std::string_view text, std::size_t start, std::size_t count);
// Blanks alone are dropped, no other white space.
std::string Trim(std::string_view text);
std::string LTrim(std::string_view text);
std::string RTrim(std::string_view text);
std::string Space(std::size_t count);
// `text` padded with blanks and cut to exactly `width` characters.
std::string PadRight(std::string_view text, std::size_t width);
// Letters of Latin, Greek and Cyrillic change case; everything else stays.
std::string Upper(std::string_view text);
std::string Lower(std::string_view text);
// Letters of ASCII alone change case.
std::string UpperAscii(std::string_view text);
// The same but for the case of ASCII letters: names of fields, columns and tables hold no others.
bool SameText(std::string_view a, std::string_view b);
char32_t UpperChar(char32_t c);
char32_t LowerChar(char32_t c);
// Position from 1 of the first `what` in `text` at or behind `start`; 0 when there is none.
std::size_t InStr(std::string_view text, std::string_view what);
std::size_t InStr(std::size_t start, std::string_view text, std::string_view what);
// The characters of a text; bytes that are no UTF-8 become U+FFFD.
std::u32string Characters(std::string_view text);
std::string FromCharacters(std::u32string_view characters);
// Valid UTF-8 in any case: bytes that are none become U+FFFD.
std::string ValidUtf8(std::string_view text);

}  // namespace brenvo::base
