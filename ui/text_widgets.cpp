#include "text_widgets.h"

#include <algorithm>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QKeyEvent>
#include <QMimeData>
#include <QSignalBlocker>
#include <utility>

#include "base/text.h"
#include "date_edit.h"
#include "ui/text.h"

namespace brenvo::ui {
namespace {

constexpr auto kDateFormat = "dd/MM/yyyy";

QWidget* Bound(TextEdit* edit, forms::TextField& field, ViewContext& context) {
  auto* binding = new FieldBinding(field, *edit, context);
  binding->WatchDoubleClicks();
  binding->OnShow = [edit] { edit->Follow(); };
  binding->Show();
  return edit;
}

}  // namespace

QString CharactersOf(const QKeyEvent& event) {
  const bool control = event.modifiers() & (Qt::ControlModifier | Qt::MetaModifier);
  // Ctrl and Alt together are the third level of many keyboards.
  if (control && !(event.modifiers() & Qt::AltModifier)) return {};
  for (const QChar c : event.text()) {
    if (!c.isPrint() && !c.isSurrogate()) return {};
  }
  return event.text();
}

TextEdit::TextEdit(forms::TextField& field, ViewContext& context, QWidget* parent)
    : QLineEdit(parent), field_(field), context_(context) {
  connect(this, &QLineEdit::selectionChanged, this, [this] { TellSelection(); });
  connect(this, &QLineEdit::cursorPositionChanged, this, [this] { TellSelection(); });
  connect(this, &QLineEdit::textEdited, this, [this](const QString& after) {
    if (context_.Alive()) Edited(ToQt(field_.Text()), after);
  });
  setAcceptDrops(true);
}

void TextEdit::Follow() {
  const bool wasFollowing = std::exchange(following_, true);
  setReadOnly(field_.ReadOnly);
  const QString shown = ToQt(field_.Text());
  if (text() != shown) {
    const QSignalBlocker quiet(this);
    setText(shown);
    // A text longer than its place shows its beginning.
    if (!hasFocus()) setCursorPosition(0);
  }
  FollowSelection();
  following_ = wasFollowing;
}

void TextEdit::FollowSelection() {
  if (!hasFocus() && field_.SelLength() == 0) return;
  const int start = UnitsBefore(text(), field_.SelStart());
  const int end = UnitsBefore(text(), field_.SelStart() + field_.SelLength());
  if (start == end) {
    setCursorPosition(start);
  } else if (start != selectionStart() || end - start != selectedText().size()) {
    setSelection(start, end - start);
  }
}

void TextEdit::TellSelection() {
  if (following_ || !context_.Alive()) return;
  // A list writes the entry it offers before it is chosen: to report it would bring the old one
  // back.
  if (text() != ToQt(field_.Text())) return;
  const bool selected = hasSelectedText();
  const qsizetype start = selected ? selectionStart() : cursorPosition();
  const qsizetype end = selected ? selectionEnd() : start;
  const std::size_t from = CharactersBefore(text(), start);
  following_ = true;
  field_.Select(from, CharactersBefore(text(), end) - from);
  following_ = false;
}

void TextEdit::Type(char32_t key) {
  context_.Run([this, key] { field_.TypeKey(key); });
}

// The key that takes back belongs to the window where the line has nothing to take back.
bool TextEdit::event(QEvent* event) {
  if (event->type() == QEvent::ShortcutOverride && field_.WritesKeys) {
    event->accept();
    return true;
  }
  if (event->type() == QEvent::ShortcutOverride && !isUndoAvailable() &&
      static_cast<QKeyEvent*>(event)->matches(QKeySequence::Undo)) {
    event->ignore();
    return true;
  }
  return QLineEdit::event(event);
}

// False for those that lead on to other fields, and for what is only held.
bool TextEdit::WriteKey(const QKeyEvent& event) {
  switch (event.key()) {
    case Qt::Key_Tab:
    case Qt::Key_Backtab:
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Escape:
    case Qt::Key_Shift:
    case Qt::Key_Control:
    case Qt::Key_Alt:
    case Qt::Key_AltGr:
    case Qt::Key_Meta:
    case Qt::Key_CapsLock:
    case Qt::Key_NumLock:
    case Qt::Key_unknown:
    case 0:
      return false;
    case Qt::Key_Backspace:
      context_.Run([this] { field_.SetText(""); });
      return true;
    default:
      break;
  }
  const auto held = event.modifiers() & ~Qt::KeypadModifier;
  const std::string name = FromQt(QKeySequence(QKeyCombination(held, Qt::Key(event.key())))
                                      .toString(QKeySequence::PortableText));
  context_.Run([this, &name] { field_.SetText(name); });
  return true;
}

void TextEdit::keyPressEvent(QKeyEvent* event) {
  if (!context_.Alive()) return;
  if (field_.WritesKeys && WriteKey(*event)) return;
  if (StepKey(*event)) return;
  const QString characters = CharactersOf(*event);
  if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
    // Without a handler of its own the key is the window's.
    event->setAccepted(static_cast<bool>(field_.OnEnter));
    Type(forms::kEnter);
  } else if (event->key() == Qt::Key_Backspace && event->modifiers() == Qt::NoModifier) {
    Type(forms::kBackspace);
  } else if (!characters.isEmpty()) {
    for (const char32_t c : characters.toStdU32String()) Type(c);
  } else if (!EditKey(event)) {
    QLineEdit::keyPressEvent(event);
  }
}

