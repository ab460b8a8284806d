// How the two text areas of the chat share its height.
#pragma once

#include "base/units.h"

namespace brenvo {

struct ChatHeights {
  Twips Received, ReceivedPersonal;  // 0 for an area that is hidden
  friend bool operator==(const ChatHeights&, const ChatHeights&) = default;
};

// Half of the height each, less 25; all of it for the public talk when the other area is hidden.
ChatHeights ShareHeight(Twips height, bool personalShown);

// After the border was dragged so far down (up when negative): neither area gets lower than 500.
// Areas that already are too low for that stay as they are.
ChatHeights DragBorder(ChatHeights heights, Twips down);

}  // namespace brenvo
