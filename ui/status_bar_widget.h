// The row of panels at a window's foot.
#pragma once

#include "forms/status_bar.h"
#include "field_binding.h"

namespace brenvo {

QWidget* MakeStatusBar(StatusBar& field, ViewContext& context, QWidget* parent);

}  // namespace brenvo
