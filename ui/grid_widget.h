// Grids.
#pragma once

#include "forms/grid.h"
#include "field_binding.h"

namespace brenvo {

QWidget* MakeGridWidget(Grid& field, ViewContext& context, QWidget* parent);

}  // namespace brenvo
