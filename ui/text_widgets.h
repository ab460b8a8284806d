// Lines of text that type through their field: plain, masked, dates.
#pragma once

#include <QComboBox>
#include <QLineEdit>

#include "field_binding.h"
#include "forms/text_field.h"

namespace brenvo::ui {

// Characters that a key press carries; none for commands.
QString CharactersOf(const QKeyEvent& event);

// Keys go to the field as characters, through its filter; all other editing (paste, cut, delete,
// input methods) is done here and handed over with what it added filtered.
class TextEdit : public QLineEdit {
 public:
  TextEdit(forms::TextField& field, ViewContext& context, QWidget* parent);

  // The line as the field has it.
  void Follow();
  // What is pressed is written by its name.
  bool WritesKeys() const { return field_.WritesKeys; }

 protected:
  bool event(QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dropEvent(QDropEvent* event) override;
  // Keys that are not characters.
  virtual bool EditKey(QKeyEvent* event);
  // The line was edited by the toolkit.
  virtual void Edited(const QString& before, const QString& after);

  void Type(char32_t key);
  forms::TextField& field_;
  ViewContext& context_;

 private:
  // Its name as the text, for a field that takes keys.
  bool WriteKey(const QKeyEvent& event);
  // True when the key has stepped a character.
  bool StepKey(const QKeyEvent& event);
  void FollowSelection();
  void TellSelection();
  bool following_ = false;
  int turned_ = 0;         // of the wheel, not yet a step
  bool entering_ = false;  // the button that brought the keyboard is still down
};

class MaskedEdit : public TextEdit {
 public:
  using TextEdit::TextEdit;

 protected:
  bool EditKey(QKeyEvent* event) override;
  void Edited(const QString& before, const QString& after) override;
};

QWidget* MakeTextEdit(forms::TextField& field, ViewContext& context, QWidget* parent);
QWidget* MakeMaskedEdit(forms::MaskedField& field, ViewContext& context, QWidget* parent);
QWidget* MakeDateEdit(forms::DatePicker& field, ViewContext& context, QWidget* parent);

}  // namespace brenvo::ui
