// The keys of a window's tool bar, told as a table.
#pragma once

#include <functional>
#include <memory>
#include <string_view>
#include <vector>

#include "forms/command.h"

namespace brenvo {

struct ToolKey {
  std::string_view name;  // the command's, and its picture's; empty for a separator
  std::string_view caption, tip, shortcut;
  std::function<void()> action;
  bool toggle = false;
};

// Owns the commands that it hangs into a tool bar.
class ToolKeys {
 public:
  void Add(ToolBar& toolBar, const std::vector<ToolKey>& keys);
  // One command that stands on no tool bar yet.
  Command& Make(Window& window, const ToolKey& key);

 private:
  std::vector<std::unique_ptr<Command>> commands_;
};

}  // namespace brenvo
