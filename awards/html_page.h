// A web page made from a template: the row tags and bracketed tokens are all that is known of HTML.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace brenvo::awards {

struct PageTemplate {
  std::string head;  // up to the second row opening: the heading row stays in it
  std::string row;   // from that opening to the end of its closing, repeated for each entry
  std::string tail;  // everything behind
};

// Cuts at "<TR>" and "</TR>"; where the upper-case form is not found in the whole range, the
// lower-case one is looked for. Nothing when there are no two openings, or no closing behind the
// second.
std::optional<PageTemplate> CutTemplate(std::string_view text);

// Puts the value in the place of the first `token`; nothing happens when there is none.
void FillToken(std::string& row, std::string_view token, std::string_view value);

}  // namespace brenvo::awards
