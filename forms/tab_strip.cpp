#include "forms/tab_strip.h"

namespace brenvo::forms {

TabStrip::TabStrip(Window& window, std::string name, std::vector<std::string> captions)
    : OptionGroup(window, std::move(name), std::move(captions)), pages_(Captions().size()) {}

void TabStrip::SetPage(int index, Panel& panel, std::vector<Field*> fields) {
  pages_.at(static_cast<std::size_t>(index)) = {&panel, std::move(fields)};
  panel.SetVisible(index == Index());
}

void TabStrip::Changed() {
  for (std::size_t i = 0; i < pages_.size(); ++i) {
    if (pages_[i].panel != nullptr) pages_[i].panel->SetVisible(static_cast<int>(i) == Index());
  }
  OptionGroup::Changed();
}

}  // namespace brenvo::forms
