#include "forms/list_field.h"

#include <algorithm>

namespace brenvo::forms {

ListField::ListField(Window& window, std::string name, ListStyle style, const FieldFace& face)
    : TextField(window, std::move(name), face), style_(style) {
  ReadOnly = style != ListStyle::kCombo;
}

void ListField::Clear() { SetItems({}); }

void ListField::AddItem(std::string_view item) {
  items_.emplace_back(item);
  selected_.push_back(false);
  ShowChanged();
}

void ListField::SetItems(std::vector<std::string> items) {
  items_ = std::move(items);
  selected_.assign(items_.size(), false);
  listIndex_ = -1;
  ShowChanged();
  if (style_ != ListStyle::kCombo) SetText("");
}

void ListField::RemoveItem(int index) {
  if (index < 0 || index >= static_cast<int>(items_.size())) return;
  items_.erase(items_.begin() + index);
  selected_.erase(selected_.begin() + index);
  if (listIndex_ == index) {
    SetListIndex(-1);
  } else if (listIndex_ > index) {
    --listIndex_;
  }
  ShowChanged();
}

void ListField::SetListIndex(int index) {
  if (index < -1 || index >= static_cast<int>(items_.size())) index = -1;
  const std::string text = index < 0 ? std::string() : items_[static_cast<std::size_t>(index)];
  if (index == listIndex_ && text == Text()) return;
  listIndex_ = index;
  if (text == Text()) {
    ShowChanged();
  } else {
    TextField::Assign(text);
  }
}

bool ListField::Selected(int index) const {
  return index >= 0 && index < static_cast<int>(selected_.size()) &&
         selected_[static_cast<std::size_t>(index)];
}

void ListField::SetSelected(int index, bool selected) {
  if (index < 0 || index >= static_cast<int>(selected_.size())) return;
  if (selected_[static_cast<std::size_t>(index)] == selected) return;
  selected_[static_cast<std::size_t>(index)] = selected;
  Changed();
}

void ListField::Pick(int index) {
  if (!Enabled()) return;
  if (style_ == ListStyle::kMulti) {
    listIndex_ = index;
    SetSelected(index, !Selected(index));
  } else {
    SetListIndex(index);
  }
  Click();
}

void ListField::Assign(std::string text) {
  const auto at = std::find(items_.begin(), items_.end(), text);
  listIndex_ = at == items_.end() ? -1 : static_cast<int>(at - items_.begin());
  if (listIndex_ < 0 && style_ != ListStyle::kCombo) text.clear();
  if (text == Text()) {
    ShowChanged();
  } else {
    TextField::Assign(std::move(text));
  }
}

}  // namespace brenvo::forms
