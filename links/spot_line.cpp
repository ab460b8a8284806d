#include "spot_line.h"

#include <algorithm>

#include "base/number.h"
#include "base/text.h"

namespace brenvo::links {
namespace {

constexpr std::string_view kOpening = "DX DE";

// The place of the next blank, or of the next character that is none; the line's end when there
// is no more.
std::size_t NextBlank(std::string_view line, std::size_t from) {
  return std::min(line.find(' ', from), line.size());
}
std::size_t NextWord(std::string_view line, std::size_t from) {
  return std::min(line.find_first_not_of(' ', from), line.size());
}

// One character on; a character may be several bytes.
std::size_t Behind(std::string_view line, std::size_t at) {
  return std::min(at + base::Left(line.substr(std::min(at, line.size())), 1).size(), line.size());
}

// Words that spotters write for modes, as contacts have them.
constexpr std::string_view kModes[] = {"CW",     "SSB",  "USB", "LSB",  "RTTY",  "FM",
                                       "AM",     "FT8",  "FT4", "Q65",  "PSK31", "PSK63",
                                       "MSK144", "JT65", "JT9", "FST4", "JS8",   "WSPR"};

// The first of them that stands as a word in the line.
std::string ModeIn(std::string_view line) {
  for (std::size_t at = NextWord(line, 0); at < line.size();) {
    const std::size_t end = NextBlank(line, at);
    const std::string_view word = line.substr(at, end - at);
    if (std::find(std::begin(kModes), std::end(kModes), word) != std::end(kModes)) {
      return std::string(word);
    }
    at = NextWord(line, end);
  }
  return {};
}

}  // namespace

bool BeginsAsSpot(std::string_view line) { return line.starts_with(kOpening); }

std::optional<SpotLine> CutSpotLine(std::string_view line) {
  const std::size_t colon = line.find(':');
  if (colon == std::string_view::npos) return std::nullopt;
  SpotLine spot;

  const std::size_t frequency = NextWord(line, colon + 1);
  const std::size_t behindFirst = Behind(line, frequency);
  std::size_t frequencyEnd = NextBlank(line, behindFirst);
  if (frequencyEnd == line.size()) frequencyEnd = behindFirst;
  spot.SpotFrequenza =
      base::Khz(base::Val(base::Trim(line.substr(frequency, frequencyEnd - frequency))));

  const std::size_t spotter = std::min(Behind(line, kOpening.size()), frequency);
  spot.Spotter = line.substr(spotter, frequency - spotter);

  // The scan starts inside the frequency and ends behind the word that follows it. A frequency of
  // a single character makes it take the word behind the call.
  const std::size_t inFrequency = NextWord(line, behindFirst);
  const std::size_t call = NextWord(line, NextBlank(line, inFrequency));
  const std::size_t callEnd = NextBlank(line, call);
  if (callEnd < line.size()) spot.SpotCall = line.substr(call, callEnd - call);
  return spot;
}

std::optional<SpotInText> FindSpot(std::string_view text, std::size_t place) {
  // `place` counts characters.
  const std::size_t at = std::min(base::Left(text, place).size(), text.size());
  const std::size_t begin = at == 0 ? 0 : text.rfind('\n', at - 1) + 1;  // npos + 1 is 0
  const auto spotIn = [](std::string_view line) -> std::optional<SpotInText> {
    const std::string upper = base::Upper(line);
    const auto spot = BeginsAsSpot(upper) ? CutSpotLine(upper) : std::nullopt;
    if (!spot) return std::nullopt;
    return SpotInText{*spot, ModeIn(upper)};
  };
  if (auto spot = spotIn(text.substr(begin, text.find('\n', begin) - begin))) return spot;
  while (!text.empty()) {
    const std::size_t last = text.rfind('\n', text.size() - 1) + 1;
    if (auto spot = spotIn(text.substr(last))) return spot;
    text = text.substr(0, last == 0 ? 0 : last - 1);
  }
  return std::nullopt;
}

}  // namespace brenvo::links
