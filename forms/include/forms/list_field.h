// Lists: drop-down lists, lists with a text of their own, open lists, lists of several choices.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "forms/text_field.h"

namespace brenvo::forms {

class Menu;

enum class ListStyle {
  kDropDown,  // the text is always an entry or empty
  kCombo,     // drops down, and anything can be typed
  kOpen,      // entries stand open
  kMulti,     // the same, and several can be selected
};

class ListField : public TextField {
 public:
  ListField(Window& window, std::string name, ListStyle style, const FieldFace& face = {});
  FieldKind Kind() override { return this; }

  ListStyle Style() const { return style_; }
  const std::vector<std::string>& Items() const { return items_; }
  void Clear();  // the entries; the current entry becomes none
  void AddItem(std::string_view item);
  void SetItems(std::vector<std::string> items);
  void RemoveItem(int index);

  // The current entry, -1 for none. Assigning it makes its text the field's text, and runs the
  // change event if that differs.
  int ListIndex() const { return listIndex_; }
  void SetListIndex(int index);

  // kMulti only.
  bool Selected(int index) const;
  void SetSelected(int index, bool selected);

  // An open list that closes with the choice: on a screen, arrows and letters only move to an
  // entry, and Enter picks it.
  bool PicksOnEnter = false;
  // "MULTI" makes SelectListEntry mark instead of choose.
  std::string Tag;

  // The operator takes an entry: the change event, then the click event.
  void Pick(int index);
  // Right button, or the keyboard's menu key; then the screen opens ContextMenu there, if any.
  std::function<void()> OnContextMenu;
  Menu* ContextMenu = nullptr;

 protected:
  void Assign(std::string text) override;

 private:
  ListStyle style_;
  std::vector<std::string> items_;
  std::vector<bool> selected_;
  int listIndex_ = -1;
};

}  // namespace brenvo::forms
