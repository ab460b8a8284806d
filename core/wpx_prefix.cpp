#include "core/wpx_prefix.h"

#include <algorithm>
#include <vector>

#include "base/text.h"

namespace brenvo::core {
namespace {

bool IsDigit(char c) { return c >= '0' && c <= '9'; }
bool IsLetter(char c) { return c >= 'A' && c <= 'Z'; }

// The part of a call that tells its prefix, and a district that moves it.
struct CallParts {
  std::string main;
  char district = 0;
};

CallParts PartsOf(const std::string& call) {
  std::vector<std::string> parts;
  std::size_t from = 0;
  while (from <= call.size()) {
    const std::size_t end = std::min(call.find('/', from), call.size());
    if (end > from) parts.push_back(call.substr(from, end - from));
    from = end + 1;
  }
  if (parts.empty()) return {};
  if (parts.size() == 1) return {parts[0], 0};
  CallParts found;
  std::size_t station = 0;
  for (std::size_t i = 1; i < parts.size(); ++i) {
    if (parts[i].size() > parts[station].size()) station = i;
  }
  found.main = parts[station];
  for (std::size_t i = 0; i < parts.size(); ++i) {
    if (i == station) continue;
    const std::string& part = parts[i];
    if (part.size() == 1 && IsDigit(part[0])) {
      found.district = part[0];
    } else if (part != "P" && part != "M" && part != "MM" && part != "AM" && part != "QRP" &&
               part != "A" && part != "LH" && part.size() >= 2) {
      // The country that he works from.
      return {part, 0};
    } else if (part.size() == 1 && i < station) {
      return {part, 0};
    }
  }
  return found;
}

}  // namespace

std::string WpxPrefix(std::string_view call) {
  const std::string whole = base::UpperAscii(base::Trim(call));
  for (const char c : whole) {
    if (!IsDigit(c) && !IsLetter(c) && c != '/') return {};
  }
  CallParts parts = PartsOf(whole);
  if (parts.main.empty() || !std::ranges::any_of(parts.main, IsLetter)) return {};
  // Up to the last digit of the first part that has letters behind it, or of all of it.
  std::size_t end = parts.main.find_last_of("0123456789");
  if (end == std::string::npos || (end == 0 && parts.main.size() > 1)) {
    // Without a digit: two letters and a 0; a digit at the head alone ("4X") belongs to them.
    return parts.main.substr(0, 2) + (parts.district != 0 ? parts.district : '0');
  }
  std::string prefix = parts.main.substr(0, end + 1);
  if (parts.district != 0) prefix.back() = parts.district;
  return prefix;
}

}  // namespace brenvo::core
