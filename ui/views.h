// The layouts of the windows.
#pragma once

#include <string>
#include <string_view>

#include "forms/window.h"
#include "layout.h"

namespace brenvo::ui {

struct View {
  std::string_view window;
  Piece (*layout)();
  std::string_view begins{};  // the field that the keyboard begins in; empty for the first one
};

// The view of a window of that name; null when it has none of its own.
const View* FindView(std::string_view window);

}  // namespace brenvo::ui
