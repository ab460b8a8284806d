#include "field_widgets.h"

#include <QApplication>
#include <QFontDatabase>
#include <QLabel>
#include <QLineEdit>

#include "choice_widgets.h"
#include "forms/field_visit.h"
#include "grid_widget.h"
#include "list_widgets.h"
#include "memo_widget.h"
#include "picture_widget.h"
#include "rich_text_widget.h"
#include "status_bar_widget.h"
#include "text_widgets.h"
#include "widget_watch.h"

namespace brenvo::ui {

// Every kind of field has its widget here.
using namespace forms;

namespace {

QWidget* Make(Field& field, ViewContext& context, QWidget* parent, Look look) {
  return VisitField(
      field, [&](ListField& list) { return MakeListWidget(list, context, parent); },
      [&](DatePicker& date) { return MakeDateEdit(date, context, parent); },
      [&](MaskedField& masked) { return MakeMaskedEdit(masked, context, parent); },
      [&](TextField& text) {
        return look == Look::kLines ? MakeMemo(text, context, parent)
                                    : MakeTextEdit(text, context, parent);
      },
      [&](CheckBox& box) { return MakeCheckBox(box, context, parent); },
      [&](OptionButton& option) { return MakeOptionButton(option, context, parent); },
      [&](TabStrip& tabs) { return MakeTabs(tabs, context, parent); },
      [&](OptionGroup& group) {
        if (look == Look::kTabs) return MakeTabs(group, context, parent);
        const int columns = look == Look::kFourAcross ? 4 : look == Look::kTwoAcross ? 2 : 1;
        return MakeOptionGroup(group, context, parent, columns);
      },
      [&](Slider& slider) {
        if (look == Look::kScrollBar) return MakeScrollBar(slider, context, parent);
        return MakeSlider(slider, context, parent, look == Look::kVertical);
      },
      [&](Gauge& gauge) { return MakeGauge(gauge, context, parent); },
      [&](OneOf<Grid, DataGrid> auto& grid) { return MakeGridWidget(grid, context, parent); },
      [&](RichText& area) { return MakeRichTextWidget(area, context, parent); },
      [&](PictureBox& picture) {
        return look == Look::kSmall ? MakeSmallPicture(picture, context, parent)
                                    : MakePictureWidget(picture, context, parent);
      },
      [&](StatusBar& bar) { return MakeStatusBar(bar, context, parent); },
      [&](Label& label) { return MakeLabel(label, context, parent); },
      [&](Command& command) { return MakeButton(command, context, parent); },
      [](OneOf<EntryArray, Menu, Panel, ToolBar> auto&) -> QWidget* { return nullptr; });
}

constexpr double kDisplayTimes = 1.9, kDialTimes = 3;
constexpr int kTailMargin = 5;  // as the text area above it has

// What comes and goes with the transceiver's power moves nothing about.
void KeepRoom(QWidget& widget) {
  QSizePolicy policy = widget.sizePolicy();
  policy.setRetainSizeWhenHidden(true);
  widget.setSizePolicy(policy);
}

void MakeDisplay(QWidget& widget, double times) {
  QFont large = QFontDatabase::systemFont(QFontDatabase::FixedFont);
  large.setPointSizeF(widget.font().pointSizeF() * times);
  large.setBold(true);
  widget.setFont(large);
  widget.setMinimumHeight(QFontMetrics(large).height());  // while it is empty, too
  KeepRoom(widget);
  if (auto* label = qobject_cast<QLabel*>(&widget)) label->setAlignment(Qt::AlignCenter);
  if (auto* line = qobject_cast<QLineEdit*>(&widget)) line->setAlignment(Qt::AlignCenter);
}

// Also what another station sends must not make its window wider.
void MakeNarrow(QWidget& label) {
  label.setMinimumWidth(1);
  label.setSizePolicy(QSizePolicy::Ignored, label.sizePolicy().verticalPolicy());
}

void MakeTail(QWidget& label) {
  const auto fit = [&label] { label.setFont(TerminalFont(QApplication::font())); };
  fit();
  FollowLetters(label, fit);
  label.setBackgroundRole(QPalette::Base);
  label.setForegroundRole(QPalette::Text);
  label.setAutoFillBackground(true);
  label.setContentsMargins(kTailMargin, 0, kTailMargin, 0);
}

}  // namespace

QWidget* MakeFieldWidget(Field& field, ViewContext& context, QWidget* parent, Look look) {
  QWidget* widget = Make(field, context, parent, look);
  if (widget != nullptr && look == Look::kDisplay) MakeDisplay(*widget, kDisplayTimes);
  if (widget != nullptr && look == Look::kDial) MakeDisplay(*widget, kDialTimes);
  if (widget != nullptr && look == Look::kLasting) KeepRoom(*widget);
  if (widget != nullptr && (look == Look::kNarrow || look == Look::kTail)) MakeNarrow(*widget);
  if (widget != nullptr && look == Look::kTail) MakeTail(*widget);
  if (auto* label = qobject_cast<QLabel*>(widget); label != nullptr && look == Look::kNarrow) {
    label->setWordWrap(true);
  }
  return widget;
}

bool FillsRoom(Field& field) {
  return VisitField(
      field,
      [](ListField& list) {
        return list.Style() == ListStyle::kOpen || list.Style() == ListStyle::kMulti;
      },
      [](OneOf<Grid, DataGrid, RichText, PictureBox> auto&) { return true; },
      [](OneOf<CheckBox, Command, DatePicker, EntryArray, Gauge, Label, MaskedField, Menu,
               OptionButton, OptionGroup, Panel, Slider, StatusBar, TabStrip, TextField,
               ToolBar> auto&) { return false; });
}

bool ShowsOwnCaption(Field& field) {
  return VisitField(
      field,
      [](OneOf<CheckBox, OptionButton, OptionGroup, TabStrip, Command, Label, Grid, DataGrid,
               RichText, PictureBox> auto&) { return true; },
      [](OneOf<DatePicker, EntryArray, Gauge, ListField, MaskedField, Menu, Panel, Slider,
               StatusBar, TextField, ToolBar> auto&) { return false; });
}

Place PlaceOf(Field& field) {
  return VisitField(
      field, [](OneOf<Menu, ToolBar, StatusBar, EntryArray> auto&) { return Place::kBar; },
      [](Panel&) { return Place::kAround; }, [](Command&) { return Place::kButton; },
      [](OneOf<CheckBox, OptionButton> auto&) { return Place::kBox; },
      [&](ListField&) { return FillsRoom(field) ? Place::kLarge : Place::kLine; },
      [](OneOf<Grid, DataGrid, RichText, PictureBox> auto&) { return Place::kLarge; },
      [](OneOf<DatePicker, Gauge, Label, MaskedField, OptionGroup, Slider, TabStrip,
               TextField> auto&) { return Place::kLine; });
}

forms::Menu* ContextMenuOf(Field& field) {
  return VisitField(
      field, [](ListField& list) { return list.ContextMenu; },
      [](OneOf<Grid, DataGrid> auto& grid) { return grid.ContextMenu; },
      [](OneOf<CheckBox, Command, DatePicker, EntryArray, Gauge, Label, MaskedField, Menu,
               OptionButton, OptionGroup, Panel, PictureBox, RichText, Slider, StatusBar, TabStrip,
               TextField, ToolBar> auto&) -> Menu* { return nullptr; });
}

}  // namespace brenvo::ui
