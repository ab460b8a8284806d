#include "field_binding.h"

#include <QApplication>
#include <QEvent>
#include <QFocusEvent>
#include <QMdiSubWindow>
#include <QSinglePointEvent>
#include <QVariant>

#include "ui/text.h"

namespace brenvo::ui {

namespace {

// The binding that a widget belongs to.
constexpr const char* kOwner = "brenvoBinding";

}  // namespace

bool FrameHasFocus(const QWidget& within) {
  const auto* frame = qobject_cast<const QMdiSubWindow*>(QApplication::focusWidget());
  return frame != nullptr && frame->isAncestorOf(&within);
}

FieldBinding::FieldBinding(forms::Field& field, QWidget& widget, ViewContext& context)
    : QObject(&widget), field_(field), widget_(widget), context_(context) {
  widget.setObjectName(ToQt(field.Name()));
  Watch(widget);
  shown_ = context.Follow(field.Shown, [this] { Show(); });
}

void FieldBinding::Watch(QWidget& part) {
  part.installEventFilter(this);
  part.setMouseTracking(true);
  part.setProperty(kOwner, QVariant::fromValue<QObject*>(this));
}

void FieldBinding::Show() {
  widget_.setVisible(field_.Visible());
  widget_.setEnabled(field_.Enabled());
  for (const auto& companion : companions_) {
    if (companion) companion->setVisible(field_.Visible());
  }
  if (OnShow) OnShow();
}

bool FieldBinding::eventFilter(QObject* watched, QEvent* event) {
  switch (event->type()) {
    case QEvent::FocusIn:
    case QEvent::FocusOut:
      FocusMoved(*event);
      break;
    case QEvent::Enter:
    case QEvent::MouseMove: {
      const QPoint at = static_cast<QSinglePointEvent*>(event)->position().toPoint();
      if (context_.Alive() && PointedAt(*static_cast<QWidget*>(watched), at)) {
        context_.Hover(field_);
      }
      break;
    }
    case QEvent::Leave:
      context_.Unhover(field_);
      break;
    case QEvent::MouseButtonDblClick:
      if (doubleClicks_) context_.Later(this, [this] { field_.DoubleClick(); });
      break;
    default:
      break;
  }
  return false;
}

bool FieldBinding::PointedAt(const QWidget& part, QPoint at) const {
  const QWidget* under = part.childAt(at);
  while (under != nullptr && under != &part && !under->property(kOwner).isValid()) {
    under = under->parentWidget();
  }
  return under == nullptr || under == &part || under->property(kOwner).value<QObject*>() == this;
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
    default:
      break;
  }
  // Neither does one leave a field by opening its own list, or by moving the window.
  const QWidget* const popup = QApplication::activePopupWidget();
  if (!in && popup != nullptr && popup->parentWidget() == &widget_) return;
  if (!in && FrameHasFocus(widget_)) return;
  if (in == (context_.Focused() == &field_)) return;
  context_.SetFocused(in ? &field_ : nullptr);
  context_.Later(this, [this, in] { in ? field_.Focus() : field_.Leave(); });
}

PanelBinding::PanelBinding(forms::Panel& field, QWidget& widget, ViewContext& context)
    : FieldBinding(field, widget, context), panel_(field), pointing_(context) {}

bool PanelBinding::eventFilter(QObject* watched, QEvent* event) {
  const bool answered = FieldBinding::eventFilter(watched, event);
  const bool pointing = event->type() == QEvent::MouseButtonPress ||
                        event->type() == QEvent::MouseMove ||
                        event->type() == QEvent::MouseButtonRelease;
  if (!pointing || !pointing_.Alive()) return answered;
  const QPoint at = static_cast<QSinglePointEvent*>(event)->position().toPoint();
  const base::Twips x = base::Twips::FromPixels(at.x()), y = base::Twips::FromPixels(at.y());
  switch (event->type()) {
    case QEvent::MouseButtonPress:
      if (panel_.OnPointerDown) pointing_.Run([&] { panel_.OnPointerDown(x, y); });
      break;
    case QEvent::MouseMove:
      if (panel_.OnPointerMove) pointing_.Run([&] { panel_.OnPointerMove(x, y); });
      break;
    default:
      if (panel_.OnPointerUp) pointing_.Run([&] { panel_.OnPointerUp(); });
  }
  return answered;
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

}  // namespace brenvo::ui
