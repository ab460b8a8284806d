#include "call_parts.h"

#include <algorithm>
#include <array>
#include <vector>

#include "entities/table.h"

namespace brenvo::entities {
namespace {

bool IsDigit(char c) { return c >= '0' && c <= '9'; }
bool IsLetter(char c) { return c >= 'A' && c <= 'Z'; }
bool HasDigit(std::string_view text) { return std::ranges::any_of(text, IsDigit); }

// What operators write behind a stroke that tells how they work, and not where.
constexpr std::array<std::string_view, 28> kHow = {
    "P",  "M",  "A",  "B",  "QRP", "QRPP", "LH", "LT",  "LGT", "BCN",  "JOTA", "J",  "R",   "SD",
    "LS", "SA", "PM", "FF", "AM",  "MM",   "LP", "QRO", "YL",  "YOTA", "HQ",   "SK", "AIR", "ND"};
bool TellsHow(std::string_view part) { return std::ranges::find(kHow, part) != kHow.end(); }

// Letters that are a country's prefix by themselves.
constexpr std::string_view kCountryLetters = "FGIKW";

// Provinces of Argentina are told by a letter.
bool IsArgentine(std::string_view base) {
  return base.size() > 2 &&
         ((base[0] == 'L' && base[1] >= 'O' && base[1] <= 'W') || base.starts_with("AY") ||
          base.starts_with("AZ") || (base[0] == 'L' && base[1] >= '2' && base[1] <= '9'));
}

bool IsOfTheStates(std::string_view base) {
  return !base.empty() && (base[0] == 'K' || base[0] == 'N' || base[0] == 'W' ||
                           (base[0] == 'A' && base.size() > 1 && base[1] <= 'L'));
}

// A call that a station may have, rather than a prefix: letters behind its last digit.
bool IsWholeCall(std::string_view part) {
  return part.size() > 3 && HasDigit(part.substr(1)) && IsLetter(part.back()) &&
         !(part.size() == 4 && IsDigit(part[2]) && !IsDigit(part[1]) && !IsDigit(part[0]) &&
           part[0] == 'V');  // VK9X, VP2M
}

// What a class of licence of the United States was.
bool IsClassOfTheStates(std::string_view base, std::string_view part) {
  return IsOfTheStates(base) && (part == "N" || part == "T" || part == "AG" || part == "AE" ||
                                 part == "AA" || part == "KT" || part == "G");
}

bool TellsPlaceBehind(std::string_view base, std::string_view part, const PrefixIn& prefixIn) {
  if (part.empty() || part.size() > 4 || part.size() > base.size()) return false;
  if (IsClassOfTheStates(base, part)) return false;
  if (part.size() == 1) {
    return kCountryLetters.find(part[0]) != std::string_view::npos && !IsArgentine(base);
  }
  if (!HasDigit(part) && (part.size() > 2 || IsArgentine(base))) return false;
  if (std::ranges::all_of(part, IsDigit)) return false;
  const std::size_t known = prefixIn(part).size();
  // Behind what is a prefix without a digit there may be one, as in W4; "FD" is none of F.
  const bool oneDigit = IsDigit(part.back()) && !IsDigit(part[part.size() - 2]);
  return known == part.size() || (known > 0 && oneDigit);
}

}  // namespace

std::string CallText(std::string_view call) {
  std::string text;
  for (const char c : call) {
    if (c == ' ') continue;
    const char upper = c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
    if (!IsLetter(upper) && !IsDigit(upper) && upper != '/') return {};
    if (text.size() == kLongestCall) return {};
    text += upper;
  }
  return text;
}

CallParts PartsOf(std::string_view call, const PrefixIn& prefixIn) {
  const auto isPlace = [&](std::string_view part) { return !prefixIn(part).empty(); };
  std::array<std::string_view, kLongestCall> parts;
  std::size_t count = 0;
  CallParts found;
  for (std::size_t start = 0; start <= call.size() && count < parts.size();) {
    const std::size_t end = std::min(call.find('/', start), call.size());
    const std::string_view part = call.substr(start, end - start);
    start = end + 1;
    if (part.empty()) continue;
    if (count > 0) {
      if (part == "MM" || part == "AM") {
        found.mobile = true;
        continue;
      }
      if (TellsHow(part)) continue;
      if (part.size() > 1 && std::ranges::all_of(part, IsDigit)) continue;  // an anniversary
    }
    parts[count++] = part;
  }
  if (count == 0) return found;
  found.base = parts[0];
  if (count == 1) return found;
  // Behind a place and a call there may still be a district, which then is the place's.
  const std::string_view first = parts[0], second = parts[1];
  if (second.size() == 1 && IsDigit(second[0])) {
    found.digit = second[0];
    if (count > 2 && TellsPlaceBehind(first, parts[2], prefixIn)) found.place = parts[2];
    return found;
  }
  if (IsArgentine(first) && second.size() <= 2 && IsLetter(second[0])) {
    found.province = second[0];
    return found;
  }
  const bool firstIsPlace = first.size() <= 4 && isPlace(first) && !IsWholeCall(first);
  if (firstIsPlace && (first.size() < second.size() || IsWholeCall(second))) {
    found.base = second;
    found.place = first;
    return found;
  }
  if (TellsPlaceBehind(first, second, prefixIn)) {
    found.place = second;
    return found;
  }
  // Of two whole calls neither is a place.
  if (first.size() < second.size() && IsWholeCall(second) && isPlace(first) &&
      !IsWholeCall(first)) {
    found.base = second;
    found.place = first;
    return found;
  }
  // Whose station it is stands behind whoever works there.
  if (IsWholeCall(second) && isPlace(second)) found.base = second;
  return found;
}

std::string InDistrict(std::string_view base, char digit, const PrefixIn& prefixIn) {
  std::size_t first = 1;
  while (first < base.size() && !IsDigit(base[first])) ++first;
  if (first >= base.size()) return {};
  std::size_t last = first;
  while (last + 1 < base.size() && IsDigit(base[last + 1])) ++last;
  const bool island = IsOfTheStates(base) && first == 2 &&
                      (base[1] == 'H' || base[1] == 'L' || (base[1] == 'P' && base[0] != 'A'));
  // R10ABC is of R1, A60ABC of A6.
  const std::string_view letters = base.substr(0, first);
  const bool byLetters = first == last || !prefixIn(letters).empty();
  // Away from their islands they are in the states.
  std::string moved(island ? "W" : byLetters ? letters : base.substr(0, last));
  return moved += digit;
}

bool IsKg4OfTheStates(std::string_view base) {
  constexpr std::string_view kPrefix = "KG4";
  return base.starts_with(kPrefix) && base.size() > kPrefix.size() &&
         base.size() != kPrefix.size() + 2;
}

}  // namespace brenvo::entities
