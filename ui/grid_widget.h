// Grids.
#pragma once

#include "field_binding.h"
#include "forms/grid.h"

namespace brenvo::ui {

QWidget* MakeGridWidget(forms::Grid& field, ViewContext& context, QWidget* parent);

}  // namespace brenvo::ui
