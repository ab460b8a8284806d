#include "core/quoted.h"

namespace brenvo::core {

std::string Quoted(std::string_view text) {
  std::string quoted = "'";
  for (const char c : text) quoted.append(c == '\'' ? 2 : 1, c);
  return quoted + "'";
}

}  // namespace brenvo::core
