#include "core/call_forms.h"

#include <algorithm>

#include "base/text.h"

namespace brenvo::core {

std::string BaseCall(std::string_view call) {
  const std::string whole = base::UpperAscii(base::Trim(call));
  const auto endsInLetter = [](std::string_view part) {
    return !part.empty() && part.back() >= 'A' && part.back() <= 'Z';
  };
  std::string_view best;
  for (std::string_view rest = whole; !rest.empty();) {
    const std::size_t slash = std::min(rest.find('/'), rest.size());
    const std::string_view part = rest.substr(0, slash);
    rest.remove_prefix(std::min(slash + 1, rest.size()));
    const bool better = part.size() > best.size() ||
                        (part.size() == best.size() && endsInLetter(part) && !endsInLetter(best));
    if (better) best = part;
  }
  return std::string(best);
}

}  // namespace brenvo::core
