#include "ui/field_binding.h"

#include <QEvent>
#include <QFocusEvent>

#include "ui/text.h"

namespace brenvo {

FieldBinding::FieldBinding(Field& field, QWidget& widget, ViewContext& context)
    : QObject(&widget), field_(field), widget_(widget), context_(context) {
  widget.setObjectName(ToQt(field.Name()));
  Watch(widget);
  field.Shown = [this] { Show(); };
}

FieldBinding::~FieldBinding() {
  if (context_.Alive()) field_.Shown = nullptr;
}

void FieldBinding::Watch(QWidget& part) {
  part.installEventFilter(this);
  part.setMouseTracking(true);
}

void FieldBinding::Show() {
  widget_.setVisible(field_.Visible());
  widget_.setEnabled(field_.Enabled());
  for (const auto& companion : companions_) {
    if (companion) companion->setVisible(field_.Visible());
  }
  if (OnShow) OnShow();
}

bool FieldBinding::eventFilter(QObject*, QEvent* event) {
  switch (event->type()) {
    case QEvent::FocusIn:
    case QEvent::FocusOut: FocusMoved(*event); break;
    case QEvent::Enter:
    case QEvent::MouseMove:
      if (context_.Alive()) context_.Hover(field_);
      break;
    case QEvent::Leave: context_.Unhover(field_); break;
    case QEvent::MouseButtonDblClick:
      if (doubleClicks_) context_.Later(this, [this] { field_.DoubleClick(); });
      break;
    default: break;
  }
  return false;
}

void FieldBinding::FocusMoved(QEvent& event) {
  const bool in = event.type() == QEvent::FocusIn;
  switch (static_cast<QFocusEvent&>(event).reason()) {
    case Qt::ActiveWindowFocusReason:
    case Qt::PopupFocusReason:
    case Qt::MenuBarFocusReason:
      // The operator went to another window or to a menu and comes back: the field was never left.
      if (!in || context_.Focused() == &field_) return;
      break;
    default: break;
  }
  if (in == (context_.Focused() == &field_)) return;
  context_.SetFocused(in ? &field_ : nullptr);
  context_.Later(this, [this, in] { in ? field_.Focus() : field_.Leave(); });
}

void Coalesced::Ask() {
  if (asked_) return;
  asked_ = true;
  QMetaObject::invokeMethod(
      &owner_,
      [this] {
        asked_ = false;
        work_();
      },
      Qt::QueuedConnection);
}

}  // namespace brenvo
