// A field of a window, without a screen: its value, its state, and the events that the window's
// logic handles.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "base/units.h"
#include "forms/field_kind.h"
#include "forms/signal.h"

namespace brenvo::forms {

class Window;

// Keys that the logic meets as characters.
constexpr char32_t kBackspace = 8;
constexpr char32_t kEnter = 13;

// What an operator sees of a field before anything is typed.
struct FieldFace {
  std::string_view caption{};  // the words beside or on it
  // Stands in the window's status bar while the pointer is on the field; "" empties that.
  std::optional<std::string_view> hint{};
  int characters = 0;  // width of a text; 0 for all the room there is
};

// Values change in two ways with one outcome: the operator's (Type..., Pick..., Press: called by
// the screen or the driver) and the logic's (Set...). A change event runs once per change of the
// value, and not when the same value is assigned again.
class Field {
 public:
  // The words of the face are copied, but for the hint, which must last.
  Field(Window& window, std::string name, const FieldFace& face = {});
  virtual ~Field();
  Field(const Field&) = delete;
  Field& operator=(const Field&) = delete;

  virtual FieldKind Kind() = 0;
  const std::string& Name() const { return name_; }
  Window& Owner() const { return window_; }

  bool Visible() const { return visible_; }
  void SetVisible(bool visible);
  virtual bool Enabled() const { return enabled_; }
  void SetEnabled(bool enabled);
  // The words beside or on the field.
  const std::string& Caption() const { return caption_; }
  void SetCaption(std::string_view caption);
  int WidthInCharacters() const { return characters_; }
  bool HasHint() const { return hint_ || OnHover; }

  // The operator comes, goes, points, clicks. Pointing shows the hint, unless the window has an
  // answer of its own.
  virtual void Focus();
  virtual void Leave();
  virtual void Hover();
  virtual void Click();
  virtual void DoubleClick();
  // A name dragged onto the field.
  virtual void Drop(std::string_view text);

  std::function<void()> OnFocus, OnLeave, OnHover, OnClick, OnDoubleClick, OnChange;
  std::function<void(std::string_view)> OnDrop;

  // For the screen: something to show has changed.
  Signal<> Shown;

 protected:
  virtual void Changed();  // the value: the screen, then the change event
  void ShowChanged();      // only what is seen
  static void Run(const std::function<void()>& handler);

 private:
  Window& window_;
  std::string name_, caption_;
  std::optional<std::string_view> hint_;
  int characters_ = 0;
  bool visible_ = true, enabled_ = true;
};

// Words on a window; also a hidden carrier of a trigger. The caption's change is its event.
class Label : public Field {
 public:
  using Field::Field;
  FieldKind Kind() override { return this; }
  void SetText(std::string_view text);
  // As TextField's.
  bool HoldText(std::string_view text);
  const std::string& Text() const { return Caption(); }
};

// An area that carries other fields; it only matters for hints, visibility and size.
class Panel : public Field {
 public:
  using Field::Field;
  FieldKind Kind() override { return this; }
  // The pointer's button goes down, the pointer moves, the button comes up; places in the panel.
  std::function<void(base::Twips x, base::Twips y)> OnPointerDown, OnPointerMove;
  std::function<void()> OnPointerUp;
};

}  // namespace brenvo::forms
