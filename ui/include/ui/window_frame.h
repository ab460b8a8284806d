// One window on the screen: main frame, child window or dialog.
#pragma once

#include <functional>
#include <memory>
#include <QEventLoop>
#include <QPointer>
#include <QWidget>

#include "forms/window.h"
#include "ui/event_gate.h"
#include "ui/map_area.h"

class QMainWindow;

namespace brenvo::ui {

class WindowBuilder;

class WindowFrame : public QObject {
 public:
  enum class Kind { kMain, kChild, kDialog };

  // Builds the window's widgets. `main` is the frame that the others stand in or over.
  WindowFrame(forms::Window& window, Kind kind, EventGate& gate, QMainWindow& main, MapArea& area);
  // Takes the window off the screen: its fields know no widgets any more.
  ~WindowFrame() override;

  Kind GetKind() const { return kind_; }
  QWidget& Outer() const { return *outer_; }
  void Show();
  // Shows a dialog and returns when it is hidden or its window unloaded.
  void ShowModal();
  void Hide();
  void FocusOn(forms::Field& field);
  QWidget& Inside() const { return *inside_; }
  // F1, where no command of the window has taken it.
  std::function<void()> OnHelp;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  struct Parts;
  void FollowWindow();  // caption and place, when the logic has changed them
  QSize Comfortable() const;
  void GrowWithLetters();
  void BringIntoReach();
  void Place();
  QRect Wanted() const;
  QRect Current() const;
  QSize InnerSize() const;
  void ReportSoon();
  void Report();
  bool Key(QKeyEvent& event);
  void FocusFirst();
  void KeepFocus();
  void GiveFocusBack();

  forms::Window& window_;
  Kind kind_;
  EventGate& gate_;
  QMainWindow& main_;
  MapArea& area_;
  QPointer<QWidget> outer_;
  QWidget* inside_ = nullptr;
  std::shared_ptr<Parts> parts_;
  forms::Subscription shown_;
  QEventLoop* waiting_ = nullptr;
  QPointer<QWidget> kept_;  // what has the keyboard while the toolkit hides a child for a moment
  bool placed_ = false;
  bool reportAsked_ = false;
};

}  // namespace brenvo::ui
