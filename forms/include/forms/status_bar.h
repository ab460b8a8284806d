// A row of panels with words.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "forms/field.h"

namespace brenvo::forms {

// Panels are numbered from 1.
class StatusBar : public Field {
 public:
  StatusBar(Window& window, std::string name, int panels);
  FieldKind Kind() override { return this; }
  int Panels() const { return static_cast<int>(panels_.size()); }
  const std::string& Panel(int number) const;
  void SetPanel(int number, std::string_view text);
  // 0 for as much as the text wants.
  base::Twips MinimumWidth(int number) const;
  void SetMinimumWidth(int number, base::Twips width);

 private:
  struct PanelState {
    std::string text;
    base::Twips minimumWidth;
  };
  std::vector<PanelState> panels_;
};

}  // namespace brenvo::forms
