#include "frame/help_file.h"

#include <charconv>

#include "base/text.h"

namespace brenvo::frame {
namespace {

// Takes the first line off the text, without its end.
std::string_view TakeLine(std::string_view& text) {
  const std::size_t end = text.find('\n');
  std::string_view line = text.substr(0, end);
  text = end == std::string_view::npos ? std::string_view() : text.substr(end + 1);
  if (line.ends_with('\r')) line.remove_suffix(1);
  return line;
}

bool ReadHeading(std::string_view line, HelpPage& page) {
  if (!line.starts_with("@ ")) return false;
  line.remove_prefix(2);
  const auto [end, error] = std::from_chars(line.data(), line.data() + line.size(), page.topic);
  if (error != std::errc()) return false;
  page.title = base::Trim(line.substr(static_cast<std::size_t>(end - line.data())));
  return true;
}

}  // namespace

std::vector<HelpPage> ParseHelp(std::string_view text) {
  std::vector<HelpPage> pages;
  while (!text.empty()) {
    const std::string_view line = TakeLine(text);
    if (HelpPage page; ReadHeading(line, page)) {
      pages.push_back(std::move(page));
    } else if (!pages.empty()) {
      pages.back().text.append(line).push_back('\n');
    }
  }
  return pages;
}

}  // namespace brenvo::frame
