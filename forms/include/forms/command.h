// Commands: buttons, keys of a tool bar, entries of a menu.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "forms/field.h"

namespace brenvo::forms {

// What a command is, beside its name and its words; each may be left out.
struct CommandTraits {
  std::string_view tip{};       // beside the pointer; empty for the caption's words
  std::string_view shortcut{};  // "Ctrl+S", "F2"
  std::function<void()> run{};
  std::optional<std::string_view> hint{};  // in the status bar, as a field's
  // Whether it can be pressed, wherever the answer lies; asked at each press and behind each event.
  std::function<bool()> enabled{};
  // Makes a toggle whose state lies elsewhere: `run` changes it, and nothing else does.
  std::function<bool()> checked{};
  bool toggle = false;  // keeps a state of its own
  // Where the keyboard goes on after the operator's press on a screen; null leaves it.
  Field* focusAfter = nullptr;
};

// A command is a field with words and an action; a toggle has a state as well. "&" stands before
// the letter of its caption that the keyboard reaches.
class Command : public Field {
 public:
  Command(Window& window, std::string name, std::string caption,
          std::function<void()> action = nullptr);
  Command(Window& window, std::string name, std::string caption, CommandTraits traits);
  FieldKind Kind() override { return this; }

  // Stays down when pressed, comes up when pressed again; a menu entry shows a check mark.
  bool Toggle = false;
  std::string Tip;  // the hint under the pointer; empty for the caption's words
  // The key that presses it: "Ctrl+S", "F2"; empty for none. It is the one of its traits as long as
  // nobody gives it another.
  const std::string& Shortcut() const { return shortcut_ ? *shortcut_ : standardShortcut_; }
  const std::string& StandardShortcut() const { return standardShortcut_; }
  // Nothing takes back the one of its traits.
  void SetShortcut(std::optional<std::string> shortcut);
  // Where the keyboard goes on after the operator's press on a screen; null leaves it.
  Field* FocusAfter = nullptr;

  // As SetEnabled has it, and as its own function says.
  bool Enabled() const override;
  bool Down() const { return checked_ ? checked_() : down_; }
  // The logic's, for a toggle that keeps its own state: no action runs.
  void SetDown(bool down);
  // The operator's: flips a toggle, then runs the action. Nothing while disabled.
  void Press();
  // Tells the screen when what its functions say has become another; the list of windows asks for
  // it behind each event.
  void Refresh();

 private:
  std::function<bool()> enabled_, checked_;
  std::string standardShortcut_;
  std::optional<std::string> shortcut_;
  bool down_ = false;
  bool shownEnabled_ = true, shownDown_ = false;  // at the last refresh
};

struct Separator {};

// An array of entries under one name: captions, check marks, one action with the entry's number.
class EntryArray : public Field {
 public:
  using Field::Field;
  FieldKind Kind() override { return this; }
  struct Entry {
    std::string caption;
    bool checked = false;
  };
  const std::vector<Entry>& Entries() const { return entries_; }
  void Clear();
  void Add(std::string_view caption, bool checked = false);
  // std::out_of_range where there is no such entry.
  void SetEntryCaption(int index, std::string_view caption);
  void SetChecked(int index, bool checked);
  // The operator's.
  void Pick(int index);
  std::function<void(int)> OnPick;

 private:
  std::vector<Entry> entries_;
};

class Menu;
using MenuItem = std::variant<Command*, EntryArray*, Menu*, Separator>;

// A menu, and a menu bar: a caption over items. Items belong to the window.
class Menu : public Field {
 public:
  Menu(Window& window, std::string name, std::string caption, std::vector<MenuItem> items = {});
  FieldKind Kind() override { return this; }
  std::vector<MenuItem> Items;
};

// A row of keys. A Menu in it is a key that opens a menu.
class ToolBar : public Field {
 public:
  ToolBar(Window& window, std::string name, std::vector<MenuItem> items = {});
  FieldKind Kind() override { return this; }
  std::vector<MenuItem> Items;
};

}  // namespace brenvo::forms
