// Fields that are typed into.
#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "forms/field.h"

namespace brenvo::forms {

// What a key becomes: itself, another one, or 0 when it is swallowed.
using KeyFilter = std::function<char32_t(char32_t)>;

class TextField : public Field {
 public:
  using Field::Field;
  FieldKind Kind() override { return this; }

  const std::string& Text() const { return text_; }
  void SetText(std::string_view text);
  // Stores and shows the text without a change event: whoever calls does himself what the event
  // would have run. False when it is the text already there.
  bool HoldText(std::string_view text);

  // Keystrokes pass this first, backspace and Enter included.
  KeyFilter Filter;
  // Refuses keystrokes; the logic still assigns.
  bool ReadOnly = false;
  // Each key pressed on a screen replaces the text by its name, "Ctrl+B", in place of what it does
  // elsewhere; but Tab, Enter and Esc.
  bool WritesKeys = false;
  // Longest text that can be typed, in characters; 0 for no limit.
  std::size_t MaxLength = 0;
  // Backspace empties the whole field.
  bool BackspaceClears = false;
  // Enter was pressed; the key is swallowed when there is a handler.
  std::function<void()> OnEnter;

  // The wheel is turned over a character of it, or the arrows up and down are pressed before one:
  // `by` is 1 up or -1 down. Null where neither means anything.
  std::function<void(std::size_t character, int by)> OnStep;

  // The selected piece, in characters from 0. Receiving the focus selects everything.
  std::size_t SelStart() const { return selStart_; }
  std::size_t SelLength() const { return selLength_; }
  void Select(std::size_t start, std::size_t length);
  std::string SelText() const;

  void Focus() override;
  // One keystroke at the selection.
  virtual void TypeKey(char32_t key);
  // The operator's own editing (paste, cut, a key in the middle): every character that `text` has
  // more than before has been through FilterText.
  void EditText(std::string_view text) { SetText(text); }
  // A pasted text as the filter lets it through.
  std::string FilterText(std::string_view text) const;

 protected:
  virtual void Assign(std::string text);  // stores and runs the change event

 private:
  void Store(std::string text);

  std::string text_;
  std::size_t selStart_ = 0, selLength_ = 0;
};

// A text typed into a mask of "#" places and fixed characters; places not yet filled show "_".
// The text is read with its mask.
class MaskedField : public TextField {
 public:
  MaskedField(Window& window, std::string name, std::string mask, const FieldFace& face = {});
  FieldKind Kind() override { return this; }
  void SetMask(std::string_view mask);
  // The text without any digit: "__:__".
  std::string EmptyText() const;
  void TypeKey(char32_t key) override;

 private:
  std::string mask_;
};

// A date, always one: dd/mm/yyyy.
class DatePicker : public TextField {
 public:
  using TextField::TextField;
  FieldKind Kind() override { return this; }
  // A text that is none is shown as nothing; else the date before it stays on the screen.
  bool MayBeEmpty = false;
};

}  // namespace brenvo::forms
