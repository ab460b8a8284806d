// Windows on the desktop.
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <QMainWindow>

#include "forms/window_host.h"
#include "ui/event_gate.h"
#include "ui/map_area.h"
#include "ui/window_frame.h"

namespace brenvo::ui {

// The first window that is shown is the main frame; the others stand in it, and modal ones over it.
class QtWindowHost : public forms::WindowHost {
 public:
  explicit QtWindowHost(EventGate& gate);
  ~QtWindowHost() override;

  MapArea& Map() { return *area_; }
  QMainWindow& Main() { return *main_; }
  // The inside of a shown window as it stands on the screen; null when it is not shown.
  QPixmap PictureOf(const forms::Window& window) const;
  // The same with its frame.
  QPixmap FramePictureOf(const forms::Window& window) const;
  // F1 was pressed in a window that has no command of its own there.
  std::function<void(const forms::Window&)> OnHelp;
  // A handler has failed: what it left half done is to be dropped.
  std::function<void()> OnFailure;

  void Show(forms::Window& window) override;
  void ShowModal(forms::Window& window) override;
  void Hide(forms::Window& window) override;
  void Forget(forms::Window& window) override;
  void MoveFocus(forms::Field& field) override;
  void SetBusy(bool busy) override;
  void ProcessEvents() override;
  base::Twips ScreenWidth() override;
  base::Twips ScreenHeight() override;
  void ReportFailure(std::string_view text) override;
  [[noreturn]] void EndProgram() override;

 private:
  WindowFrame& FrameOf(forms::Window& window, WindowFrame::Kind kind);
  void TellActivated(QMdiSubWindow* child);

  EventGate& gate_;
  std::unique_ptr<QMainWindow> main_;
  MapArea* area_;
  forms::Window* mainWindow_ = nullptr;
  forms::Subscription welcome_;
  std::map<const forms::Window*, std::unique_ptr<WindowFrame>> frames_;
};

}  // namespace brenvo::ui
