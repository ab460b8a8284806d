// The row of panels at a window's foot.
#pragma once

#include "field_binding.h"
#include "forms/status_bar.h"

namespace brenvo::ui {

QWidget* MakeStatusBar(forms::StatusBar& field, ViewContext& context, QWidget* parent);

}  // namespace brenvo::ui
