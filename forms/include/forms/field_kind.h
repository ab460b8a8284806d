// What kinds of fields there are, for those who treat each kind in its own way.
#pragma once

#include <concepts>
#include <utility>
#include <variant>

#include "base/match.h"

namespace brenvo::forms {

class CheckBox;
class Command;
class DataGrid;
class DatePicker;
class EntryArray;
class Gauge;
class Grid;
class Label;
class ListField;
class MaskedField;
class Menu;
class OptionButton;
class OptionGroup;
class Panel;
class PictureBox;
class RichText;
class Slider;
class StatusBar;
class TabStrip;
class TextField;
class ToolBar;

// A field as what it is: the class nearest to its own that stands here. A new kind of field takes
// a place here, and then compiles only when every VisitField has a case for it.
using FieldKind =
    std::variant<CheckBox*, Command*, DataGrid*, DatePicker*, EntryArray*, Gauge*, Grid*, Label*,
                 ListField*, MaskedField*, Menu*, OptionButton*, OptionGroup*, Panel*, PictureBox*,
                 RichText*, Slider*, StatusBar*, TabStrip*, TextField*, ToolBar*>;

// Several callables as one that takes what any of them takes.
// For a case that several kinds share: [](OneOf<Menu, ToolBar> auto&) {...}
template <class Kind, class... Kinds>
concept OneOf = (std::same_as<Kind, Kinds> || ...);

// Calls the case that fits the field: its own kind's before that of a kind it derives from. The
// cases have one result type. Include forms/field_visit.h, which knows all the kinds.
template <class Any, class... Cases>
decltype(auto) VisitField(Any& field, Cases&&... cases) {
  return std::visit([match = base::Match{std::forward<Cases>(cases)...}](
                        auto* each) mutable -> decltype(auto) { return match(*each); },
                    field.Kind());
}

}  // namespace brenvo::forms
