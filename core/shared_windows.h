// What windows of different rooms know of each other.
#pragma once

#include <string>
#include <string_view>

#include "forms/text_field.h"
#include "forms/window.h"

namespace brenvo {

// A log window: writing a new text into Query makes it run the session's QueryText.
class LogWindow : public Window {
 public:
  using Window::Window;
  Label Query{*this, "Query"};
  // The SELECT of the contacts that it shows.
  std::string Selection;
};

// A worked-by matrix: fill a field, then change AutoSearch.
class MatrixWindow : public Window {
 public:
  using Window::Window;
  TextField CallQso{*this, "CallQso"};
  TextField Locator{*this, "Locator"};
  TextField AutoSearch{*this, "AutoSearch"};
  // Runs the search whatever AutoSearch held before.
  virtual void Search() = 0;
};

// A browser whose rows another window chooses.
class FeedWindow : public Window {
 public:
  using Window::Window;
  // The SELECT of the rows; runs at once.
  virtual void SetRecordSource(std::string_view select) = 0;
};

}  // namespace brenvo
