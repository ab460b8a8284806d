// The manual's pages as HTML.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "core/help_file.h"

namespace brenvo {

// The part of Markdown that the manual uses: paragraphs, tables, numbered lists, a picture on a
// line of its own, and **bold**, *italic*, `code` within a line. Anything else comes out as words.
std::string PageToHtml(std::string_view markdown);

// All pages as one document, with a list of contents; page 100 is reached as "#t100".
std::string ManualToHtml(const std::vector<HelpPage>& pages, std::string_view title);

}  // namespace brenvo
