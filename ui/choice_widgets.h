// Check boxes, options, sliders, bars, labels, buttons.
#pragma once

#include "forms/choice_fields.h"
#include "forms/command.h"
#include "field_binding.h"

namespace brenvo {

QWidget* MakeCheckBox(CheckBox& field, ViewContext& context, QWidget* parent);
QWidget* MakeOptionButton(OptionButton& field, ViewContext& context, QWidget* parent);
// `columns` options stand side by side.
QWidget* MakeOptionGroup(OptionGroup& field, ViewContext& context, QWidget* parent, int columns);
// A group of options as the tabs of a card index.
QWidget* MakeTabs(OptionGroup& field, ViewContext& context, QWidget* parent);
QWidget* MakeSlider(Slider& field, ViewContext& context, QWidget* parent, bool vertical);
// A slider that is a scroll bar.
QWidget* MakeScrollBar(Slider& field, ViewContext& context, QWidget* parent);
QWidget* MakeGauge(Gauge& field, ViewContext& context, QWidget* parent);
QWidget* MakeLabel(Label& field, ViewContext& context, QWidget* parent);
QWidget* MakeButton(Command& field, ViewContext& context, QWidget* parent);

}  // namespace brenvo
