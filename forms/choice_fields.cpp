#include "forms/choice_fields.h"

#include <algorithm>

namespace brenvo::forms {

CheckBox::CheckBox(Window& window, std::string name, const FieldFace& face, bool threeStates)
    : Field(window, std::move(name), face),
      threeStates_(threeStates),
      state_(threeStates ? CheckState::kGrey : CheckState::kOff) {}

void CheckBox::SetState(CheckState state) {
  if (state_ == state) return;
  state_ = state;
  Changed();
}

void CheckBox::Press() {
  if (!Enabled()) return;
  switch (state_) {
    case CheckState::kOff:
      SetState(CheckState::kOn);
      break;
    case CheckState::kOn:
      SetState(threeStates_ ? CheckState::kGrey : CheckState::kOff);
      break;
    case CheckState::kGrey:
      SetState(CheckState::kOff);
      break;
  }
  Click();
}

void OptionButton::JoinWith(OptionButton& other) {
  fellows_.push_back(&other);
  other.fellows_.push_back(this);
}

void OptionButton::SetOn(bool on) {
  if (on_ == on) return;
  on_ = on;
  if (on) {
    for (OptionButton* fellow : fellows_) fellow->SetOn(false);
  }
  Changed();
}

void OptionButton::Press() {
  if (!Enabled()) return;
  SetOn(true);
  Click();
}

OptionGroup::OptionGroup(Window& window, std::string name, std::vector<std::string> captions,
                         const FieldFace& face)
    : Field(window, std::move(name), face), captions_(std::move(captions)) {}

void OptionGroup::SetIndex(int index) {
  if (index == index_ || index < 0 || index >= static_cast<int>(captions_.size())) return;
  index_ = index;
  Changed();
}

void OptionGroup::Press(int index) {
  if (!Enabled()) return;
  SetIndex(index);
  Click();
}

Slider::Slider(Window& window, std::string name, int minimum, int maximum, int value,
               const FieldFace& face)
    : Field(window, std::move(name), face), minimum_(minimum), maximum_(maximum), value_(value) {}

void Slider::SetMinimum(int minimum) {
  minimum_ = minimum;
  maximum_ = std::max(maximum_, minimum_);
  ShowChanged();
  SetValue(value_);
}

void Slider::SetMaximum(int maximum) {
  maximum_ = maximum;
  minimum_ = std::min(minimum_, maximum_);
  ShowChanged();
  SetValue(value_);
}

void Slider::SetValue(int value) {
  value = std::clamp(value, minimum_, maximum_);
  if (value == value_) return;
  value_ = value;
  Changed();
}

Gauge::Gauge(Window& window, std::string name, int minimum, int maximum, const FieldFace& face)
    : Field(window, std::move(name), face), minimum_(minimum), maximum_(maximum), value_(minimum) {}

void Gauge::SetValue(int value) {
  if (value == value_) return;
  value_ = value;
  Changed();
}

}  // namespace brenvo::forms
