#include "call_list.h"

#include <algorithm>
#include <numeric>

#include "gara/check.h"

namespace brenvo::gara {
namespace {

bool LessBackwards(std::string_view a, std::string_view b) {
  return std::lexicographical_compare(a.rbegin(), a.rend(), b.rbegin(), b.rend());
}

}  // namespace

std::size_t CallList::Letter(char c) {
  if (c >= 'A' && c <= 'Z') return static_cast<std::size_t>(c - 'A');
  if (c >= '0' && c <= '9') return static_cast<std::size_t>(26 + c - '0');
  return c == '/' ? kLetters - 1 : kLetters;
}

CallList::CallList(std::vector<std::string> calls) : calls_(std::move(calls)) {
  std::ranges::sort(calls_);
  calls_.erase(std::unique(calls_.begin(), calls_.end()), calls_.end());
  backwards_.resize(calls_.size());
  std::iota(backwards_.begin(), backwards_.end(), 0U);
  std::ranges::sort(backwards_, [this](std::uint32_t a, std::uint32_t b) {
    return LessBackwards(calls_[a], calls_[b]);
  });
  pairs_.resize(kLetters * kLetters);
  for (std::uint32_t i = 0; i < calls_.size(); ++i) {
    const std::string& call = calls_[i];
    for (std::size_t at = 0; at + 1 < call.size(); ++at) {
      const std::size_t first = Letter(call[at]), second = Letter(call[at + 1]);
      if (first == kLetters || second == kLetters) continue;
      auto& places = pairs_[first * kLetters + second];
      if (places.empty() || places.back() != i) places.push_back(i);
    }
  }
}

bool CallList::Contains(std::string_view call) const {
  return std::ranges::binary_search(calls_, call);
}

std::vector<std::string> CallList::Holding(std::string_view text, std::size_t most) const {
  std::vector<std::string> found;
  if (text.size() < 2 || pairs_.empty()) return found;
  const std::vector<std::uint32_t>* fewest = nullptr;
  for (std::size_t at = 0; at + 1 < text.size(); ++at) {
    const std::size_t first = Letter(text[at]), second = Letter(text[at + 1]);
    if (first == kLetters || second == kLetters) return found;
    const auto& places = pairs_[first * kLetters + second];
    if (fewest == nullptr || places.size() < fewest->size()) fewest = &places;
  }
  for (const std::uint32_t place : *fewest) {
    if (found.size() == most) break;
    const std::string& call = calls_[place];
    if (call != text && call.find(text) != std::string::npos) found.push_back(call);
  }
  return found;
}

std::vector<std::string> CallList::Near(std::string_view call, std::size_t most) const {
  std::vector<std::string> found;
  if (call.size() < 3) return found;
  // Of two halves a single letter leaves one alone.
  const std::string head(call.substr(0, call.size() / 2)), tail(call.substr(call.size() / 2));
  const auto look = [&](const std::string& other) {
    if (DifferByOne(other, call)) found.push_back(other);
  };
  for (auto at = std::ranges::lower_bound(calls_, head);
       at != calls_.end() && at->starts_with(head); ++at) {
    look(*at);
  }
  const auto from =
      std::partition_point(backwards_.begin(), backwards_.end(),
                           [&](std::uint32_t place) { return LessBackwards(calls_[place], tail); });
  for (auto at = from; at != backwards_.end() && calls_[*at].ends_with(tail); ++at) {
    look(calls_[*at]);
  }
  std::ranges::sort(found);
  found.erase(std::unique(found.begin(), found.end()), found.end());
  if (found.size() > most) found.resize(most);
  return found;
}

}  // namespace brenvo::gara