// The wheel counts in eighths of a degree, and a step is fifteen.
void TextEdit::wheelEvent(QWheelEvent* event) {
  if (!context_.Alive() || !field_.OnStep) {
    QLineEdit::wheelEvent(event);
    return;
  }
  event->accept();
  constexpr int kStep = 120;
  turned_ += event->angleDelta().y();
  const int steps = turned_ / kStep;
  turned_ -= steps * kStep;
  if (steps == 0) return;
  const QPoint half(fontMetrics().horizontalAdvance(QLatin1Char('0')) / 2, 0);
  const int place = cursorPositionAt(event->position().toPoint() - half);
  const std::size_t character = CharactersBefore(text(), place);
  for (int i = 0; i < std::abs(steps); ++i) {
    context_.Run([&] { field_.OnStep(character, steps > 0 ? 1 : -1); });
    if (!context_.Alive()) return;
  }
}

bool TextEdit::StepKey(const QKeyEvent& event) {
  const bool up = event.key() == Qt::Key_Up;
  if (!context_.Alive() || !field_.OnStep || (!up && event.key() != Qt::Key_Down)) return false;
  // With all of it selected no one knows which is meant.
  if (selectedText().size() > 1) return true;
  const int place = hasSelectedText() ? selectionStart() : cursorPosition();
  const std::size_t character = CharactersBefore(text(), place);
  context_.Run([&] { field_.OnStep(character, up ? 1 : -1); });
  return true;
}

void TextEdit::focusInEvent(QFocusEvent* event) {
  QLineEdit::focusInEvent(event);
  entering_ = event->reason() == Qt::MouseFocusReason;
}

void TextEdit::mouseReleaseEvent(QMouseEvent* event) {
  QLineEdit::mouseReleaseEvent(event);
  // The field has selected all on receiving the keyboard, and the click that brought it put the
  // caret: only what was drawn over stays selected instead.
  if (std::exchange(entering_, false) && event->button() == Qt::LeftButton && !hasSelectedText()) {
    selectAll();
  }
}

void TextEdit::focusOutEvent(QFocusEvent* event) {
  // Who looks into a menu and comes back finds selected what was, and types over it; so does who
  // moves the window.
  QFocusEvent popup(event->type(), Qt::PopupFocusReason);
  const bool comesBack = event->reason() == Qt::MenuBarFocusReason || FrameHasFocus(*this);
  QLineEdit::focusOutEvent(comesBack ? &popup : event);
}

