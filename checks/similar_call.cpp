#include "similar_call.h"

#include <algorithm>
#include <string>

namespace brenvo::checks {
namespace {

constexpr std::string_view kReplaced = "una lettera cambiata", kMissing = "una lettera in meno",
                           kAdded = "una lettera in più", kExchanged = "due lettere scambiate";

std::size_t AlikeAtStart(std::string_view a, std::string_view b) {
  const auto [at, other] = std::ranges::mismatch(a, b);
  return static_cast<std::size_t>(at - a.begin());
}

std::uint64_t HashOf(std::string_view text) { return std::hash<std::string_view>()(text); }

// The call, then the call without each of its letters.
template <class See>
void EachVariant(std::string_view call, const See& see) {
  see(HashOf(call));
  std::string without;
  for (std::size_t i = 0; i < call.size(); ++i) {
    if (i > 0 && call[i] == call[i - 1]) continue;  // the same text again
    without.assign(call.substr(0, i));
    without.append(call.substr(i + 1));
    see(HashOf(without));
  }
}

}  // namespace

std::string_view SlipBetween(std::string_view often, std::string_view call) {
  if (often == call) return {};
  const std::size_t at = AlikeAtStart(often, call);
  const std::string_view a = often.substr(at), b = call.substr(at);
  if (a.size() == b.size() + 1) return a.substr(1) == b ? kMissing : std::string_view();
  if (b.size() == a.size() + 1) return b.substr(1) == a ? kAdded : std::string_view();
  if (a.size() != b.size()) return {};
  if (a.substr(1) == b.substr(1)) return kReplaced;
  if (a.size() >= 2 && a[0] == b[1] && a[1] == b[0] && a.substr(2) == b.substr(2)) {
    return kExchanged;
  }
  return {};
}

SimilarCalls::SimilarCalls(const std::vector<std::string_view>& calls) : calls_(calls) {
  for (std::uint32_t i = 0; i < calls.size(); ++i) {
    EachVariant(calls[i], [&](std::uint64_t hash) { variants_.push_back({hash, i}); });
  }
  std::ranges::sort(variants_);
}

std::vector<std::size_t> SimilarCalls::Of(std::string_view call) const {
  std::vector<std::size_t> found;
  EachVariant(call, [&](std::uint64_t hash) {
    for (const Variant& each : std::ranges::equal_range(variants_, hash, {}, &Variant::hash)) {
      if (!SlipBetween(calls_[each.call], call).empty()) found.push_back(each.call);
    }
  });
  std::ranges::sort(found);
  const auto [from, to] = std::ranges::unique(found);
  found.erase(from, to);
  return found;
}

}  // namespace brenvo::checks
