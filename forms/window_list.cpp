#include "forms/window_list.h"

#include <algorithm>
#include <exception>

namespace brenvo::forms {
namespace {

// Counts events in work, whatever way they end.
class Depth {
 public:
  explicit Depth(int& depth) : depth_(depth) { ++depth_; }
  ~Depth() { --depth_; }
  Depth(const Depth&) = delete;
  Depth& operator=(const Depth&) = delete;

 private:
  int& depth_;
};

// Remembers the dialog that waits, and gives back the one before, whatever way the wait ends.
class Wait {
 public:
  Wait(Window*& waiting, Window& dialog) : waiting_(waiting), before_(waiting) {
    waiting_ = &dialog;
  }
  ~Wait() { waiting_ = before_; }
  Wait(const Wait&) = delete;
  Wait& operator=(const Wait&) = delete;

 private:
  Window*& waiting_;
  Window* before_;
};

}  // namespace

WindowList::~WindowList() = default;

void WindowList::Register(std::string name, Factory factory) {
  factories_[std::move(name)] = std::move(factory);
}

std::vector<std::string> WindowList::KnownNames() const {
  std::vector<std::string> names;
  for (const auto& [name, factory] : factories_) names.push_back(name);
  return names;
}

bool WindowList::Knows(std::string_view name) const {
  return factories_.find(name) != factories_.end();
}

void WindowList::Examine(std::string_view name, const std::function<void(Window&)>& look) const {
  const auto at = factories_.find(name);
  if (at != factories_.end()) look(*at->second());
}

Window* WindowList::LoadNew(std::string_view name) {
  const auto at = factories_.find(name);
  return at == factories_.end() ? nullptr : &Adopt(at->second());
}

Window* WindowList::LoadSingle(std::string_view name) {
  const auto at = defaults_.find(name);
  if (at != defaults_.end()) return at->second;
  Window* window = LoadNew(name);
  if (window != nullptr && window->Loaded()) defaults_[std::string(name)] = window;
  return window;
}

Window& WindowList::Adopt(std::unique_ptr<Window> window) {
  Window& adopted = *window;
  owned_.push_back(std::move(window));
  Load(adopted);
  return adopted;
}

void WindowList::Load(Window& window) {
  const Depth depth(depth_);  // a window may unload itself while it loads
  window.list_ = this;
  loaded_.push_back(&window);
  try {
    Loading(window);
    window.Load();
  } catch (...) {
    if (window.Loaded()) Drop(window);
    throw;
  }
}

void WindowList::Show(Window& window) {
  if (!window.Loaded()) return;
  window.visible_ = true;
  host_.Show(window);
  if (BehindDialog(window)) return;
  active_ = &window;
  window.Activate();
}

void WindowList::ShowModal(Window& window) {
  if (!window.Loaded()) return;
  const Depth depth(depth_);  // its answer is still to be read
  Window* const before = active_;
  window.visible_ = true;
  active_ = &window;
  {
    const Wait wait(waiting_, window);
    window.Activate();
    // What the event in work has changed so far is seen behind the dialog.
    for (Window* each : loaded_) each->RefreshCommands();
    if (window.Visible()) host_.ShowModal(window);
  }
  // What stood in front before comes to the front again.
  active_ = before;
  if (IsLoaded(before) && before->Visible()) before->Activate();
}

void WindowList::Activated(Window& window) {
  if (active_ == &window || !window.Loaded() || BehindDialog(window)) return;
  active_ = &window;
  window.Activate();
}

bool WindowList::BehindDialog(const Window& window) const {
  return waiting_ != nullptr && waiting_ != &window;
}

bool WindowList::Unload(Window& window) {
  if (!window.Loaded()) return true;
  if (!window.QueryUnload()) return false;
  const Depth depth(depth_);
  window.Unload();
  if (!window.Loaded()) return true;  // its own unload has closed it already
  Drop(window);
  return true;
}

bool WindowList::UnloadAllButFirst() {
  while (loaded_.size() > 1) {
    Window& window = *loaded_[1];
    if (Unload(window)) continue;
    Show(window);
    return false;
  }
  return true;
}

void WindowList::Drop(Window& window) {
  window.list_ = nullptr;
  window.visible_ = false;
  std::erase(loaded_, &window);
  // The next window may well lie at the same address.
  std::erase_if(defaults_, [&](const auto& each) { return each.second == &window; });
  if (active_ == &window) active_ = nullptr;
  host_.Forget(window);
  const auto own = std::find_if(owned_.begin(), owned_.end(),
                                [&](const auto& each) { return each.get() == &window; });
  unloaded_.push_back(std::move(*own));
  owned_.erase(own);
}

Window* WindowList::Find(std::string_view name) const {
  const auto at = std::find_if(loaded_.begin(), loaded_.end(),
                               [&](Window* window) { return window->Name() == name; });
  return at == loaded_.end() ? nullptr : *at;
}

std::string WindowList::InstanceName(const Window& window) const {
  int number = 0;
  for (Window* each : loaded_) {
    if (each->Name() == window.Name()) ++number;
    if (each == &window) break;
  }
  return number <= 1 ? window.Name() : window.Name() + "#" + std::to_string(number);
}

Window* WindowList::FindInstance(std::string_view instanceName) const {
  const auto at = std::find_if(loaded_.begin(), loaded_.end(), [&](Window* window) {
    return InstanceName(*window) == instanceName;
  });
  return at == loaded_.end() ? nullptr : *at;
}

bool WindowList::IsLoaded(const Window* window) const {
  return std::find(loaded_.begin(), loaded_.end(), window) != loaded_.end();
}

void WindowList::RunEvent(const std::function<void()>& event) {
  {
    const Depth depth(depth_);
    try {
      event();
    } catch (const std::exception& failure) {
      host_.ReportFailure(failure.what());
    }
  }
  for (Window* window : loaded_) window->RefreshCommands();
  BuryUnloaded();
}

void WindowList::BuryUnloaded() {
  if (depth_ == 0) unloaded_.clear();
}

}  // namespace brenvo::forms
