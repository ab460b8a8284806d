#include "measure_prefixes/cty_file.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <charconv>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <utility>
#include <vector>

namespace brenvo::measure_prefixes {
namespace {

// Names in the file that are not our country code: those of the European awards (behind "*"), and
// Sardinia.
constexpr std::array<std::pair<std::string_view, std::string_view>, 7> kOurCodes = {{
    {"*4U1V", "OE"},
    {"*GM/S", "GM"},
    {"*IG9", "I"},
    {"*IT9", "I"},
    {"*JW/B", "JW"},
    {"*TA1", "TA"},
    {"IS", "IS0"},
}};

std::string_view Trimmed(std::string_view text) {
  constexpr std::string_view kWhite = " \t\r\n";
  const std::size_t first = text.find_first_not_of(kWhite);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(kWhite) - first + 1);
}

std::vector<std::string_view> Split(std::string_view text, char separator) {
  std::vector<std::string_view> parts;
  std::size_t start = 0;
  while (true) {
    const std::size_t end = text.find(separator, start);
    parts.push_back(Trimmed(text.substr(start, end - start)));
    if (end == std::string_view::npos) return parts;
    start = end + 1;
  }
}

int Number(std::string_view text) {
  int value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error != std::errc() || end != text.data() + text.size()) {
    throw std::runtime_error("\"" + std::string(text) + "\" is no zone");
  }
  return value;
}

std::string OurCode(std::string_view name) {
  std::string code(name);
  for (char& c : code) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
  for (const auto& [theirs, ours] : kOurCodes) {
    if (code == theirs) return std::string(ours);
  }
  return code;
}

// The text within the brackets, when the entry has them.
std::optional<std::string_view> Within(std::string_view entry, char open, char close) {
  const std::size_t start = entry.find(open);
  if (start == std::string_view::npos) return std::nullopt;
  const std::size_t end = entry.find(close, start);
  if (end == std::string_view::npos) return std::nullopt;
  return entry.substr(start + 1, end - start - 1);
}

// The file has one entry for KG4, but only calls with two letters behind it are of Guantanamo
// Bay; whoever uses the file tells them apart by their length.
bool IsKg4OfTheStates(std::string_view call) {
  constexpr std::string_view kPrefix = "KG4";
  if (!call.starts_with(kPrefix)) return false;
  const std::string_view letters =
      call.substr(kPrefix.size(), std::min(call.size(), call.find('/')) - kPrefix.size());
  return letters.size() != 2;
}

}  // namespace

void CtyFile::AddCountry(std::string_view record) {
  const std::size_t lineEnd = std::min(record.find('\n'), record.size());
  const std::vector<std::string_view> facts = Split(record.substr(0, lineEnd), ':');
  if (facts.size() < 8) throw std::runtime_error("no country: " + std::string(facts.front()));
  const Answer country{OurCode(facts[7]), Number(facts[1]), Number(facts[2]),
                       std::string(facts[3])};
  for (std::string_view entry : Split(record.substr(lineEnd), ',')) {
    if (entry.empty()) continue;
    Answer answer = country;
    if (const auto zone = Within(entry, '(', ')')) answer.ZoneCq = Number(*zone);
    if (const auto zone = Within(entry, '[', ']')) answer.ZoneItu = Number(*zone);
    if (const auto continent = Within(entry, '{', '}')) answer.Continent = *continent;
    const bool wholeCall = entry.starts_with('=');
    if (wholeCall) entry.remove_prefix(1);
    const std::string name(entry.substr(0, entry.find_first_of("([{<~")));
    (wholeCall ? calls_ : prefixes_).insert_or_assign(name, answer);
  }
}

CtyFile CtyFile::Parse(std::string_view text) {
  CtyFile file;
  for (const std::string_view record : Split(text, ';')) {
    if (!record.empty()) file.AddCountry(record);
  }
  return file;
}

CtyFile CtyFile::Read(const std::filesystem::path& file) {
  std::ifstream in(file, std::ios::binary);
  if (!in) throw std::runtime_error(file.string() + ": cannot be read");
  const std::string text((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
  return Parse(text);
}

std::optional<Answer> CtyFile::Find(std::string_view call) const {
  if (const auto whole = calls_.find(call); whole != calls_.end()) return whole->second;
  if (IsKg4OfTheStates(call)) return Find("K4" + std::string(call.substr(3)));
  for (std::size_t length = call.size(); length > 0; --length) {
    const auto prefix = prefixes_.find(call.substr(0, length));
    if (prefix != prefixes_.end()) return prefix->second;
  }
  return std::nullopt;
}

}  // namespace brenvo::measure_prefixes
