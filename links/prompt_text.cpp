#include "prompt_text.h"

#include "base/text.h"

namespace brenvo::links {
namespace {

// Will, won't, do, don't: an option's number follows.
constexpr char32_t kInterpret = 255, kFirstChoice = 251, kLastChoice = 254;
constexpr char32_t kFirstPrinted = 32, kDelete = 127, kFirstPrintedAbove = 160;

bool IsControl(char32_t character) {
  return character < kFirstPrinted || (character >= kDelete && character < kFirstPrintedAbove);
}

}  // namespace

std::string PromptText(std::string_view line, std::size_t most) {
  const std::u32string arrived = base::Characters(line);
  std::u32string shown;
  for (std::size_t at = 0; at < arrived.size(); ++at) {
    if (arrived[at] == kInterpret) {
      const char32_t order = at + 1 < arrived.size() ? arrived[at + 1] : 0;
      at += order >= kFirstChoice && order <= kLastChoice ? 2 : 1;
    } else if (!IsControl(arrived[at])) {
      shown += arrived[at];
    }
  }
  if (shown.size() > most) shown.erase(0, shown.size() - most);
  return base::FromCharacters(shown);
}

}  // namespace brenvo::links
