// The scrollback of a terminal.
#pragma once

#include <cstddef>

#include "forms/rich_text.h"

namespace brenvo {

// Beyond this many characters the oldest go, this many at a time, but for the very first one.
inline constexpr std::size_t kReceivedLimit = 32000;
inline constexpr std::size_t kReceivedSurplus = 2000;
// What a flood can add between two trimmings is bounded by this.
inline constexpr std::size_t kReceivedMost = 100000;

void TrimReceived(RichText& Received);

// Appends as an operator would who types at the end: the selection goes there.
void AppendReceived(RichText& Received, std::string_view text);
void AppendReceived(RichText& Received, std::string_view text, Colour colour);

}  // namespace brenvo
