#include "chat_chunk.h"

namespace brenvo::links {

ChatChunk SplitChatChunk(std::string_view chunk) {
  const bool personal = chunk.starts_with("<*");
  std::size_t end = std::string_view::npos;
  if (personal) {
    end = chunk.find("*>");
  } else if (chunk.starts_with("<")) {
    end = chunk.find('>');
  }
  const std::size_t speaker = end == std::string_view::npos ? 0 : end + 1;
  return {personal, chunk.substr(0, speaker), chunk.substr(speaker)};
}

}  // namespace brenvo::links
