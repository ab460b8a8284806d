// What the widgets of one window have in common.
#pragma once

#include <functional>
#include <QObject>
#include <utility>

#include "forms/field.h"
#include "ui/event_gate.h"

namespace brenvo::ui {

// Outlives the window: widgets may still be met by Qt when the window's fields are gone, and then
// nothing of theirs reaches the logic any more.
class ViewContext {
 public:
  explicit ViewContext(EventGate& gate) : gate_(gate) {}

  bool Alive() const { return alive_; }
  void Die() { alive_ = false; }

  // An event of the operator's.
  void Run(const std::function<void()>& event) {
    if (alive_) gate_.Run(event);
  }
  // The same, when Qt is through with what it is doing to `guard`.
  void Later(QObject* guard, std::function<void()> event) {
    gate_.Later(guard, [this, event = std::move(event)] {
      if (alive_) event();
    });
  }
  // Follows a signal of the window or of its fields as long as the window lives and the handle is
  // kept.
  template <class... Args, class Work>
  [[nodiscard]] forms::Subscription Follow(forms::Signal<Args...>& signal, Work work) {
    return signal.Subscribe([this, work = std::move(work)](Args... args) {
      if (alive_) work(args...);
    });
  }
  // The pointer stands on a field; its hover event runs once until it stands on another.
  void Hover(forms::Field& field) {
    if (hovered_ == &field) return;
    hovered_ = &field;
    Run([&field] { field.Hover(); });
  }
  // A dialog waits before this window, and nothing of its own is to be done until that closes.
  bool BehindDialog(const forms::Window& window) const { return gate_.BehindDialog(window); }
  void Unhover(forms::Field& field) {
    if (hovered_ == &field) hovered_ = nullptr;
  }
  // The field that the operator is in, whatever window stands before it.
  forms::Field* Focused() const { return focused_; }
  void SetFocused(forms::Field* field) { focused_ = field; }

 private:
  EventGate& gate_;
  bool alive_ = true;
  forms::Field* hovered_ = nullptr;
  forms::Field* focused_ = nullptr;
};

}  // namespace brenvo::ui
