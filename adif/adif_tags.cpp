#include "adif/adif_tags.h"

#include <algorithm>

#include "adif/adif_reader.h"
#include "base/text.h"

namespace brenvo::adif {
namespace {

constexpr std::size_t kLargestLength = std::size_t{1} << 48;

constexpr bool IsDigit(char c) { return c >= '0' && c <= '9'; }
constexpr bool IsLetter(char c) { return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z'); }

bool IsLikely(const AdifTag& tag) {
  if (!IsLetter(tag.name.front())) return false;
  if (!tag.hasLength) {
    return base::SameText(tag.name, "EOR") || base::SameText(tag.name, "EOH") ||
           base::SameText(tag.name.substr(0, 4), "APP_");
  }
  return std::all_of(tag.name.begin(), tag.name.end(),
                     [](char c) { return IsLetter(c) || IsDigit(c) || c == '_'; });
}

}  // namespace

bool ReadAdifTag(std::string_view bytes, AdifTag& tag) {
  const std::string_view rest = bytes.substr(0, kLongestAdifTag);
  std::size_t at = 1;
  while (at < rest.size() && IsAdifNameCharacter(rest[at])) ++at;
  tag.name = rest.substr(1, at - 1);
  if (tag.name.empty() || tag.name.size() > kLongestAdifName || at >= rest.size()) return false;
  // It is written in UTF-8, where it may be longer.
  if (!base::IsAscii(tag.name) && TextOfBytes(tag.name).size() > kLongestAdifName) return false;
  tag.hasLength = rest[at] == ':' && at + 1 < rest.size() && IsDigit(rest[at + 1]);
  tag.length = 0;
  if (tag.hasLength) {
    for (++at; at < rest.size() && IsDigit(rest[at]); ++at) {
      if (tag.length < kLargestLength) {
        tag.length = tag.length * 10 + static_cast<std::size_t>(rest[at] - '0');
      }
    }
  }
  if (at < rest.size() && rest[at] == ':') {  // the type of the data, or no length at all
    ++at;
    while (at < rest.size() && rest[at] != '>' && rest[at] != '<') ++at;
  }
  while (at < rest.size() && rest[at] == ' ') ++at;
  if (at >= rest.size() || rest[at] != '>') return false;
  tag.size = at + 1;
  return true;
}

std::size_t FindLikelyTag(std::string_view bytes, std::size_t from, std::size_t to) {
  const std::string_view head = bytes.substr(0, to);
  AdifTag tag;
  for (std::size_t at = head.find('<', from); at != head.npos; at = head.find('<', at + 1)) {
    if (ReadAdifTag(bytes.substr(at), tag) && IsLikely(tag)) return at;
  }
  return std::string_view::npos;
}

}  // namespace brenvo::adif
