#include "links/chat_layout.h"

#include <algorithm>

namespace brenvo {
namespace {

constexpr int kHalfBorder = 25;
constexpr int kLowest = 500;

}  // namespace

ChatHeights ShareHeight(Twips height, bool personalShown) {
  if (!personalShown) return {height, Twips(0)};
  const Twips half(std::max(0, height.Value() / 2 - kHalfBorder));
  return {half, half};
}

ChatHeights DragBorder(ChatHeights heights, Twips down) {
  const int most = heights.ReceivedPersonal.Value() - kLowest;
  const int least = kLowest - heights.Received.Value();
  if (most < least) return heights;
  const Twips moved(std::clamp(down.Value(), least, most));
  return {heights.Received + moved, heights.ReceivedPersonal - moved};
}

}  // namespace brenvo
