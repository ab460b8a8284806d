#include "forms/status_bar.h"

#include "forms/window.h"

namespace brenvo::forms {

StatusBar::StatusBar(Window& window, std::string name, int panels)
    : Field(window, std::move(name)), panels_(static_cast<std::size_t>(panels)) {
  if (window.status_ == nullptr) window.status_ = this;
}

const std::string& StatusBar::Panel(int number) const {
  return panels_.at(static_cast<std::size_t>(number - 1)).text;
}

void StatusBar::SetPanel(int number, std::string_view text) {
  std::string& panel = panels_.at(static_cast<std::size_t>(number - 1)).text;
  if (panel == text) return;
  panel = text;
  ShowChanged();
}

const PanelMark& StatusBar::Mark(int number) const {
  return panels_.at(static_cast<std::size_t>(number - 1)).mark;
}

void StatusBar::SetMark(int number, PanelMark mark) {
  PanelMark& present = panels_.at(static_cast<std::size_t>(number - 1)).mark;
  if (present == mark) return;
  present = std::move(mark);
  ShowChanged();
}

base::Twips StatusBar::MinimumWidth(int number) const {
  return panels_.at(static_cast<std::size_t>(number - 1)).minimumWidth;
}

void StatusBar::SetMinimumWidth(int number, base::Twips width) {
  panels_.at(static_cast<std::size_t>(number - 1)).minimumWidth = width;
  ShowChanged();
}

}  // namespace brenvo::forms
