// The order of texts in which all letters fold, and not those of ASCII alone.
#pragma once

#include <string_view>

namespace brenvo::dialect {

// Texts by the folding order: negative, 0 or positive.
int CompareFolded(std::string_view a, std::string_view b);
// Whether the text holds letters that ASCII's case folding does not reach.
bool NeedsFolding(std::string_view text);

}  // namespace brenvo::dialect
