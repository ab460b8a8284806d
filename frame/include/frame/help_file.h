// The help text: pages by number, in one file.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace brenvo::frame {

struct HelpPage {
  int topic = 0;
  std::string title;
  std::string text;  // Markdown
};

// A line "@ NUMBER TITLE" begins a page; what stands before the first one is no page.
std::vector<HelpPage> ParseHelp(std::string_view text);

}  // namespace brenvo::frame
