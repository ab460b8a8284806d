// What windows of different rooms know of each other.
#pragma once

#include <string>
#include <string_view>

#include "forms/text_field.h"
#include "forms/window.h"

namespace brenvo::core {

// A log window: writing a new text into Query makes it run the session's QueryText.
class LogWindow : public forms::Window {
 public:
  using forms::Window::Window;
  forms::Label Query{*this, "Query"};
  // The SELECT of the contacts that it shows.
  std::string Selection;
};

// A worked-by matrix: fill a field, then change AutoSearch.
class MatrixWindow : public forms::Window {
 public:
  using forms::Window::Window;
  forms::TextField CallQso{*this, "CallQso", {.caption = "Call", .characters = 12}};
  forms::TextField Locator{*this, "Locator", {.caption = "Locator", .characters = 9}};
  forms::TextField AutoSearch{*this, "AutoSearch"};
  // Runs the search whatever AutoSearch held before.
  virtual void Search() = 0;
};

// The dialog in which the operator chooses contacts. The caller sets Tag to a mode word, shows it
// modally, and reads Tag: "Cancel", or the text of a WHERE clause, empty for all contacts.
class SelectionWindow : public forms::Window {
 public:
  using forms::Window::Window;
  // Every entry of the reference table is wanted, worked or not.
  virtual bool ListsAll() const = 0;
  // Lets the operator choose a report's layout as well; then whether he chose the vertical one.
  virtual void OfferLayouts() = 0;
  virtual bool IsVertical() const = 0;
};

// A browser whose rows another window chooses.
class FeedWindow : public forms::Window {
 public:
  using forms::Window::Window;
  // The SELECT of the rows; runs at once.
  virtual void SetRecordSource(std::string_view select) = 0;
};

}  // namespace brenvo::core
