// Prefixes and patterns of calls, found all at once.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string_view>
#include <vector>

namespace brenvo::entities {

// What stands at one place of a pattern: a bit for each sign.
using Signs = std::uint64_t;
Signs SignOf(char c);  // 0 for what stands in no call

struct Pattern {
  std::vector<Signs> places;
  int plain = 0;       // places that one sign alone fits
  bool whole = false;  // it is as long as the call
};
// Nothing when the text is no pattern.
std::optional<Pattern> ParsePattern(std::string_view text);
bool IsPlainText(std::string_view text);  // without "%", "#", "?", "[..]"

class PrefixTrie {
 public:
  void Add(const Pattern& pattern, std::uint32_t value);
  // Once all have been added.
  void Finish();

  // `see(value, length)` for each prefix that the call begins with, and each whole pattern.
  template <class See>
  void Find(std::string_view call, const See& see) const {
    constexpr std::size_t kMostAtOnce = 64;
    std::uint32_t now[kMostAtOnce], next[kMostAtOnce];
    std::size_t count = 1;
    now[0] = 0;
    for (std::size_t at = 0; at < call.size() && count > 0; ++at) {
      const Signs sign = SignOf(call[at]);
      std::size_t after = 0;
      for (std::size_t i = 0; i < count; ++i) {
        const Node& node = nodes_[now[i]];
        for (std::uint32_t e = node.firstEdge; e < node.firstEdge + node.edges; ++e) {
          if ((edges_[e].signs & sign) != 0 && after < kMostAtOnce) next[after++] = edges_[e].node;
        }
      }
      for (std::size_t i = 0; i < after; ++i) {
        const Node& node = nodes_[next[i]];
        for (std::uint32_t v = node.firstValue; v < node.firstValue + node.values; ++v) {
          if (!values_[v].whole || at + 1 == call.size()) see(values_[v].value, at + 1);
        }
        now[i] = next[i];
      }
      count = after;
    }
  }

 private:
  struct Node {
    std::uint32_t firstEdge = 0, edges = 0, firstValue = 0, values = 0;
  };
  struct Edge {
    Signs signs;
    std::uint32_t node;
  };
  struct Value {
    std::uint32_t value;
    bool whole;
  };
  struct Growing {
    std::vector<Edge> edges;
    std::vector<Value> values;
  };
  std::vector<Growing> growing_ = std::vector<Growing>(1);
  std::vector<Node> nodes_ = std::vector<Node>(1);
  std::vector<Edge> edges_;
  std::vector<Value> values_;
};

}  // namespace brenvo::entities
