// Files as bytes, and lists of calls.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "base/file_bytes.h"

namespace brenvo::gara {

using base::ReadBytesOf;
using base::WriteBytesTo;
// The calls of a super-check list, a line each, in ascending order.
std::vector<std::string> CallsOf(std::string_view bytes);

}  // namespace brenvo::gara
