#include "date_edit.h"

#include <QKeyEvent>
#include <QLineEdit>
#include <QSignalBlocker>
#include <QWheelEvent>

#include "base/date.h"
#include "ui/text.h"

namespace brenvo::ui {

DateEdit::DateEdit(QWidget* parent) : QDateEdit(parent) {
  setCalendarPopup(true);
  setDisplayFormat(QStringLiteral("dd/MM/yyyy"));
  // What fixup leaves is a date; the other way it would not be asked.
  setCorrectionMode(CorrectToNearestValue);
  setFocusPolicy(Qt::StrongFocus);
}

void DateEdit::Follow(QDate date) {
  if (!date.isValid() || date == this->date()) return;
  typedDay_ = 0;
  const QSignalBlocker quiet(this);
  LeaveNothing();
  setDate(date);
}

void DateEdit::ShowNothing() {
  typedDay_ = 0;
  const QSignalBlocker quiet(this);
  setSpecialValueText(QStringLiteral(" "));
  setDate(minimumDate());
}

bool DateEdit::ShowsNothing() const {
  return !specialValueText().isEmpty() && date() == minimumDate();
}

void DateEdit::LeaveNothing() {
  if (specialValueText().isEmpty()) return;
  const bool nothing = ShowsNothing();
  setSpecialValueText(QString());
  if (nothing) setDate(QDate::currentDate());
}

void DateEdit::stepBy(int steps) {
  typedDay_ = 0;
  LeaveNothing();
  QDateEdit::stepBy(steps);
}

bool DateEdit::focusNextPrevChild(bool next) { return QWidget::focusNextPrevChild(next); }

void DateEdit::focusInEvent(QFocusEvent* event) {
  typedDay_ = 0;
  ledOn_ = false;
  QDateEdit::focusInEvent(event);
}

void DateEdit::keyPressEvent(QKeyEvent* event) {
  const QString key = event->text();
  const bool digit = key.size() == 1 && key[0].isDigit();
  const bool erases = event->key() == Qt::Key_Backspace || event->key() == Qt::Key_Delete;
  if (key == u'/' || key == u'-' || key == u'.') {
    if (!ledOn_ && currentSection() != YearSection) QDateEdit::focusNextPrevChild(true);
    ledOn_ = false;
    return;
  }
  if (digit) LeaveNothing();
  if (digit && lineEdit()->selectedText() == text()) {
    // Selected whole, the date is typed anew.
    setSelectedSection(DaySection);
  } else if (digit && !lineEdit()->hasSelectedText() && text() == textFromDateTime(dateTime())) {
    // A caret that was only set there, by a click or Home, is in nobody's way.
    setSelectedSection(currentSection());
  }
  const Section section = currentSection();
  const bool day = section == DaySection;
  if (erases || (digit && day && lineEdit()->hasSelectedText())) typedDay_ = 0;
  const QString before = text();
  QDateEdit::keyPressEvent(event);
  if (digit && day && text() != before) typedDay_ = typedDay_ % 10 * 10 + key[0].digitValue();
  ledOn_ = digit && currentSection() != section;
  // Month and year are whole when the text stands as the date is written.
  const bool whole = digit && !day && text() == textFromDateTime(dateTime());
  if (whole && Meant(date()) != date()) setDate(Meant(date()));
}

void DateEdit::wheelEvent(QWheelEvent* event) {
  hasFocus() ? QDateEdit::wheelEvent(event) : event->ignore();
}

void DateEdit::fixup(QString& typed) const {
  if (ShowsNothing()) {
    typed = specialValueText();
    return;
  }
  const auto read = base::ParseDate(FromQt(typed));
  const QDate date = read ? Meant(QDate(read->Year(), read->Month(), read->Day())) : this->date();
  typed = textFromDateTime(date.startOfDay());
}

QDate DateEdit::Meant(QDate read) const {
  const QDate whole(read.year(), read.month(), typedDay_);
  return typedDay_ > read.day() && whole.isValid() ? whole : read;
}

}  // namespace brenvo::ui
