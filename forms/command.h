// Commands: buttons, keys of a tool bar, entries of a menu.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "forms/field.h"

namespace brenvo {

// A command is a field with words and an action; a toggle has a state as well. "&" stands before
// the letter of its caption that the keyboard reaches.
class Command : public Field {
 public:
  Command(Window& window, std::string name, std::string caption,
          std::function<void()> action = nullptr);

  // Stays down when pressed, comes up when pressed again; a menu entry shows a check mark.
  bool Toggle = false;
  std::string Shortcut;  // "Ctrl+S", "F2"; empty for none
  std::string Icon;      // name of a picture; empty for none
  std::string Tip;       // the hint under the pointer; empty for the caption's words
  // Where the keyboard goes on after the operator's press on a screen; null leaves it.
  Field* FocusAfter = nullptr;

  bool Down() const { return down_; }
  // The logic's: no action runs.
  void SetDown(bool down);
  // The operator's: flips a toggle, then runs the action. Nothing while disabled.
  void Press();

 private:
  bool down_ = false;
};

struct Separator {};

// An array of entries under one name: captions, check marks, one action with the entry's number.
class EntryArray : public Field {
 public:
  using Field::Field;
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
  std::vector<MenuItem> Items;
};

// A row of keys. A Menu in it is a key that opens a menu.
class ToolBar : public Field {
 public:
  ToolBar(Window& window, std::string name);
  std::vector<MenuItem> Items;
};

}  // namespace brenvo
