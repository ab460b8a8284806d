#include "forms/field.h"

#include "forms/window.h"

namespace brenvo::forms {

Field::Field(Window& window, std::string name, const FieldFace& face)
    : window_(window),
      name_(std::move(name)),
      caption_(face.caption),
      hint_(face.hint),
      characters_(face.characters) {
  window_.fields_.push_back(this);
}

Field::~Field() = default;

void Field::SetVisible(bool visible) {
  if (visible_ == visible) return;
  visible_ = visible;
  ShowChanged();
}

void Field::SetEnabled(bool enabled) {
  if (enabled_ == enabled) return;
  enabled_ = enabled;
  ShowChanged();
}

void Field::SetCaption(std::string_view caption) {
  if (caption_ == caption) return;
  caption_ = caption;
  ShowChanged();
}

void Field::Focus() { Run(OnFocus); }
void Field::Leave() { Run(OnLeave); }
void Field::Hover() {
  if (OnHover) {
    OnHover();
  } else if (hint_) {
    window_.ShowHint(*hint_);
  }
}
void Field::Click() { Run(OnClick); }
void Field::DoubleClick() { Run(OnDoubleClick); }

void Field::Drop(std::string_view text) {
  if (OnDrop) OnDrop(text);
}

void Field::Changed() {
  // The screen first: what the event then fails in, or changes again, is seen as it stands.
  ShowChanged();
  Run(OnChange);
}

void Field::ShowChanged() { Shown(); }

void Field::Run(const std::function<void()>& handler) {
  if (handler) handler();
}

void Label::SetText(std::string_view text) {
  if (HoldText(text)) Run(OnChange);
}

bool Label::HoldText(std::string_view text) {
  if (Caption() == text) return false;
  SetCaption(text);
  return true;
}

}  // namespace brenvo::forms
