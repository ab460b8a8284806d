// Tabs over pages of fields.
#pragma once

#include <string>
#include <vector>

#include "forms/choice_fields.h"

namespace brenvo::forms {

// A row of tabs, the first one current. The panel of the current tab is visible, the others' are
// not; a change of tab, pressed or assigned, shows and hides them before its change event runs.
class TabStrip : public OptionGroup {
 public:
  struct Page {
    Panel* panel = nullptr;
    std::vector<Field*> fields;  // that stand on the panel, in the order of the keyboard
  };
  TabStrip(Window& window, std::string name, std::vector<std::string> captions);
  FieldKind Kind() override { return this; }
  // What stands on the tab counted from 0.
  void SetPage(int index, Panel& panel, std::vector<Field*> fields);
  const std::vector<Page>& Pages() const { return pages_; }

 protected:
  void Changed() override;

 private:
  std::vector<Page> pages_;
};

}  // namespace brenvo::forms
