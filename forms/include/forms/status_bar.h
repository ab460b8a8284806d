// A row of panels with words.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "forms/field.h"

namespace brenvo::forms {

// What the words of a panel weigh: drawn beside them, with a sign and a colour of its own.
enum class Weight { kPlain, kNew, kWorked, kConfirmed };

struct PanelMark {
  Weight weight = Weight::kPlain;
  // The words hold, but not for what else is on the screen.
  bool pale = false;
  std::string tip;  // empty for none
  friend bool operator==(const PanelMark&, const PanelMark&) = default;
};

// Panels are numbered from 1.
class StatusBar : public Field {
 public:
  StatusBar(Window& window, std::string name, int panels);
  FieldKind Kind() override { return this; }
  int Panels() const { return static_cast<int>(panels_.size()); }
  const std::string& Panel(int number) const;
  void SetPanel(int number, std::string_view text);
  const PanelMark& Mark(int number) const;
  void SetMark(int number, PanelMark mark);
  // 0 for as much as the text wants.
  base::Twips MinimumWidth(int number) const;
  void SetMinimumWidth(int number, base::Twips width);

 private:
  struct PanelState {
    std::string text;
    PanelMark mark;
    base::Twips minimumWidth;
  };
  std::vector<PanelState> panels_;
};

}  // namespace brenvo::forms
