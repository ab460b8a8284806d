// What every field's widget shares: name, state, hints, focus.
#pragma once

#include <functional>
#include <QPointer>
#include <QWidget>
#include <vector>

#include "view_context.h"

namespace brenvo::ui {

// True while the frame around a widget has the keyboard, because its title or its ground was
// clicked: it hands it back at once.
bool FrameHasFocus(const QWidget& within);

// Ties a field to its widget, whose child it is. The widget follows the field's visibility and
// state, and the field gets the operator's coming, going and pointing.
class FieldBinding : public QObject {
  Q_OBJECT
 public:
  FieldBinding(forms::Field& field, QWidget& widget, ViewContext& context);

  // Shows what is particular to the kind of field; runs at each change that can be seen.
  std::function<void()> OnShow;
  // An inner widget whose events count for the field.
  void Watch(QWidget& part);
  // A label that comes and goes with the field.
  void AddCompanion(QWidget& companion) { companions_.push_back(&companion); }
  // Double clicks of the widget are the field's.
  void WatchDoubleClicks() { doubleClicks_ = true; }
  void Show();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void FocusMoved(QEvent& event);
  // True when the pointer stands on this field and not on another one inside it.
  bool PointedAt(const QWidget& part, QPoint at) const;

  forms::Field& field_;
  QWidget& widget_;
  ViewContext& context_;
  forms::Subscription shown_;
  std::vector<QPointer<QWidget>> companions_;
  bool doubleClicks_ = false;
};

// A panel, which also reports where the pointer's button goes down on it and where it is moved.
class PanelBinding : public FieldBinding {
 public:
  PanelBinding(forms::Panel& field, QWidget& widget, ViewContext& context);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  forms::Panel& panel_;
  ViewContext& pointing_;
};

// Runs once, soon, however often it is asked for: for what is dear to draw.
class Coalesced {
 public:
  Coalesced(QObject& owner, std::function<void()> work) : owner_(owner), work_(std::move(work)) {}
  void Ask();

 private:
  QObject& owner_;
  std::function<void()> work_;
  bool asked_ = false;
};

}  // namespace brenvo::ui
