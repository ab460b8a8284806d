// What the operator types, looked at key by key and whole.
#pragma once

#include <string_view>

#include "core/session.h"

namespace brenvo::core {

// Blanks alone are empty.
bool IsEmptyField(std::string_view value);
// True when the text converts to a date; otherwise shows "Data errata".
bool IsValidDate(Session& session, std::string_view text);

// Keystroke filters; 0 swallows the key.
char32_t DigitsOnlyKey(char32_t key);  // digits and backspace
char32_t NumericKey(char32_t key);     // the same, "-", "." and ","
char32_t UpperKey(char32_t key);

}  // namespace brenvo::core
