// Links: links
// Arbitrary chunks of the chat: nothing is lost, and only what begins so is personal.
#include <cstdint>
#include <cstdlib>
#include <string>

#include "base/encoding.h"
#include "links/chat_chunk.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string bytes(reinterpret_cast<const char*>(data), size);
  for (const std::string& chunk : {bytes, brenvo::base::FromLatin1(bytes)}) {
    const brenvo::links::ChatChunk split = brenvo::links::SplitChatChunk(chunk);
    if (std::string(split.Speaker) + std::string(split.Words) != chunk) std::abort();
    if (split.Personal != chunk.starts_with("<*")) std::abort();
    if (!split.Speaker.empty() && split.Speaker.back() != (split.Personal ? '*' : '>'))
      std::abort();
  }
  return 0;
}
