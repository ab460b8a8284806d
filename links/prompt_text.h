// What is read of a line that has not ended.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace brenvo::links {

// The line without telnet options (character 255 and what belongs to it) and without controls; no
// more than so many of its last characters.
std::string PromptText(std::string_view line, std::size_t most);

}  // namespace brenvo::links
