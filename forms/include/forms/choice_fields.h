// Check boxes, options, sliders and bars.
#pragma once

#include <string>
#include <vector>

#include "forms/field.h"

namespace brenvo::forms {

enum class CheckState { kOff = 0, kOn = 1, kGrey = 2 };

class CheckBox : public Field {
 public:
  CheckBox(Window& window, std::string name, const FieldFace& face = {}, bool threeStates = false);
  FieldKind Kind() override { return this; }
  bool ThreeStates() const { return threeStates_; }
  CheckState State() const { return state_; }
  bool IsOn() const { return state_ == CheckState::kOn; }
  void SetState(CheckState state);
  void SetOn(bool on) { SetState(on ? CheckState::kOn : CheckState::kOff); }
  // The operator's press: off, on, and grey where there are three states; then the click event.
  void Press();

 private:
  bool threeStates_;
  CheckState state_ = CheckState::kOff;
};

// One of a row of options; setting one clears its fellows before its own change event runs.
class OptionButton : public Field {
 public:
  using Field::Field;
  FieldKind Kind() override { return this; }
  void JoinWith(OptionButton& other);
  bool IsOn() const { return on_; }
  void SetOn(bool on);
  // The operator's: on, then the click event.
  void Press();

 private:
  bool on_ = false;
  std::vector<OptionButton*> fellows_;
};

// An array of options under one name, the first one chosen to begin with.
class OptionGroup : public Field {
 public:
  OptionGroup(Window& window, std::string name, std::vector<std::string> captions,
              const FieldFace& face = {});
  FieldKind Kind() override { return this; }
  const std::vector<std::string>& Captions() const { return captions_; }
  int Index() const { return index_; }
  void SetIndex(int index);  // nothing where there is no such option
  // The operator's: the option, then the click event.
  void Press(int index);

 private:
  std::vector<std::string> captions_;
  int index_ = 0;
};

// A whole number between two limits. A limit that moves past the value takes it along.
class Slider : public Field {
 public:
  Slider(Window& window, std::string name, int minimum, int maximum, int value,
         const FieldFace& face = {});
  FieldKind Kind() override { return this; }
  int Minimum() const { return minimum_; }
  int Maximum() const { return maximum_; }
  int Value() const { return value_; }
  void SetMinimum(int minimum);
  void SetMaximum(int maximum);
  void SetValue(int value);  // held within the limits

 private:
  int minimum_, maximum_, value_;
};

// A bar that shows a reading on a scale; readings beyond the scale show as its end.
class Gauge : public Field {
 public:
  Gauge(Window& window, std::string name, int minimum, int maximum, const FieldFace& face = {});
  FieldKind Kind() override { return this; }
  int Minimum() const { return minimum_; }
  int Maximum() const { return maximum_; }
  int Value() const { return value_; }
  void SetValue(int value);

 private:
  int minimum_, maximum_, value_;
};

}  // namespace brenvo::forms
