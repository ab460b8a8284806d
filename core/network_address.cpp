#include "core/network_address.h"

#include <algorithm>
#include <charconv>
#include <optional>

namespace brenvo::core {
namespace {

std::optional<int> NumberIn(std::string_view text, int least, int most) {
  int number = 0;
  const char* const end = text.data() + text.size();
  const auto [at, error] = std::from_chars(text.data(), end, number);
  if (text.empty() || text.front() == '-' || error != std::errc() || at != end) return std::nullopt;
  return number < least || number > most ? std::nullopt : std::optional(number);
}

// The four numbers; none where the text has no four.
std::vector<int> NumbersOf(std::string_view text) {
  constexpr std::size_t kNumbers = 4;
  std::vector<int> numbers;
  for (std::size_t i = 0; i < kNumbers; ++i) {
    const std::size_t end = i + 1 < kNumbers ? text.find('.') : text.size();
    if (end == std::string_view::npos) return {};
    const auto number = NumberIn(text.substr(0, end), 0, 255);
    if (!number) return {};
    numbers.push_back(*number);
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  return numbers;
}

std::optional<NetworkTarget> TargetIn(std::string_view word) {
  const std::size_t colon = word.find(':');
  if (colon == std::string_view::npos || !IsAddress(word.substr(0, colon))) return std::nullopt;
  const auto port = NumberIn(word.substr(colon + 1), 1, 65535);
  if (!port) return std::nullopt;
  return NetworkTarget{std::string(word.substr(0, colon)), *port};
}

template <class See>
void EachWord(std::string_view text, const See& see) {
  while (!text.empty()) {
    const std::size_t end = std::min(text.find_first_of(" ,;"), text.size());
    if (end > 0) see(text.substr(0, end));
    text.remove_prefix(std::min(end + 1, text.size()));
  }
}

}  // namespace

bool IsAddress(std::string_view text) { return !NumbersOf(text).empty(); }

bool IsGroupAddress(std::string_view text) {
  const std::vector<int> numbers = NumbersOf(text);
  return !numbers.empty() && numbers.front() >= 224 && numbers.front() <= 239;
}

std::vector<NetworkTarget> TargetsOf(std::string_view text) {
  std::vector<NetworkTarget> targets;
  EachWord(text, [&](std::string_view word) {
    if (auto target = TargetIn(word)) targets.push_back(std::move(*target));
  });
  return targets;
}

std::string FaultOfTargets(std::string_view text) {
  std::string fault;
  EachWord(text, [&](std::string_view word) {
    if (fault.empty() && !TargetIn(word)) fault = word;
  });
  return fault;
}

}  // namespace brenvo::core
