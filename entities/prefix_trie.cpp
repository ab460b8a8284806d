#include "prefix_trie.h"

#include <algorithm>
#include <bit>

#include "entities/table.h"

namespace brenvo::entities {
namespace {

constexpr Signs kLetters = (Signs{1} << 26) - 1;
constexpr Signs kDigits = ((Signs{1} << 10) - 1) << 26;
constexpr Signs kStroke = Signs{1} << 36;

// "A-FX" within brackets.
Signs Class(std::string_view text) {
  Signs signs = 0;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const Signs from = SignOf(text[i]);
    if (from == 0) return 0;
    if (i + 2 < text.size() && text[i + 1] == '-') {
      const Signs to = SignOf(text[i + 2]);
      if (to < from) return 0;
      signs |= (to - from) | to;  // the bits from one to the other
      i += 2;
    } else {
      signs |= from;
    }
  }
  return signs;
}

}  // namespace

Signs SignOf(char c) {
  if (c >= 'A' && c <= 'Z') return Signs{1} << (c - 'A');
  if (c >= '0' && c <= '9') return Signs{1} << (26 + c - '0');
  return c == '/' ? kStroke : 0;
}

bool IsPlainText(std::string_view text) {
  return !text.empty() && std::ranges::all_of(text, [](char c) { return SignOf(c) != 0; });
}

std::optional<Pattern> ParsePattern(std::string_view text) {
  Pattern pattern;
  for (std::size_t i = 0; i < text.size(); ++i) {
    Signs signs = 0;
    bool any = true;
    switch (text[i]) {
      case '%':
        signs = kLetters;
        break;
      case '#':
        signs = kDigits;
        break;
      case '?':
        signs = kLetters | kDigits;
        break;
      case '[': {
        const std::size_t end = text.find(']', i);
        if (end == std::string_view::npos) return std::nullopt;
        signs = Class(text.substr(i + 1, end - i - 1));
        i = end;
        any = std::popcount(signs) > 1;
        break;
      }
      default:
        signs = SignOf(text[i]);
        any = false;
    }
    if (signs == 0 || pattern.places.size() == kLongestCall) return std::nullopt;
    pattern.places.push_back(signs);
    if (!any) ++pattern.plain;
    pattern.whole = pattern.whole || signs == kStroke;
  }
  if (pattern.places.empty()) return std::nullopt;
  pattern.whole = pattern.whole || text.back() == '%' || text.back() == '?';
  return pattern;
}

void PrefixTrie::Add(const Pattern& pattern, std::uint32_t value) {
  std::uint32_t node = 0;
  for (const Signs signs : pattern.places) {
    const auto& edges = growing_[node].edges;
    const auto known = std::ranges::find(edges, signs, &Edge::signs);
    if (known != edges.end()) {
      node = known->node;
      continue;
    }
    const auto made = static_cast<std::uint32_t>(growing_.size());
    growing_[node].edges.push_back({signs, made});
    growing_.emplace_back();
    node = made;
  }
  growing_[node].values.push_back({value, pattern.whole});
}

void PrefixTrie::Finish() {
  nodes_.clear();
  for (const Growing& each : growing_) {
    nodes_.push_back({static_cast<std::uint32_t>(edges_.size()),
                      static_cast<std::uint32_t>(each.edges.size()),
                      static_cast<std::uint32_t>(values_.size()),
                      static_cast<std::uint32_t>(each.values.size())});
    edges_.insert(edges_.end(), each.edges.begin(), each.edges.end());
    values_.insert(values_.end(), each.values.begin(), each.values.end());
  }
  growing_.clear();
  growing_.shrink_to_fit();
}

}  // namespace brenvo::entities
