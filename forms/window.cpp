#include "forms/window.h"

#include <algorithm>

#include "base/text.h"
#include "forms/field_visit.h"
#include "forms/window_list.h"

namespace brenvo::forms {

Window::Window(WindowHost& host, std::string name, std::string caption, base::Twips width,
               base::Twips height)
    : host_(host),
      name_(std::move(name)),
      caption_(std::move(caption)),
      bounds_{base::Twips(0), base::Twips(0), width, height},
      scaleWidth_(width),
      scaleHeight_(height) {}

Window::~Window() = default;

void Window::SetCaption(std::string_view caption) {
  if (caption_ == caption) return;
  caption_ = caption;
  Shown();
}

bool Window::Place(const Bounds& bounds) {
  const bool resized = bounds.width != bounds_.width || bounds.height != bounds_.height;
  // Without a screen the frame takes nothing of the inside; a screen reports the true inner size.
  scaleWidth_ = scaleWidth_ + (bounds.width - bounds_.width);
  scaleHeight_ = scaleHeight_ + (bounds.height - bounds_.height);
  bounds_ = bounds;
  return resized;
}

void Window::Move(const Bounds& bounds) {
  if (bounds == bounds_) return;
  const bool resized = Place(bounds);
  Shown();
  if (resized && Loaded()) Resize();
}

void Window::Moved(const Bounds& bounds, WindowState state) {
  const bool turned = state != state_ && state != WindowState::kMinimised;
  const bool resized = Place(bounds);
  state_ = state;
  if ((resized || turned) && Loaded()) Resize();
}

void Window::SetScale(base::Twips width, base::Twips height) {
  if (width == scaleWidth_ && height == scaleHeight_) return;
  scaleWidth_ = width;
  scaleHeight_ = height;
  if (Loaded()) Resize();
}

void Window::Hide() {
  if (!visible_) return;
  visible_ = false;
  host_.Hide(*this);
}

bool Window::Close() { return list_ == nullptr || list_->Unload(*this); }

void Window::ShowHint(std::string_view text) {
  if (status_ != nullptr) status_->SetPanel(1, text);
}

void Window::RefreshCommands() {
  for (Command* command : followers_) command->Refresh();
}

Field* Window::FindField(std::string_view name) const {
  const auto at = std::find_if(fields_.begin(), fields_.end(),
                               [&](Field* field) { return base::SameText(field->Name(), name); });
  return at == fields_.end() ? nullptr : *at;
}

Command* Window::FindCommand(std::string_view name) const {
  Field* const field = FindField(name);
  return field == nullptr ? nullptr : FieldAs<Command>(*field);
}

}  // namespace brenvo::forms
