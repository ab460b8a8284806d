// A screen that shows nothing.
#pragma once

#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "forms/signal.h"
#include "forms/window_host.h"
#include "recorder/line_sink.h"

namespace brenvo::recorder {

// Writes `focus W.F`, `error "text"`, `end-program`, and `circle X Y radius R G B` (twips) for
// what a shown window draws on its picture boxes. The screen is 1024 by 768 pixels.
class RecordingHost : public forms::WindowHost {
 public:
  explicit RecordingHost(LineSink sink) : sink_(std::move(sink)) {}

  void Show(forms::Window& window) override;
  // Runs InModal once; Refused when it returns and the window still stands there.
  void ShowModal(forms::Window& window) override;
  void Hide(forms::Window&) override {}
  void Forget(forms::Window& window) override;
  // The field gets its focus event.
  void MoveFocus(forms::Field& field) override;
  void SetBusy(bool busy) override { busy_ += busy ? 1 : -1; }
  void ProcessEvents() override {
    if (WhileWaiting) WhileWaiting();
  }
  base::Twips ScreenWidth() override { return base::Twips::FromPixels(1024); }
  base::Twips ScreenHeight() override { return base::Twips::FromPixels(768); }
  void ReportFailure(std::string_view text) override;
  // Throws ProgramEnded.
  [[noreturn]] void EndProgram() override;

  // What happens while the station lets events run.
  std::function<void()> WhileWaiting;
  // What the operator does while a dialog waits, until it is hidden or unloaded.
  std::function<void(forms::Window&)> InModal;
  // How lines call a window; its plain name unless set otherwise.
  std::function<std::string(const forms::Window&)> NameOf;

  // The window shown last that is still there; nullptr for none.
  forms::Window* Front() const { return shown_.empty() ? nullptr : shown_.back(); }
  // The dialog that waits; nullptr for none.
  forms::Window* Modal() const { return modals_.empty() ? nullptr : modals_.back(); }
  bool Busy() const { return busy_ > 0; }
  // The shown window of that name; nullptr for none.
  forms::Window* FindShown(std::string_view name) const;

 private:
  void FollowPictures(forms::Window& window);
  void Bring(forms::Window& window);

  LineSink sink_;
  std::vector<forms::Window*> shown_;
  std::vector<forms::Window*> modals_;
  std::map<const forms::Window*, std::vector<forms::Subscription>>
      followed_;  // pictures of shown windows
  int busy_ = 0;
};

}  // namespace brenvo::recorder
