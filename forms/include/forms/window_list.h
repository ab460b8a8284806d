// The windows that are loaded, and the ways of opening one.
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "forms/window.h"

namespace brenvo::forms {

// Windows are made by name, so that one window can open another without knowing its class. The
// list owns them; one that unloads goes when the event in work has ended.
class WindowList {
 public:
  using Factory = std::function<std::unique_ptr<Window>()>;

  explicit WindowList(WindowHost& host) : host_(host) {}
  ~WindowList();

  void Register(std::string name, Factory factory);
  bool Knows(std::string_view name) const;
  // All registered names, sorted.
  std::vector<std::string> KnownNames() const;

  // Shows a window as its constructor leaves it: it is never loaded. Nothing for an unknown name.
  void Examine(std::string_view name, const std::function<void(Window&)>& look) const;
  // A window is about to be loaded.
  Signal<Window&> Loading;

  // A fresh window, loaded and not yet shown; nullptr when no window bears the name.
  Window* LoadNew(std::string_view name);
  // The single default instance: the one loaded, else a fresh one.
  Window* LoadSingle(std::string_view name);
  // A window that is made elsewhere (the main frame).
  Window& Adopt(std::unique_ptr<Window> window);

  // Behind a dialog that waits the window does not come to the front: the dialog stays active.
  void Show(Window& window);
  // Returns when the window is hidden or unloaded. What it has to hand back can be read in either
  // case, until the event in work has ended.
  void ShowModal(Window& window);
  // The operator has brought a window to the front.
  void Activated(Window& window);
  // Another window waits as a dialog.
  bool BehindDialog(const Window& window) const;
  // QueryUnload, Unload, and out of the list; false when the window refuses. The screen's close
  // button, cmExit and the shutdown all come here.
  bool Unload(Window& window);
  // Unloads all but the first, in order of loading. One that refuses stops that and comes to the
  // front, and the answer is false.
  bool UnloadAllButFirst();

  // In order of loading.
  const std::vector<Window*>& Loaded() const { return loaded_; }
  // The first loaded window of that name.
  Window* Find(std::string_view name) const;
  // "LogForm", or "LogForm#2" for a further instance.
  std::string InstanceName(const Window& window) const;
  Window* FindInstance(std::string_view instanceName) const;
  bool IsLoaded(const Window* window) const;

  // Runs an event: what it throws is reported to the operator, and ends nothing but the event.
  // ProgramEnded passes.
  void RunEvent(const std::function<void()>& event);

 private:
  void Load(Window& window);
  void Drop(Window& window);  // out of the list; it goes when the event in work has ended
  void BuryUnloaded();

  WindowHost& host_;
  std::map<std::string, Factory, std::less<>> factories_;
  std::vector<std::unique_ptr<Window>> owned_;
  std::vector<std::unique_ptr<Window>> unloaded_;  // until the event in work has ended
  std::vector<Window*> loaded_;
  std::map<std::string, Window*, std::less<>> defaults_;
  Window* active_ = nullptr;
  Window* waiting_ = nullptr;  // the dialog in front
  int depth_ = 0;
};

}  // namespace brenvo::forms
