// A desktop with a main frame, and windows to open in it.
#pragma once

#include <gmock/gmock.h>

#include <memory>
#include <QApplication>
#include <QTest>
#include <QTimer>
#include <QWheelEvent>
#include <string>
#include <vector>

#include "forms/window.h"
#include "forms/window_list.h"
#include "ui/event_gate.h"
#include "ui/qt_window_host.h"

namespace brenvo::ui {

// What windows and fields have told, in order.
using Told = std::vector<std::string>;

class ScreenTest : public ::testing::Test {
 public:
  // Presses a key while a modal box or dialog stands, and looks at it before.
  static void WhenModal(std::function<void(QWidget&)> look) {
    QTimer::singleShot(20, [look] {
      QWidget* modal = QApplication::activeModalWidget();
      if (modal == nullptr) {
        WhenModal(look);
      } else {
        look(*modal);
      }
    });
  }

 protected:
  ScreenTest() {
    gate.Attach(&windows);
    main = &windows.Adopt(std::make_unique<forms::Window>(host, "Brenvo", "Brenvo",
                                                          base::Twips(15000), base::Twips(11000)));
    windows.Show(*main);
    Settle();
  }

  ~ScreenTest() override {
    while (!windows.Loaded().empty()) {
      forms::Window& last = *windows.Loaded().back();
      windows.RunEvent([&] { windows.Unload(last); });
    }
    Settle();
    gate.Attach(nullptr);
  }

  // Opens a window as its own menu command would, and gives it the focus.
  template <class Form>
  Form& Open() {
    forms::Window* opened = nullptr;
    windows.RunEvent([&] {
      opened = &windows.Adopt(std::make_unique<Form>(host));
      windows.Show(*opened);
    });
    Settle();
    return static_cast<Form&>(*opened);
  }

  // All that waits is done.
  static void Settle() {
    for (int turn = 0; turn < 4; ++turn) {
      QCoreApplication::sendPostedEvents();
      QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
      QCoreApplication::processEvents();
    }
  }

  template <class Kind>
  Kind* Find(std::string_view name) {
    Kind* found =
        host.Main().findChild<Kind*>(QString::fromUtf8(name.data(), qsizetype(name.size())));
    EXPECT_NE(found, nullptr) << name;
    return found;
  }

  // One notch of the wheel over a widget, towards the operator.
  static void Roll(QWidget& widget) {
    const QPoint at = widget.rect().center();
    QWheelEvent wheel(at, widget.mapToGlobal(at), {}, {0, -120}, Qt::NoButton, Qt::NoModifier,
                      Qt::NoScrollPhase, false);
    QSpontaneKeyEvent::setSpontaneous(&wheel);
    qApp->notify(&widget, &wheel);
  }

  EventGate gate;
  QtWindowHost host{gate};
  forms::WindowList windows{host};
  forms::Window* main = nullptr;
};

}  // namespace brenvo::ui
