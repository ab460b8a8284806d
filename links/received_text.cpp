#include "links/received_text.h"

namespace brenvo {

void TrimReceived(RichText& Received) {
  if (Received.Length() <= kReceivedLimit) return;
  Received.Erase(1, kReceivedSurplus);
  if (Received.Length() > kReceivedMost) Received.Erase(1, Received.Length() - kReceivedMost);
}

void AppendReceived(RichText& Received, std::string_view text) {
  Received.Select(Received.Length(), 0);
  Received.ReplaceSelection(text);
}

void AppendReceived(RichText& Received, std::string_view text, Colour colour) {
  Received.Select(Received.Length(), 0);
  Received.SetSelColour(colour);
  Received.ReplaceSelection(text);
}

}  // namespace brenvo
