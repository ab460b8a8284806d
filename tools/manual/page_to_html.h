// The manual's pages as HTML.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "frame/help_file.h"

namespace brenvo::manual {

// Markdown as Qt reads it, and so as the program shows the page. Paragraphs, tables, numbered
// lists, pictures and **bold**, *italic*, `code` become the tags of that name; anything else comes
// out as words. Wants a QGuiApplication, of any platform.
std::string PageToHtml(std::string_view markdown);

// All pages as one document, with a list of contents; page 100 is reached as "#t100".
std::string ManualToHtml(const std::vector<frame::HelpPage>& pages, std::string_view title);

}  // namespace brenvo::manual
