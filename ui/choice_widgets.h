// Check boxes, options, sliders, bars, labels, buttons.
#pragma once

#include "field_binding.h"
#include "forms/choice_fields.h"
#include "forms/command.h"

namespace brenvo::ui {

QWidget* MakeCheckBox(forms::CheckBox& field, ViewContext& context, QWidget* parent);
QWidget* MakeOptionButton(forms::OptionButton& field, ViewContext& context, QWidget* parent);
// `columns` options stand side by side.
QWidget* MakeOptionGroup(forms::OptionGroup& field, ViewContext& context, QWidget* parent,
                         int columns);
// A group of options as the tabs of a card index.
QWidget* MakeTabs(forms::OptionGroup& field, ViewContext& context, QWidget* parent);
QWidget* MakeSlider(forms::Slider& field, ViewContext& context, QWidget* parent, bool vertical);
// A slider that is a scroll bar.
QWidget* MakeScrollBar(forms::Slider& field, ViewContext& context, QWidget* parent);
QWidget* MakeGauge(forms::Gauge& field, ViewContext& context, QWidget* parent);
QWidget* MakeLabel(forms::Label& field, ViewContext& context, QWidget* parent);
QWidget* MakeButton(forms::Command& field, ViewContext& context, QWidget* parent);

}  // namespace brenvo::ui
