#include "html_page.h"

namespace brenvo::awards {
namespace {

struct Tag {
  std::string_view upper, lower;
};
constexpr Tag kRowOpening{"<TR>", "<tr>"};
constexpr Tag kRowClosing{"</TR>", "</tr>"};

std::size_t FindTag(std::string_view text, const Tag& tag, std::size_t from) {
  const std::size_t upper = text.find(tag.upper, from);
  return upper != std::string_view::npos ? upper : text.find(tag.lower, from);
}

}  // namespace

std::optional<PageTemplate> CutTemplate(std::string_view text) {
  const std::size_t heading = FindTag(text, kRowOpening, 0);
  if (heading == std::string_view::npos) return std::nullopt;
  const std::size_t begin = FindTag(text, kRowOpening, heading + kRowOpening.upper.size());
  if (begin == std::string_view::npos) return std::nullopt;
  const std::size_t closing = FindTag(text, kRowClosing, begin + 1);
  if (closing == std::string_view::npos) return std::nullopt;
  const std::size_t end = closing + kRowClosing.upper.size();
  return PageTemplate{std::string(text.substr(0, begin)),
                      std::string(text.substr(begin, end - begin)), std::string(text.substr(end))};
}

void FillToken(std::string& row, std::string_view token, std::string_view value) {
  const std::size_t at = row.find(token);
  if (at != std::string::npos) row.replace(at, token.size(), value);
}

}  // namespace brenvo::awards
