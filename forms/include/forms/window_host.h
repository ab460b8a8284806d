// What a window asks of the screen that shows it.
#pragma once

#include <string_view>

#include "base/units.h"

namespace brenvo::forms {

class Field;
class Window;

// Leaves every handler when the program ends at once; not an exception that anything handles.
struct ProgramEnded {};

class WindowHost {
 public:
  virtual ~WindowHost() = default;
  // Makes the window visible and brings it forward.
  virtual void Show(Window& window) = 0;
  // The same, and returns when the window is hidden or unloaded; no other window answers meanwhile.
  virtual void ShowModal(Window& window) = 0;
  virtual void Hide(Window& window) = 0;
  // The window is about to be destroyed.
  virtual void Forget(Window& window) = 0;
  // The window's logic moves the focus.
  virtual void MoveFocus(Field& field) = 0;
  virtual void SetBusy(bool busy) = 0;
  // Lets drawing and input that wait go on.
  virtual void ProcessEvents() = 0;
  virtual base::Twips ScreenWidth() = 0;
  virtual base::Twips ScreenHeight() = 0;
  // A failure that no window handled: tells the operator, and the next event runs.
  virtual void ReportFailure(std::string_view text) = 0;
  // Ends the program at once, without the steps of a shutdown: the caller has told why. An open
  // transaction is rolled back.
  [[noreturn]] virtual void EndProgram() = 0;
};

// Shows the busy pointer while it lives.
class BusyPointer {
 public:
  explicit BusyPointer(WindowHost& host) : host_(host) { host_.SetBusy(true); }
  ~BusyPointer() { host_.SetBusy(false); }
  BusyPointer(const BusyPointer&) = delete;
  BusyPointer& operator=(const BusyPointer&) = delete;

 private:
  WindowHost& host_;
};

}  // namespace brenvo::forms
