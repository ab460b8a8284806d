// What windows of different rooms know of each other.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "forms/text_field.h"
#include "forms/window.h"

namespace brenvo::core {

// A log window: writing a new text into Query makes it show the session's QueryText.
class LogWindow : public forms::Window {
 public:
  using forms::Window::Window;
  forms::Label Query{*this, "Query"};
  virtual std::string ShownCall() const = 0;
  // Contacts have come that nobody has typed here: they are among those that it shows, the record
  // and what is being typed stay.
  virtual void TakeNewContacts() {}
  // The SELECT of the contacts that it shows.
  std::string Selection;

  // The same from within: `stamp` is what Query then holds, and the one that it holds already
  // shows nothing anew.
  void ShowQueryText(std::string_view stamp) {
    if (Query.HoldText(stamp)) ReceiveSelection();
  }

 protected:
  // Shows the contacts of the session's QueryText.
  virtual void ReceiveSelection() = 0;
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
  // The same from within, for a call or a locator: AutoSearch then holds what was searched for.
  void SearchFor(forms::TextField& field, std::string_view wanted) {
    field.SetText(wanted);
    AutoSearch.HoldText(wanted);
    Search();
  }
};

// The dialog in which the operator chooses contacts. The caller sets Tag to a mode word and shows
// it modally; when it has hidden, Tag is kCancelled, or the text of a WHERE clause.
class SelectionWindow : public forms::Window {
 public:
  using forms::Window::Window;
  static constexpr std::string_view kCancelled = "Cancel";
  // The clause, empty for all contacts; nullopt when the operator has chosen none.
  std::optional<std::string> Chosen() const {
    if (!Loaded() || Tag == kCancelled) return std::nullopt;
    return Tag;
  }
  // Every entry of the reference table is wanted, worked or not.
  virtual bool ListsAll() const = 0;
  // Lets the operator choose a report's layout as well; then whether he chose the vertical one.
  virtual void OfferLayouts() = 0;
  virtual bool IsVertical() const = 0;
};

// The dialog of ready-made notes, by the name "Help".
class NotePicker : public forms::Window {
 public:
  using forms::Window::Window;
  // What was picked, in square brackets.
  std::optional<std::string> NoteChoice;
};

// A row of the prefix table, as texts.
struct PrefixChoice {
  std::string Prefisso, Country, ZonaCQ, ZonaITU, Continente;
};

// The prefix table, by the name "TabellaPrefissi": a dialog to pick from while its Tag is kPick.
class PrefixPicker : public forms::Window {
 public:
  using forms::Window::Window;
  static constexpr std::string_view kPick = "LOG";
  std::optional<PrefixChoice> Chosen;
};

// A browser whose rows another window chooses.
class FeedWindow : public forms::Window {
 public:
  using forms::Window::Window;
  // The SELECT of the rows; runs at once.
  virtual void SetRecordSource(std::string_view select) = 0;
};

}  // namespace brenvo::core
