#include "forms/command.h"

namespace brenvo {

Command::Command(Window& window, std::string name, std::string caption,
                 std::function<void()> action)
    : Field(window, std::move(name)) {
  SetCaption(caption);
  OnClick = std::move(action);
}

void Command::SetDown(bool down) {
  if (down_ == down) return;
  down_ = down;
  Changed();
}

void Command::Press() {
  if (!Enabled()) return;
  if (Toggle) SetDown(!down_);
  Click();
}

void EntryArray::Clear() {
  entries_.clear();
  ShowChanged();
}

void EntryArray::Add(std::string_view caption, bool checked) {
  entries_.push_back({std::string(caption), checked});
  ShowChanged();
}

void EntryArray::SetEntryCaption(int index, std::string_view caption) {
  entries_.at(static_cast<std::size_t>(index)).caption = caption;
  ShowChanged();
}

void EntryArray::SetChecked(int index, bool checked) {
  entries_.at(static_cast<std::size_t>(index)).checked = checked;
  ShowChanged();
}

void EntryArray::Pick(int index) {
  if (Enabled() && OnPick) OnPick(index);
}

Menu::Menu(Window& window, std::string name, std::string caption, std::vector<MenuItem> items)
    : Field(window, std::move(name)), Items(std::move(items)) {
  SetCaption(caption);
}

ToolBar::ToolBar(Window& window, std::string name) : Field(window, std::move(name)) {}

}  // namespace brenvo
