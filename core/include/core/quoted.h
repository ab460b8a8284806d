// Texts pasted into statements.
#pragma once

#include <string>
#include <string_view>

namespace brenvo::core {

// The text as a literal of a statement, whatever it holds.
std::string Quoted(std::string_view text);

}  // namespace brenvo::core
