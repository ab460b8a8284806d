#include "forms/tool_keys.h"

namespace brenvo {

void ToolKeys::Add(ToolBar& toolBar, const std::vector<ToolKey>& keys) {
  for (const ToolKey& key : keys) {
    if (key.name.empty()) {
      toolBar.Items.emplace_back(Separator{});
    } else {
      toolBar.Items.emplace_back(&Make(toolBar.Owner(), key));
    }
  }
}

Command& ToolKeys::Make(Window& window, const ToolKey& key) {
  auto command = std::make_unique<Command>(window, std::string(key.name), std::string(key.caption),
                                           key.action);
  command->Tip = key.tip;
  command->Icon = key.name;
  command->Shortcut = key.shortcut;
  command->Toggle = key.toggle;
  commands_.push_back(std::move(command));
  return *commands_.back();
}

}  // namespace brenvo
