#include "ui/event_gate.h"

#include <QApplication>
#include <QEvent>
#include <QKeyEvent>
#include <QOperatingSystemVersion>
#include <string_view>

#include "forms/window_list.h"
#include "text_widgets.h"

namespace brenvo::ui {
namespace {

// Ctrl and a letter that does not copy or take back. On some desktops a text field would take such
// keys of the main menu's (Ctrl+E, Ctrl+K, Ctrl+U), and a window would open or not depending on
// where the caret stands.
bool IsCommandLetter(const QKeyEvent& key) {
  constexpr std::string_view kOfTheField = "ACVXYZ";
  return key.modifiers() == Qt::ControlModifier && key.key() >= Qt::Key_A &&
         key.key() <= Qt::Key_Z &&
         kOfTheField.find(static_cast<char>(key.key())) == std::string_view::npos;
}

bool TakesAllKeys(const QObject& watched) {
  const auto* line = dynamic_cast<const TextEdit*>(&watched);
  return line != nullptr && line->WritesKeys();
}

// Such letters, and the keys of the first and the last record (Ctrl+Home, Ctrl+End), but in a field
// of several lines.
bool IsWindowsKey(const QObject& watched, const QEvent& event) {
  if (event.type() != QEvent::ShortcutOverride || TakesAllKeys(watched)) return false;
  const auto& key = static_cast<const QKeyEvent&>(event);
  if (key.matches(QKeySequence::MoveToStartOfDocument) ||
      key.matches(QKeySequence::MoveToEndOfDocument)) {
    return !watched.inherits("QPlainTextEdit");
  }
  return IsCommandLetter(key) || key.matches(QKeySequence::DeleteCompleteLine) ||
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
