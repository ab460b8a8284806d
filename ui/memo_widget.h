// A text of several lines that is typed into.
#pragma once

#include "field_binding.h"
#include "forms/text_field.h"

namespace brenvo::ui {

// Edited by the toolkit alone: for a field without a filter. Lines end in CR LF in the field.
QWidget* MakeMemo(forms::TextField& field, ViewContext& context, QWidget* parent);

}  // namespace brenvo::ui
