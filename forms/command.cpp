#include "forms/command.h"

#include <utility>

#include "forms/window.h"

namespace brenvo::forms {

Command::Command(Window& window, std::string name, std::string caption,
                 std::function<void()> action)
    : Field(window, std::move(name), {.caption = caption}) {
  OnClick = std::move(action);
}

Command::Command(Window& window, std::string name, std::string caption, CommandTraits traits)
    : Field(window, std::move(name), {.caption = caption, .hint = traits.hint}),
      enabled_(std::move(traits.enabled)),
      checked_(std::move(traits.checked)) {
  OnClick = std::move(traits.run);
  Toggle = traits.toggle || checked_;
  standardShortcut_ = traits.shortcut;
  Tip = traits.tip;
  FocusAfter = traits.focusAfter;
  if (enabled_ || checked_) window.followers_.push_back(this);
}

bool Command::Enabled() const { return Field::Enabled() && (!enabled_ || enabled_()); }

void Command::SetDown(bool down) {
  if (down_ == down) return;
  down_ = down;
  Changed();
}

void Command::SetShortcut(std::optional<std::string> shortcut) {
  if (shortcut_ == shortcut) return;
  shortcut_ = std::move(shortcut);
  ShowChanged();
}

void Command::Press() {
  if (!Enabled()) return;
  if (Toggle && !checked_) SetDown(!down_);
  Click();
}

void Command::Refresh() {
  const bool enabled = Enabled(), down = Down();
  if (enabled == shownEnabled_ && down == shownDown_) return;
  shownEnabled_ = enabled;
  shownDown_ = down;
  ShowChanged();
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
    : Field(window, std::move(name), {.caption = caption}), Items(std::move(items)) {}

ToolBar::ToolBar(Window& window, std::string name, std::vector<MenuItem> items)
    : Field(window, std::move(name)), Items(std::move(items)) {}

}  // namespace brenvo::forms
