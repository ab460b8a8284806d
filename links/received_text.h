// The scrollback of a terminal.
#pragma once

#include <cstddef>

#include "forms/rich_text.h"

namespace brenvo::links {

// Beyond this many characters the oldest go, this many at a time, but for the very first one.
inline constexpr std::size_t kReceivedLimit = 32000;
inline constexpr std::size_t kReceivedSurplus = 2000;
// What a flood can add between two trimmings is bounded by this.
inline constexpr std::size_t kReceivedMost = 100000;

void TrimReceived(forms::RichText& Received);

}  // namespace brenvo::links
