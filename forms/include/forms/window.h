// A window: fields, commands, and a life from load to unload.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "base/units.h"
#include "forms/command.h"
#include "forms/field.h"
#include "forms/window_host.h"

namespace brenvo::forms {

class StatusBar;
class WindowList;

enum class WindowState { kNormal, kMinimised, kMaximised };

struct Bounds {
  base::Twips left, top, width, height;
  friend bool operator==(const Bounds&, const Bounds&) = default;
};

class Window {
 public:
  // Design size in twips; a window opens there unless its logic moves it.
  Window(WindowHost& host, std::string name, std::string caption, base::Twips width,
         base::Twips height);
  virtual ~Window();
  Window(const Window&) = delete;
  Window& operator=(const Window&) = delete;

  // The life of a window, run by the WindowList. The base versions do nothing.
  virtual void Load() {}
  virtual void Activate() {}  // each time it comes to the front
  virtual void Resize() {}
  virtual bool QueryUnload() { return true; }  // false: the window refuses to close
  virtual void Unload() {}

  const std::string& Name() const { return name_; }
  WindowHost& Host() const { return host_; }
  const std::string& Caption() const { return caption_; }
  void SetCaption(std::string_view caption);

  // The dialog's generic text, in which it talks with its caller.
  std::string Tag;
  // The menu bar, empty for none.
  std::vector<MenuItem> MenuBar;
  // Presses of Enter and Esc anywhere in a dialog.
  Command* DefaultCommand = nullptr;
  Command* CancelCommand = nullptr;

  const Bounds& GetBounds() const { return bounds_; }
  base::Twips Width() const { return bounds_.width; }
  base::Twips Height() const { return bounds_.height; }
  WindowState State() const { return state_; }
  // The logic's: the screen follows; Resize runs when the size changes.
  void Move(const Bounds& bounds);
  // The operator's, reported by the screen.
  void Moved(const Bounds& bounds, WindowState state);
  // Inner size: the frame without its border, caption and menu.
  base::Twips ScaleWidth() const { return scaleWidth_; }
  base::Twips ScaleHeight() const { return scaleHeight_; }
  void SetScale(base::Twips width, base::Twips height);

  bool Loaded() const { return list_ != nullptr; }
  bool Visible() const { return visible_; }
  // Hides the window without unloading it; ends a modal wait.
  void Hide();
  // Closes it as its frame's button does; false when it refuses.
  bool Close();

  const std::vector<Field*>& Fields() const { return fields_; }
  // For who knows a field by its name only: scripts, layouts, tests. Without regard to case;
  // nullptr when there is none.
  Field* FindField(std::string_view name) const;
  Command* FindCommand(std::string_view name) const;

  // The first of its status bars, null for none; hints stand in its first panel.
  StatusBar* Status() const { return status_; }
  void ShowHint(std::string_view text);
  // Lets the screen see what its commands' functions have come to say.
  void RefreshCommands();

  // For the screen: caption or place have changed by the logic.
  Signal<> Shown;

 private:
  friend class Command;
  friend class Field;
  friend class StatusBar;
  friend class WindowList;
  // Keeps a new place; true when the size has changed.
  bool Place(const Bounds& bounds);

  WindowHost& host_;
  std::string name_, caption_;
  Bounds bounds_;
  base::Twips scaleWidth_, scaleHeight_;
  WindowState state_ = WindowState::kNormal;
  std::vector<Field*> fields_;
  std::vector<Command*> followers_;  // commands whose state follows from functions
  StatusBar* status_ = nullptr;
  WindowList* list_ = nullptr;
  bool visible_ = false;
};

}  // namespace brenvo::forms
