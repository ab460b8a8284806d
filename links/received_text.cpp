#include "received_text.h"

namespace brenvo::links {

void TrimReceived(forms::RichText& Received) {
  if (Received.Length() <= kReceivedLimit) return;
  Received.Erase(1, kReceivedSurplus);
  if (Received.Length() > kReceivedMost) Received.Erase(1, Received.Length() - kReceivedMost);
}

}  // namespace brenvo::links
