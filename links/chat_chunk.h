// What arrives from a conversation server, judged chunk by chunk.
#pragma once

#include <string_view>

namespace brenvo::links {

// A chunk as it is shown: who speaks in dark red, what is said in black. A chunk in which nobody
// is named has an empty Speaker and keeps the colour that its area has.
struct ChatChunk {
  bool Personal = false;            // for the personal messages, not for the public talk
  std::string_view Speaker, Words;  // pieces of the chunk; together they are all of it
};

// "<*call*> ..." is personal, its speaker reaching to the second "*"; "<call> ..." is public, its
// speaker reaching to the ">". A chunk is judged alone, whatever came before it.
ChatChunk SplitChatChunk(std::string_view chunk);

}  // namespace brenvo::links
