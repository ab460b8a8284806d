// Grids.
#pragma once

#include "field_binding.h"
#include "forms/grid.h"

namespace brenvo::ui {

QWidget* MakeGridWidget(forms::Grid& field, ViewContext& context, QWidget* parent);

// How wide a grid would be to show all its columns, where letters are larger than those that its
// widths are meant for; 0 where they are not, and for what is no grid.
int RoomForColumns(const QWidget& grid);

}  // namespace brenvo::ui
