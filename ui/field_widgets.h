// The widget of any field.
#pragma once

#include <QWidget>

#include "forms/field.h"
#include "view_context.h"

namespace brenvo::ui {

// How a field is drawn where its kind leaves a choice.
enum class Look {
  kPlain,
  kTabs,       // a group of options as tabs
  kTwoAcross,  // a group of options in two columns
  kFourAcross,
  kVertical,   // a slider
  kScrollBar,  // a slider
  kDisplay,    // a text or label in large fixed figures
  kDial,       // the same, as large as what is looked at all day
  kLines,      // a text of several lines
  kLasting,    // keeps its room while it is hidden
  kNarrow,     // a label that takes more lines where there is no room, and asks for none
  kTail,       // one that is cut there, as the last line of the text area above it
  kSmall,      // a picture made to fit a corner of its window
};

// The widget that shows a field and brings the operator's keys and clicks to it. Null for fields
// that are no part of a window's inside: menus, tool bars, panels.
QWidget* MakeFieldWidget(forms::Field& field, ViewContext& context, QWidget* parent, Look look);

// True for fields that use all the room they get: grids, lists, text areas, pictures.
bool FillsRoom(forms::Field& field);
// True for fields that bear their words themselves.
bool ShowsOwnCaption(forms::Field& field);

// Where a field stands in a window that has no layout of its own.
enum class Place {
  kBar,     // in a menu or a bar, which have their own places
  kAround,  // it carries other fields
  kLine,    // in a line, with a label
  kBox,     // among its like, with its own words
  kLarge,   // it fills the room
  kButton,
};
Place PlaceOf(forms::Field& field);

// The menu under the right button; null when the field has none.
forms::Menu* ContextMenuOf(forms::Field& field);

}  // namespace brenvo::ui
