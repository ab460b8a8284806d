// The machine of a station that has windows.
#pragma once

#include "base/units.h"
#include "forms/window_host.h"
#include "platform/platform.h"

namespace brenvo::forms {

class WindowPlatform : public platform::Platform {
 public:
  virtual WindowHost& Host() = 0;
  // Prints the inside of a shown window as the screen shows it, made smaller where the page is
  // narrower; the place and the errors are those of the printer's own operations.
  virtual void PrintWindow(const Window& window, base::Mm x, base::Mm y) = 0;
};

}  // namespace brenvo::forms
