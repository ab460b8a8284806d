// A text of several lines that is typed into.
#pragma once

#include "forms/text_field.h"
#include "field_binding.h"

namespace brenvo {

// Edited by the toolkit alone: for a field without a filter. Lines end in CR LF in the field.
QWidget* MakeMemo(TextField& field, ViewContext& context, QWidget* parent);

}  // namespace brenvo
