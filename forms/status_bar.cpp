#include "forms/status_bar.h"

namespace brenvo {

StatusBar::StatusBar(Window& window, std::string name, int panels)
    : Field(window, std::move(name)), panels_(static_cast<std::size_t>(panels)) {}

const std::string& StatusBar::Panel(int number) const {
  return panels_.at(static_cast<std::size_t>(number - 1)).text;
}

void StatusBar::SetPanel(int number, std::string_view text) {
  std::string& panel = panels_.at(static_cast<std::size_t>(number - 1)).text;
  if (panel == text) return;
  panel = text;
  ShowChanged();
}

int StatusBar::MinimumWidth(int number) const {
  return panels_.at(static_cast<std::size_t>(number - 1)).minimumWidth;
}

void StatusBar::SetMinimumWidth(int number, int twips) {
  panels_.at(static_cast<std::size_t>(number - 1)).minimumWidth = twips;
  ShowChanged();
}

}  // namespace brenvo
