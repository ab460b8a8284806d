#include "forms/text_field.h"

#include <algorithm>

#include "base/text.h"

namespace brenvo::forms {

void TextField::SetText(std::string_view text) {
  if (text_ != text) Assign(std::string(text));
}

bool TextField::HoldText(std::string_view text) {
  if (text_ == text) return false;
  Store(std::string(text));
  ShowChanged();
  return true;
}

void TextField::Assign(std::string text) {
  Store(std::move(text));
  Changed();
}

void TextField::Store(std::string text) {
  text_ = std::move(text);
  // The caret stays where it was, as far as the text reaches: a completion while typing leaves
  // the next key in its place.
  selStart_ = std::min(selStart_, base::Len(text_));
  selLength_ = 0;
}

void TextField::Select(std::size_t start, std::size_t length) {
  const std::size_t size = base::Len(text_);
  selStart_ = std::min(start, size);
  selLength_ = std::min(length, size - selStart_);
  ShowChanged();
}

std::string TextField::SelText() const { return base::Mid(text_, selStart_ + 1, selLength_); }

void TextField::Focus() {
  Select(0, base::Len(text_));
  Field::Focus();
}

void TextField::TypeKey(char32_t key) {
  if (ReadOnly || !Enabled()) return;
  if (Filter) key = Filter(key);
  if (key == 0) return;
  if (key == kEnter) {
    Run(OnEnter);
    return;
  }
  if (key == kBackspace && BackspaceClears) {
    selStart_ = 0;
    SetText("");
    return;
  }
  std::u32string text = base::Characters(text_);
  std::size_t start = selStart_;
  std::size_t length = selLength_;
  if (key == kBackspace) {
    if (length == 0) {
      if (start == 0) return;
      --start;
      length = 1;
    }
    text.erase(start, length);
    selStart_ = start;
  } else {
    if (MaxLength > 0 && text.size() - length >= MaxLength) return;
    text.replace(start, length, 1, key);
    selStart_ = start + 1;
  }
  selLength_ = 0;
  SetText(base::FromCharacters(text));
}

std::string TextField::FilterText(std::string_view text) const {
  if (!Filter) return std::string(text);
  std::u32string passed;
  for (char32_t c : base::Characters(text)) {
    if (const char32_t key = Filter(c); key >= 32) passed += key;
  }
  return base::FromCharacters(passed);
}

MaskedField::MaskedField(Window& window, std::string name, std::string mask, const FieldFace& face)
    : TextField(window, std::move(name), face), mask_(std::move(mask)) {}

void MaskedField::SetMask(std::string_view mask) {
  mask_ = mask;
  ShowChanged();
}

std::string MaskedField::EmptyText() const {
  std::string text = mask_;
  std::replace(text.begin(), text.end(), '#', '_');
  return text;
}

void MaskedField::TypeKey(char32_t key) {
  if (ReadOnly || !Enabled()) return;
  if (key == kEnter) {
    TextField::TypeKey(key);
    return;
  }
  // A text that does not fit the mask (assigned by the logic) starts again from the empty one.
  std::string text = Text().size() == mask_.size() ? Text() : EmptyText();
  std::size_t start = SelStart();
  std::size_t length = SelLength();
  const auto blank = [&](std::size_t from, std::size_t count) {
    for (std::size_t i = from; i < std::min(from + count, mask_.size()); ++i) {
      if (mask_[i] == '#') text[i] = '_';
    }
  };
  if (key == kBackspace) {
    if (length == 0) {
      while (start > 0 && mask_[start - 1] != '#') --start;
      if (start == 0) return;
      --start;
      length = 1;
    }
    blank(start, length);
  } else {
    if (key < '0' || key > '9') return;
    blank(start, length);
    while (start < mask_.size() && mask_[start] != '#') ++start;
    if (start >= mask_.size()) return;
    text[start] = static_cast<char>(key);
    ++start;
    while (start < mask_.size() && mask_[start] != '#') ++start;
  }
  SetText(text);
  Select(start, 0);
}

}  // namespace brenvo::forms
