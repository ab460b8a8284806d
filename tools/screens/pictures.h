// Which pictures are taken, and how the station comes to show them.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "forms/window.h"

namespace brenvo::core {
class Session;
}

namespace brenvo::screens {

struct Picture {
  std::string file;  // without extension
  // Opens what is to be seen and returns the window of the picture; null when there is none, or
  // when it was a dialog.
  std::function<forms::Window*(core::Session&)> open;
  std::string dialog{};     // the name of a dialog that comes up meanwhile and is the picture
  std::string selection{};  // what an award shows; the contacts on 6 m where none is told
};

// A picture of every window, some of them in more than one state, and of the main frame.
std::vector<Picture> AllPictures();

}  // namespace brenvo::screens
