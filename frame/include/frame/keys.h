// The keys of commands as the operator has them.
#pragma once

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/session.h"
#include "forms/window.h"

namespace brenvo::frame {

// A key's name as commands have it, "Ctrl+Shift+B", whatever the case and the order of what is held
// with it, "maiusc" and "ins" as Italian keyboards have them included; nothing where the text names
// no key.
std::optional<std::string> ReadKey(std::string_view text);

// Why no command may be given this key, in Italian: it writes, edits, moves or is the system's.
// Empty where nothing stands against it.
std::string FaultOfKey(std::string_view key);

// A command that may have a key.
struct KeyOwner {
  std::string window;   // the name by which it is made
  std::string command;  // its name
  std::string place;    // the window's caption
  std::string words;    // the menus that lead to the command, its own caption
  std::string standard, key;
};

// What the settings keep: only what differs from the program's own.
class Keys {
 public:
  explicit Keys(core::Session& session);

  // Gives the window's commands their keys.
  void PutOn(forms::Window& window) const;
  // Keeps a key, empty for none, and puts it on the windows that are open. The standard one is
  // forgotten instead.
  void Set(const KeyOwner& owner, std::string_view key);

 private:
  core::Session& session_;
  std::map<std::string, std::string, std::less<>> kept_;  // at "LogForm.cmInsert"
};

// All commands of the main window, then those of each other one by its caption. Windows are made
// for it, and gone again.
std::vector<KeyOwner> AllKeyOwners(core::Session& session);

}  // namespace brenvo::frame
