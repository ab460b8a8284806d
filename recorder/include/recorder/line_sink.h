// Where the recorded lines go.
#pragma once

#include <functional>
#include <string>

namespace brenvo::recorder {

// Takes a line, without its end.
using LineSink = std::function<void(std::string)>;

}  // namespace brenvo::recorder
