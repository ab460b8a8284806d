#include "ui/event_gate.h"

#include <QApplication>
#include <QEvent>
#include <QKeyEvent>
#include <QOperatingSystemVersion>

#include "forms/window_list.h"

namespace brenvo::ui {
namespace {

// On some desktops a text field would take keys that are the main menu's (Ctrl+U, Ctrl+K), and a
// window would open or not depending on where the caret stands.
// So do the first and the last record's (Ctrl+Home, Ctrl+End), but in a field of several lines.
bool IsWindowsKey(const QObject& watched, const QEvent& event) {
  if (event.type() != QEvent::ShortcutOverride) return false;
  const auto& key = static_cast<const QKeyEvent&>(event);
  if (key.matches(QKeySequence::MoveToStartOfDocument) ||
      key.matches(QKeySequence::MoveToEndOfDocument)) {
    return !watched.inherits("QPlainTextEdit");
  }
  return key.matches(QKeySequence::DeleteCompleteLine) ||
         key.matches(QKeySequence::DeleteEndOfLine);
}

// Alt and a letter, digit or sign that no menu and no button answers: nothing is meant to be
// written, but a field would write it, and a grid open a cell with it. Where Alt composes letters
// it does, and so do the digits of the numeric keypad.
bool IsLostLetter(const QEvent& event) {
  if (event.type() != QEvent::KeyPress || QApplication::activePopupWidget() != nullptr ||
      QOperatingSystemVersion::currentType() == QOperatingSystemVersion::MacOS) {
    return false;
  }
  const auto& key = static_cast<const QKeyEvent&>(event);
  const auto held = key.modifiers() & (Qt::AltModifier | Qt::ControlModifier | Qt::KeypadModifier);
  return held == Qt::AltModifier && !key.text().isEmpty() && key.text().front().isPrint();
}

}  // namespace

EventGate::EventGate() { QCoreApplication::instance()->installEventFilter(this); }

EventGate::~EventGate() = default;

bool EventGate::BehindDialog(const forms::Window& window) const {
  return windows_ != nullptr && windows_->BehindDialog(window);
}

void EventGate::Run(const std::function<void()>& event) {
  if (windows_ != nullptr) windows_->RunEvent(event);
}

void EventGate::RunDevice(QObject& guard, const std::function<void()>& event) {
  if (Held()) {
    Later(&guard, event);
  } else {
    Run(event);
  }
}

EventGate::Hold::~Hold() {
  if (--gate_.holds_ == 0 && !gate_.waiting_.empty()) gate_.WakeUp();
}

void EventGate::Later(QObject* guard, std::function<void()> event) {
  waiting_.push_back({guard, std::move(event)});
  WakeUp();
}

void EventGate::WakeUp() {
  if (wakeUpPosted_) return;
  wakeUpPosted_ = true;
  QMetaObject::invokeMethod(
      this,
      [this] {
        wakeUpPosted_ = false;
        Flush();
      },
      Qt::QueuedConnection);
}

void EventGate::Flush() {
  if (Held()) return;
  // What an event leaves behind when it opens a dialog waits for that dialog: it is no longer in
  // the queue that the dialog's own events flush.
  std::deque<Waiting> turn;
  turn.swap(waiting_);
  for (Waiting& each : turn) {
    if (each.guard) Run(each.event);
  }
}

bool EventGate::eventFilter(QObject* watched, QEvent* event) {
  const bool swallowed = IsWindowsKey(*watched, *event) || IsLostLetter(*event);
  if (waiting_.empty()) return swallowed;
  switch (event->type()) {
    case QEvent::ShortcutOverride:
    case QEvent::KeyPress:
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
    case QEvent::Close:
      Flush();
      break;
    default:
      break;
  }
  return swallowed;
}

}  // namespace brenvo::ui
