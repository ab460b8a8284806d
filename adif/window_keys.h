// The keys that both windows of the room have.
#pragma once

#include <string_view>

#include "core/session.h"
#include "forms/command.h"
#include "forms/window.h"

namespace brenvo {

struct WindowKeys {
  Command& run;  // also by Enter
  std::string_view runTip;
  Command& help;
  int topic;      // of the help
  Command& exit;  // also by Esc
  std::string_view exitTip;
};
void SetUpKeys(Session& session, Window& window, const WindowKeys& keys);

}  // namespace brenvo
