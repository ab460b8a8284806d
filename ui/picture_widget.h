// A picture with circles on it.
#pragma once

#include "forms/picture_box.h"
#include "ui/field_binding.h"

namespace brenvo {

QWidget* MakePictureWidget(PictureBox& field, ViewContext& context, QWidget* parent);

}  // namespace brenvo
