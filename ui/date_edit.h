// A date, typed as day, month and year.
#pragma once

#include <QDateEdit>

namespace brenvo::ui {

// One field for the keyboard: Tab leads on to the next, the arrows and the stroke that is typed
// between two numbers from day to month to year. Typed in part it is read as the rest of the system
// reads a date, its year of two digits too; what is no date gives way to the one before.
class DateEdit : public QDateEdit {
 public:
  explicit DateEdit(QWidget* parent);

  // The date as the field has it.
  void Follow(QDate date);
  // Nothing, until a date is followed, typed or picked: what is typed begins on today's.
  void ShowNothing();
  void stepBy(int steps) override;

 protected:
  bool focusNextPrevChild(bool next) override;
  void focusInEvent(QFocusEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  // Rolling through a window must not change what stands in it.
  void wheelEvent(QWheelEvent* event) override;
  void fixup(QString& typed) const override;

 private:
  bool ShowsNothing() const;
  void LeaveNothing();
  QDate Meant(QDate read) const;
  // The day as typed. Where a shorter month stands beside it at that time the toolkit lowers it,
  // and would not raise it again for the month that is typed next.
  int typedDay_ = 0;
  // The digit before has led on to the next piece: a stroke that follows it means the same step.
  bool ledOn_ = false;
};

}  // namespace brenvo::ui
