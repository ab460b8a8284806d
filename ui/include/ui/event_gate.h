// The one door through which the screen and the devices reach the logic.
#pragma once

#include <deque>
#include <functional>
#include <QObject>
#include <QPointer>

namespace brenvo::forms {
class Window;
class WindowList;
}  // namespace brenvo::forms

namespace brenvo::ui {

// Every callback of Qt enters the logic here, so that what it throws is reported in one place and a
// window that unloads itself goes when its event is over. Callers touch nothing of the window
// after Run has returned.
class EventGate : public QObject {
 public:
  EventGate();
  ~EventGate() override;

  // The list whose windows answer; null while there is no session, and events are then dropped.
  void Attach(forms::WindowList* windows) { windows_ = windows; }
  forms::WindowList* Windows() const { return windows_; }

  bool BehindDialog(const forms::Window& window) const;

  void Run(const std::function<void()>& event);
  // An event of a device, which waits while the gate is held; dropped when `guard` has died.
  void RunDevice(QObject& guard, const std::function<void()>& event);
  // Runs an event when what Qt has in work is over, yet before the operator's next key or click.
  // Events keep their order; one whose guard has died is dropped.
  void Later(QObject* guard, std::function<void()> event);
  void Flush();

  // While one lives a handler stands in its midst, waiting for a sound to end: nothing else
  // enters the logic.
  class Hold {
   public:
    explicit Hold(EventGate& gate) : gate_(gate) { ++gate_.holds_; }
    ~Hold();
    Hold(const Hold&) = delete;
    Hold& operator=(const Hold&) = delete;

   private:
    EventGate& gate_;
  };
  bool Held() const { return holds_ > 0; }

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  struct Waiting {
    QPointer<QObject> guard;
    std::function<void()> event;
  };
  void WakeUp();

  forms::WindowList* windows_ = nullptr;
  std::deque<Waiting> waiting_;
  int holds_ = 0;
  bool wakeUpPosted_ = false;
};

}  // namespace brenvo::ui