bool TextEdit::EditKey(QKeyEvent*) { return false; }

void TextEdit::Edited(const QString& before, const QString& after) {
  // What stands between the common beginning and the common end is what came in.
  qsizetype head = 0;
  const qsizetype shorter = std::min(before.size(), after.size());
  while (head < shorter && before[head] == after[head]) ++head;
  qsizetype tail = 0;
  while (tail < shorter - head &&
         before[before.size() - 1 - tail] == after[after.size() - 1 - tail]) {
    ++tail;
  }
  const QString added = InOneLine(after.mid(head, after.size() - head - tail));
  const std::string passed = field_.FilterText(FromQt(added));
  std::string whole = FromQt(after.left(head)) + passed + FromQt(after.right(tail));
  if (field_.MaxLength > 0) whole = base::Left(whole, field_.MaxLength);
  const std::size_t caret = CharactersBefore(after, head) + base::Len(passed);
  context_.Run([this, &whole] { field_.EditText(whole); });
  if (!context_.Alive()) return;
  Follow();
  setCursorPosition(UnitsBefore(text(), caret));
}

void TextEdit::dragEnterEvent(QDragEnterEvent* event) {
  if (field_.OnDrop && event->mimeData()->hasText()) {
    event->acceptProposedAction();
  } else {
    QLineEdit::dragEnterEvent(event);
  }
}

void TextEdit::dropEvent(QDropEvent* event) {
  if (!field_.OnDrop) {
    QLineEdit::dropEvent(event);
    return;
  }
  event->acceptProposedAction();
  context_.Run([this, text = FromQt(event->mimeData()->text())] { field_.Drop(text); });
}

bool MaskedEdit::EditKey(QKeyEvent* event) {
  if (event->matches(QKeySequence::Paste)) return false;
  if (event->key() == Qt::Key_Delete) {
    if (!hasSelectedText()) setSelection(cursorPosition(), 1);
    if (hasSelectedText()) Type(forms::kBackspace);
    return true;
  }
  return event->key() == Qt::Key_Backspace;
}

void MaskedEdit::Edited(const QString& before, const QString& after) {
  // A paste or a cut has torn the mask: put it back, and type what is new into it.
  const auto digits = [](const QString& text) {
    QString found;
    for (const QChar c : text) {
      if (c.isDigit()) found += c;
    }
    return found;
  };
  const QString typed = digits(after);
  if (digits(before) == typed) {
    Follow();
    return;
  }
  field_.Select(0, base::Len(field_.Text()));
  Type(forms::kBackspace);
  if (context_.Alive()) field_.Select(0, 0);
  for (const char32_t c : typed.toStdU32String()) Type(c);
}

QWidget* MakeTextEdit(forms::TextField& field, ViewContext& context, QWidget* parent) {
  return Bound(new TextEdit(field, context, parent), field, context);
}

QWidget* MakeMaskedEdit(forms::MaskedField& field, ViewContext& context, QWidget* parent) {
  return Bound(new MaskedEdit(field, context, parent), field, context);
}

QWidget* MakeDateEdit(forms::DatePicker& field, ViewContext& context, QWidget* parent) {
  auto* edit = new DateEdit(parent);
  auto* binding = new FieldBinding(field, *edit, context);
  binding->OnShow = [edit, &field] {
    const QDate date = QDate::fromString(ToQt(field.Text()), QLatin1String(kDateFormat));
    if (field.MayBeEmpty && !date.isValid()) {
      edit->ShowNothing();
    } else {
      edit->Follow(date);
    }
  };
  binding->Show();
  // A field that was never set holds a date all the same.
  const auto tell = [edit, &field, &context] {
    const std::string text = FromQt(edit->date().toString(QLatin1String(kDateFormat)));
    context.Run([&field, text] { field.EditText(text); });
  };
  QObject::connect(edit, &QDateEdit::dateChanged, edit, tell);
  return edit;
}

}  // namespace brenvo::ui
