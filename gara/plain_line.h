// Texts on their way into a log file of seven bits.
#pragma once

#include <string>
#include <string_view>

#include "gara/log_file.h"

namespace brenvo::gara {

// The text as such a file can hold it: plain letters, on one line, without `parting`. What it loses
// is told.
inline constexpr char kNoParting = '\0';
std::string PlainLine(std::string_view field, std::string_view text, char parting,
                      std::vector<WrittenOtherwise>& changes);

// The bytes of a file as text, whatever its letters, and its lines, however they end.
std::string TextOfBytes(std::string_view bytes);
std::vector<std::string_view> LinesOf(std::string_view text);
std::vector<std::string_view> Split(std::string_view line, char between);
// Nothing but digits, from one up to so many.
bool IsNumber(std::string_view text, std::size_t most);
std::int64_t NumberOf(std::string_view digits);
// Letters, digits and "/", with a letter and a digit, three to fifteen of them.
bool LooksLikeCall(std::string_view text);

}  // namespace brenvo::gara
