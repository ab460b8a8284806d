#include "read_bytes.h"

#include <algorithm>

#include "base/text.h"
#include "plain_line.h"

namespace brenvo::gara {

std::vector<std::string> CallsOf(std::string_view bytes) {
  std::vector<std::string> calls;
  for (const std::string_view line : LinesOf(bytes)) {
    const std::string call = base::UpperAscii(base::Trim(line));
    if (LooksLikeCall(call) && !call.starts_with("VER2")) calls.push_back(call);
  }
  std::ranges::sort(calls);
  calls.erase(std::unique(calls.begin(), calls.end()), calls.end());
  return calls;
}

}  // namespace brenvo::gara
